// SPDX-License-Identifier: Apache-2.0
// interface_type.h: what the interface types have in common.
#ifndef PM_API_COMMON_INTERFACE_TYPE_H
#define PM_API_COMMON_INTERFACE_TYPE_H

#include <initializer_list>

#include "platform/if_index.h"
#include "protocol/interface_owner.h"

namespace pm {

// IF_TYPE_NONE for an index without one.
inline uint8_t type_of(if_index_t if_index) {
    uint8_t type = IF_TYPE_NONE;
    if_index_get_type(if_index, &type);
    return type;
}

// A set of interface types, all of them below 32.
class type_set {
  public:
    constexpr type_set(std::initializer_list<uint8_t> types) {
        for (const uint8_t type : types) bits_ |= uint32_t{1} << type;
    }

    [[nodiscard]] constexpr bool contains(uint8_t type) const { return type < 32 && (bits_ >> type & 1) != 0; }

  private:
    uint32_t bits_ = 0;
};

}  // namespace pm

#endif
