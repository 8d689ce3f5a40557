// SPDX-License-Identifier: Apache-2.0
// The interface kinds and where each keeps its numbers inside an index.
#ifndef PLATFORM_DEV_UTILS_IF_INDEX_KINDS_H
#define PLATFORM_DEV_UTILS_IF_INDEX_KINDS_H

#include <array>
#include <string_view>

#include "platform_dev/if_index_dev.h"

namespace platform_dev {

// A run of bits inside an index. A kind that has no such number has a field of 0 bits.
struct bit_field {
    uint8_t shift;
    uint8_t bits;

    [[nodiscard]] constexpr bool present() const { return bits != 0; }
    [[nodiscard]] constexpr uint32_t max() const { return (1u << bits) - 1; }
    [[nodiscard]] constexpr uint32_t mask() const { return max() << shift; }
    [[nodiscard]] constexpr uint32_t get(if_index_t index) const { return index >> shift & max(); }
};

// What the number before the '/' of a name is.
enum class unit_kind : uint8_t { none, slot, subtype };

struct index_layout {
    unit_kind unit_is;
    bit_field unit;
    bit_field number;
    bit_field sub_intf;

    [[nodiscard]] constexpr uint32_t mask() const { return unit.mask() | number.mask() | sub_intf.mask(); }
};

//                                                unit                 unit     number   sub-interface
inline constexpr index_layout slot_port_layout = {unit_kind::slot, {19, 5}, {12, 7}, {0, 0}};
inline constexpr index_layout sub_port_layout = {unit_kind::slot, {19, 5}, {12, 7}, {0, 12}};
inline constexpr index_layout channel_layout = {unit_kind::subtype, {22, 2}, {12, 10}, {0, 12}};
inline constexpr index_layout tunnel_layout = {unit_kind::none, {0, 0}, {0, 16}, {0, 0}};
inline constexpr index_layout number_layout = {unit_kind::none, {0, 0}, {0, 24}, {0, 0}};

struct interface_kind {
    uint8_t type;
    std::string_view name;  // empty: the name is made of the type
    index_layout layout;
};

// A short name means the first kind in this order whose name it begins.
inline constexpr interface_kind interface_kinds[] = {
    {IF_TYPE_FC, "fc", slot_port_layout},
    {IF_TYPE_ETHERNET, "Ethernet", sub_port_layout},
    {IF_TYPE_PORT_CHANNEL, "port-channel", channel_layout},
    {IF_TYPE_MGMT, "mgmt", number_layout},
    {IF_TYPE_FCIP, "fcip", tunnel_layout},
    {IF_TYPE_SLOT_PORT, "", slot_port_layout},
    {IF_TYPE_ETHERNET_KIND, "", slot_port_layout},
    {IF_TYPE_LOOPBACK, "loopback", number_layout},
    {IF_TYPE_BUNDLE, "", channel_layout},
    {IF_TYPE_ETHERNET_SFP, "", sub_port_layout},
    {IF_TYPE_OTHER, "", number_layout},
};

inline constexpr bit_field type_field = {24, 8};

namespace detail {

// Position in interface_kinds plus one; 0 for a type that is none of them.
inline constexpr auto kind_position = [] {
    std::array<uint8_t, 256> position{};
    uint8_t next = 1;
    for (const interface_kind &kind : interface_kinds) position[kind.type] = next++;
    return position;
}();

}  // namespace detail

// The kind with this type, or null.
constexpr const interface_kind *kind_of_type(uint8_t type) {
    const uint8_t position = detail::kind_position[type];
    return position == 0 ? nullptr : &interface_kinds[position - 1];
}

// The kind that an index is of, or null.
constexpr const interface_kind *kind_of(if_index_t index) {
    return kind_of_type(static_cast<uint8_t>(type_field.get(index)));
}

// The numbers of an index, as they stand in its fields.
struct index_numbers {
    uint32_t unit;
    uint32_t number;
    uint32_t sub_intf;
};

// Puts an index together. Returns false, and leaves `out`, when a number does not fit its field.
constexpr bool compose_index(const interface_kind &kind, const index_numbers &numbers, if_index_t *out) {
    const index_layout &layout = kind.layout;
    if (numbers.unit > layout.unit.max() || numbers.number > layout.number.max() ||
        numbers.sub_intf > layout.sub_intf.max())
        return false;
    *out = uint32_t{kind.type} << type_field.shift | numbers.unit << layout.unit.shift |
           numbers.number << layout.number.shift | numbers.sub_intf << layout.sub_intf.shift;
    return true;
}

}  // namespace platform_dev

#endif
