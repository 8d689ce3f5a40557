// SPDX-License-Identifier: Apache-2.0
// Where members lie in their records, for tables of members.
#ifndef PMCTL_OUTPUT_MEMBER_PLACE_H
#define PMCTL_OUTPUT_MEMBER_PLACE_H

#include <type_traits>

#include "output/record_member.h"

// A member's place. Pointers to members would lose the records' packing.
#define PLACE_IN(record, member)                                                                   \
    pmctl::place_of<std::remove_all_extents_t<decltype(record::member)>>(offsetof(record, member), \
                                                                         sizeof(record::member))

namespace pmctl {

template <typename Element>
constexpr member_place place_of(size_t offset, size_t size) {
    return {static_cast<uint16_t>(offset), sizeof(Element), static_cast<uint16_t>(size / sizeof(Element))};
}

// The place of one element of an array.
constexpr member_place element_of(member_place array, uint16_t index) {
    return {static_cast<uint16_t>(array.offset + index * array.size), array.size, 1};
}

}  // namespace pmctl

#endif
