// SPDX-License-Identifier: Apache-2.0
// sfp_diagnostics_service.h: the service of a line card that reads its transceivers, on PM_SAP_SFP_DIAGNOSTICS.
#ifndef VIRTUAL_SWITCH_SERVICES_SFP_DIAGNOSTICS_SERVICE_H
#define VIRTUAL_SWITCH_SERVICES_SFP_DIAGNOSTICS_SERVICE_H

#include "platform_dev/mts_service.h"

namespace virtual_switch {

// An mts_service_t; the context is a line_card_context. It answers for ports of its own card. A refusal is the status
// in the answer: PM_ERR_INVALID_RANGE when the card has no such interface, PM_ERR_REJECTED when it has no transceiver
// or one without diagnostics, PM_ERR_INVALID_PARAM for a malformed request, PM_ERR_FAILURE for another.
void sfp_diagnostics_service(void *line_card, const mts_request_t *request, mts_reply_t *reply);

}  // namespace virtual_switch

#endif
