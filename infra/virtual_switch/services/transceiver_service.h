// SPDX-License-Identifier: Apache-2.0
// transceiver_service.h: tells what is plugged into ranges of ports.
#ifndef VIRTUAL_SWITCH_SERVICES_TRANSCEIVER_SERVICE_H
#define VIRTUAL_SWITCH_SERVICES_TRANSCEIVER_SERVICE_H

#include "chassis/switch_state.h"
#include "platform_dev/mts_service.h"

namespace virtual_switch {

// Serves CMI_OPC_PM_GET_FCOT_INFO on the SAP of the service that owns the first interface. There is a record for each
// port of the ranges that takes a transceiver, plugged in or not.
void serve_transceivers(switch_state &state, const mts_request_t &request, mts_reply_t *reply);

}  // namespace virtual_switch

#endif
