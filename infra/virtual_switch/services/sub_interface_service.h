// SPDX-License-Identifier: Apache-2.0
// sub_interface_service.h: creates and deletes sub-interfaces.
#ifndef VIRTUAL_SWITCH_SERVICES_SUB_INTERFACE_SERVICE_H
#define VIRTUAL_SWITCH_SERVICES_SUB_INTERFACE_SERVICE_H

#include "chassis/switch_state.h"
#include "platform_dev/mts_service.h"

namespace virtual_switch {

// Serves CMI_OPC_PM_CONFIG_SUB_INTF on the SAP of the Ethernet channel service: all of a request or nothing.
void serve_sub_interfaces(switch_state &state, const mts_request_t &request, mts_reply_t *reply);

}  // namespace virtual_switch

#endif
