// SPDX-License-Identifier: Apache-2.0
// line_card_services.h: what answers on the node of every line card.
#ifndef VIRTUAL_SWITCH_SERVICES_LINE_CARD_SERVICES_H
#define VIRTUAL_SWITCH_SERVICES_LINE_CARD_SERVICES_H

#include <span>

#include "platform_dev/mts_service.h"

namespace virtual_switch {

struct line_card_service {
    uint32_t sap;
    mts_service_t serve;  // the context is a line_card_context
};

std::span<const line_card_service> line_card_services();

}  // namespace virtual_switch

#endif
