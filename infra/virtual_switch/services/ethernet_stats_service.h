// SPDX-License-Identifier: Apache-2.0
// ethernet_stats_service.h: a line card's counters of its Ethernet ports and FCIP tunnels, on PM_SAP_ETHERNET_STATS.
#ifndef VIRTUAL_SWITCH_SERVICES_ETHERNET_STATS_SERVICE_H
#define VIRTUAL_SWITCH_SERVICES_ETHERNET_STATS_SERVICE_H

#include "platform_dev/mts_service.h"

namespace virtual_switch {

// An mts_service_t; the context is the line_card_context. Every answer is a whole record: a refusal has result 0, and a
// port that the card cannot reach has a communication status.
void ethernet_stats_service(void *line_card, const mts_request_t *request, mts_reply_t *reply);

}  // namespace virtual_switch

#endif
