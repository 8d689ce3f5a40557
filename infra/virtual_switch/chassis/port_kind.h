// SPDX-License-Identifier: Apache-2.0
// port_kind.h: the kinds of ports of the virtual switch: what each reports and how it starts out.
#ifndef VIRTUAL_SWITCH_CHASSIS_PORT_KIND_H
#define VIRTUAL_SWITCH_CHASSIS_PORT_KIND_H

#include <bitset>
#include <initializer_list>
#include <string_view>

#include "protocol/port_info_layout.h"

namespace virtual_switch {

enum class port_kind : uint8_t {
    fc,
    ethernet,
    ips,
    slot_port,
    ethernet_sfp,
    fcip,
    fc_channel,
    ethernet_channel,
    mgmt,
    loopback,
    other,
    sub_interface
};
inline constexpr size_t port_kind_count = 12;

// Values of the record's members that the switch itself reads or writes.
namespace port_state {
inline constexpr uint8_t up = 1;
inline constexpr uint8_t down = 2;
inline constexpr uint8_t testing = 4;
inline constexpr uint8_t trunking = 8;
}  // namespace port_state

namespace port_mode {
inline constexpr uint32_t automatic = 0x1;
inline constexpr uint32_t e = 0x4;
inline constexpr uint32_t te = 0x8;
inline constexpr uint32_t f = 0x20;
inline constexpr uint32_t ips = 0x200;
inline constexpr uint32_t trunk = 0x100000;
}  // namespace port_mode

namespace trunk_mode {
inline constexpr uint8_t off = 1;
inline constexpr uint8_t on = 2;
inline constexpr uint8_t automatic = 3;
}  // namespace trunk_mode

namespace reason {
inline constexpr uint8_t none = 2;
inline constexpr uint8_t error_disabled = 5;
inline constexpr uint8_t not_connected = 7;
inline constexpr uint8_t initializing = 10;
inline constexpr uint8_t administratively_down = 12;
inline constexpr uint8_t parent_down = 26;
inline constexpr uint8_t sfp_absent = 29;
inline constexpr uint8_t no_operational_members = 43;
inline constexpr uint8_t loss_of_signal = 83;
}  // namespace reason

namespace speed {
inline constexpr uint32_t automatic = 0;
inline constexpr uint32_t automatic_to_2000 = 1;
inline constexpr uint32_t automatic_to_4000 = 2;
inline constexpr uint32_t automatic_10_100 = 110;
inline constexpr uint32_t unknown = 0xffffffff;
}  // namespace speed

// Which types of attribute elements a port sends.
using attribute_set = std::bitset<pm::port_attributes.back().type + 1>;

struct port_kind_traits {
    std::string_view name;
    attribute_set attributes;
    uint32_t top_speed;  // what an automatic speed comes to, in Mbit/s
    uint32_t auto_mode;  // what an automatic mode comes to
    void (*set_defaults)(pm_port_info_t &info);
};

const port_kind_traits &traits_of(port_kind kind);

// A set of kinds.
class kind_set {
  public:
    constexpr kind_set(std::initializer_list<port_kind> kinds) {
        for (const port_kind kind : kinds) bits_ |= bit_of(kind);
    }
    [[nodiscard]] constexpr bool contains(port_kind kind) const { return (bits_ & bit_of(kind)) != 0; }

    // Every kind that is not in the set.
    constexpr kind_set operator~() const {
        kind_set others{};
        others.bits_ = ~bits_;
        return others;
    }

  private:
    static constexpr uint32_t bit_of(port_kind kind) { return 1u << static_cast<uint8_t>(kind); }
    uint32_t bits_ = 0;
};

// Those that can have sub-interfaces, and that trunk by themselves.
inline constexpr kind_set switched_ethernet{port_kind::ethernet, port_kind::ethernet_sfp, port_kind::ethernet_channel};

// Those whose line cards keep counters of their traffic.
inline constexpr kind_set keeping_counters{port_kind::ethernet, port_kind::ips, port_kind::ethernet_sfp,
                                           port_kind::fcip};

// Those that a transceiver can be plugged into.
inline constexpr kind_set takes_transceiver{port_kind::fc, port_kind::ethernet, port_kind::ethernet_sfp};

// A record of this kind as it is before any setting: up, and with nothing derived yet.
pm_port_info_t default_port_info(port_kind kind, if_index_t if_index);

}  // namespace virtual_switch

#endif
