// SPDX-License-Identifier: Apache-2.0
// set_service.h: sets an attribute of ranges of interfaces.
#ifndef VIRTUAL_SWITCH_SERVICES_SET_SERVICE_H
#define VIRTUAL_SWITCH_SERVICES_SET_SERVICE_H

#include "chassis/switch_state.h"
#include "platform_dev/mts_service.h"

namespace virtual_switch {

// Serves CMI_OPC_PM_SET_PORT_CONFIG. A service sets what it owns; port channels belong to the port manager and to the
// Ethernet channel service. What is refused for one interface is done for the others all the same.
void serve_set(switch_state &state, const mts_request_t &request, mts_reply_t *reply);

}  // namespace virtual_switch

#endif
