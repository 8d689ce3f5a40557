// SPDX-License-Identifier: Apache-2.0
// loopback_service.h: creates and deletes loopback interfaces.
#ifndef VIRTUAL_SWITCH_SERVICES_LOOPBACK_SERVICE_H
#define VIRTUAL_SWITCH_SERVICES_LOOPBACK_SERVICE_H

#include "chassis/switch_state.h"
#include "platform_dev/mts_service.h"

namespace virtual_switch {

// How many loopbacks clients may create.
inline constexpr size_t most_created_loopbacks = 1024;

// Serves CMI_OPC_PM_CONFIG_LOOPBACK on the SAP of the Ethernet channel service: all of a request or nothing. Clients do
// not look at the answer, so a refusal fails the exchange.
void serve_loopbacks(switch_state &state, const mts_request_t &request, mts_reply_t *reply);

}  // namespace virtual_switch

#endif
