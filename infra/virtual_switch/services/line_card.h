// SPDX-License-Identifier: Apache-2.0
// line_card.h: what the services of a line card work on.
#ifndef VIRTUAL_SWITCH_SERVICES_LINE_CARD_H
#define VIRTUAL_SWITCH_SERVICES_LINE_CARD_H

#include "chassis/switch_state.h"

namespace virtual_switch {

// The context of a line card's services. There is a module in the slot as long as they serve.
struct line_card_context {
    switch_state *state;
    uint8_t slot;           // counted from 0
    switch_time started{};  // when its services began
};

}  // namespace virtual_switch

#endif
