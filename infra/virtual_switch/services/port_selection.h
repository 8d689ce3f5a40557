// SPDX-License-Identifier: Apache-2.0
// port_selection.h: which ports a request for port information names.
#ifndef VIRTUAL_SWITCH_SERVICES_PORT_SELECTION_H
#define VIRTUAL_SWITCH_SERVICES_PORT_SELECTION_H

#include <span>

#include "services/answer.h"

namespace virtual_switch {

// The payload of a request as it came, and the SAP that it came to.
struct port_request {
    std::span<const uint8_t> payload;
    uint32_t sap;
};

// Selects the ports of a request for port information. Returns 0, or the status of the refusal.
uint32_t select_ports(const chassis_model &model, const port_request &request, port_list &ports);

// Selects the port that follows the one a request names. Returns 0, or the status of the refusal.
uint32_t select_next_port(const chassis_model &model, const port_request &request, port_list &ports);

}  // namespace virtual_switch

#endif
