// SPDX-License-Identifier: Apache-2.0
// port_service.h: the service of every SAP that owns interfaces: it answers for ports and configures them.
#ifndef VIRTUAL_SWITCH_SERVICES_PORT_SERVICE_H
#define VIRTUAL_SWITCH_SERVICES_PORT_SERVICE_H

#include <array>

#include "chassis/switch_state.h"
#include "platform_dev/mts_service.h"
#include "port_mgr/opcodes.h"
#include "services/config_access.h"
#include "services/refusal_log.h"

namespace virtual_switch {

// The SAPs to serve it on, all on the supervisor.
inline constexpr std::array<uint32_t, 4> port_service_saps{PM_SAP_PORT_MANAGER, PM_SAP_ETHERNET,
                                                           PM_SAP_ETHERNET_CHANNEL, PM_SAP_MGMT};

struct port_service_context {
    switch_state *state;
    config_access access;
    refusal_log refusals{};
};

// An mts_service_t; the context is a port_service_context. Whoever reaches it may ask. A request that configures is
// answered with PM_ERR_REJECTED when its client may not, and the log of refusals says so.
void port_service(void *context, const mts_request_t *request, mts_reply_t *reply);

}  // namespace virtual_switch

#endif
