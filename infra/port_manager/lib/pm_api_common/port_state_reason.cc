// SPDX-License-Identifier: Apache-2.0
#include "port_mgr/port_state_reason.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>

#include "pm_api_common/port_state_reason_table.h"

namespace {

static_assert(std::adjacent_find(std::begin(pm::state_reasons), std::end(pm::state_reasons),
                                 [](const auto &a, const auto &b) { return a.code >= b.code; }) ==
                  std::end(pm::state_reasons),
              "every code once, in ascending order");

struct text_form {
    const char *pm::state_reason::*text;
    std::string_view otherwise;
};

constexpr text_form keywords{&pm::state_reason::keyword, "down"};
constexpr text_form messages{&pm::state_reason::message, "Unknown"};

constexpr int32_t keyword_form = 1;

// Texts with their NULs one behind the other, and where that of each code starts: pointers to them would be so many
// words for the loader to relocate, and most of what it has to.
template <size_t size>
struct packed_texts {
    std::array<char, size> characters{};
    std::array<uint16_t, 256> starts{};

    [[nodiscard]] constexpr const char *of(uint8_t code) const { return &characters[starts[code]]; }
};

template <const text_form &form>
constexpr size_t size_of_texts = [] {
    size_t size = form.otherwise.size() + 1;
    for (const pm::state_reason &reason : pm::state_reasons) size += std::string_view(reason.*form.text).size() + 1;
    return size;
}();

template <const text_form &form>
constexpr packed_texts<size_of_texts<form>> texts = [] {
    packed_texts<size_of_texts<form>> packed;
    char *end = packed.characters.data();
    const auto append = [&](std::string_view text) {
        const auto start = static_cast<uint16_t>(end - packed.characters.data());
        end = std::copy(text.begin(), text.end(), end) + 1;
        return start;
    };
    packed.starts.fill(append(form.otherwise));
    for (const pm::state_reason &reason : pm::state_reasons) packed.starts[reason.code] = append(reason.*form.text);
    return packed;
}();

}  // namespace

const char *port_state_reason_string(uint8_t reason, int32_t form) {
    return form == keyword_form ? texts<keywords>.of(reason) : texts<messages>.of(reason);
}
