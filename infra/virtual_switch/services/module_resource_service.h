// SPDX-License-Identifier: Apache-2.0
// module_resource_service.h: how much of their resources modules use, on PM_SAP_MODULE_RESOURCE.
#ifndef VIRTUAL_SWITCH_SERVICES_MODULE_RESOURCE_SERVICE_H
#define VIRTUAL_SWITCH_SERVICES_MODULE_RESOURCE_SERVICE_H

#include "platform_dev/mts_service.h"

namespace virtual_switch {

// An mts_service_t of the supervisor, which knows all modules; the context is the switch_state.
void supervisor_resource_service(void *state, const mts_request_t *request, mts_reply_t *reply);

// An mts_service_t of a line card, which knows itself; the context is the line_card_context.
void line_card_resource_service(void *line_card, const mts_request_t *request, mts_reply_t *reply);

}  // namespace virtual_switch

#endif
