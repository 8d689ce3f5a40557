// SPDX-License-Identifier: Apache-2.0
// channel_member_service.h: the service that knows the members of port channels, on PM_SAP_CHANNEL_MEMBER.
#ifndef VIRTUAL_SWITCH_SERVICES_CHANNEL_MEMBER_SERVICE_H
#define VIRTUAL_SWITCH_SERVICES_CHANNEL_MEMBER_SERVICE_H

#include "platform_dev/mts_service.h"

namespace virtual_switch {

// An mts_service_t; the context is the switch_state.
void channel_member_service(void *state, const mts_request_t *request, mts_reply_t *reply);

}  // namespace virtual_switch

#endif
