// SPDX-License-Identifier: Apache-2.0
// attribute_set.h: a set of configuration attributes.
#ifndef PROTOCOL_ATTRIBUTE_SET_H
#define PROTOCOL_ATTRIBUTE_SET_H

#include <array>
#include <cstdint>
#include <initializer_list>

namespace pm {

class attribute_set {
  public:
    constexpr attribute_set(std::initializer_list<uint8_t> attributes) {
        for (const uint8_t attribute : attributes) bits_[attribute / 32] |= uint32_t{1} << attribute % 32;
    }

    [[nodiscard]] constexpr bool contains(uint8_t attribute) const {
        return (bits_[attribute / 32] >> attribute % 32 & 1) != 0;
    }

  private:
    std::array<uint32_t, 8> bits_{};
};

}  // namespace pm

#endif
