// SPDX-License-Identifier: Apache-2.0
#include "port_mgr/port_state_reason.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "pm_api_common/port_state_reason_table.h"

namespace {

using reason_texts = std::array<const char *, 256>;

constexpr int32_t keyword_form = 1;

static_assert(std::adjacent_find(std::begin(pm::state_reasons), std::end(pm::state_reasons),
                                 [](const auto &a, const auto &b) { return a.code >= b.code; }) ==
                  std::end(pm::state_reasons),
              "every code once, in ascending order");

// The texts by code, for a look-up that costs the same for each of them.
constexpr reason_texts texts_by_code(const char *pm::state_reason::*text, const char *otherwise) {
    reason_texts texts;
    texts.fill(otherwise);
    for (const pm::state_reason &reason : pm::state_reasons) texts[reason.code] = reason.*text;
    return texts;
}

constexpr reason_texts keywords = texts_by_code(&pm::state_reason::keyword, "down");
constexpr reason_texts messages = texts_by_code(&pm::state_reason::message, "Unknown");

}  // namespace

const char *port_state_reason_string(uint8_t reason, int32_t form) {
    const reason_texts &texts = form == keyword_form ? keywords : messages;
    return texts[reason];
}
