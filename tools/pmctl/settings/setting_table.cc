// SPDX-License-Identifier: Apache-2.0
// A setting is written wherever it can be made, whatever its value: the lines restore what was changed since.
//
// Where it can be made is told by the library's predicates where there is one. They say no to Ethernet ports, which
// have a port mode, a trunking mode and a speed all the same, and yes to sub-interfaces and loopbacks, which have none
// of their own. Where a setting has no predicate, a value that is none (0) tells that the port does not have it. A port
// that should not have a setting but holds another value than such ports do has it nevertheless, so nothing is lost.
#include "settings/setting_table.h"

#include <cstring>

#include "platform/if_index.h"
#include "port_mgr/command_words.h"
#include "port_mgr/port_capabilities.h"
#include "port_mgr/port_strings.h"
#include "switch/interface_names.h"

namespace pmctl {
namespace {

constexpr uint8_t ethernet_layer = 2;
constexpr uint32_t most_in_halfword = 0xffff;
constexpr uint32_t most_in_word = 0xffffffff;

// Which ports have a setting

bool every(const pm_port_info_t &) { return true; }

bool is_port(const pm_port_info_t &port) { return !is_sub_interface(port.if_index) && !is_loopback(port.if_index); }

template <int32_t (*Is_supported)(uint8_t)>
bool supports(const pm_port_info_t &port) {
    return is_port(port) &&
           (Is_supported(interface_type(port.if_index)) != 0 || interface_type(port.if_index) == IF_TYPE_ETHERNET);
}

constexpr auto has_mode = supports<pm_is_port_mode_supported>;
constexpr auto has_trunking = supports<pm_is_trunk_mode_supported>;
constexpr auto has_speed = supports<pm_is_port_speed_supported>;

bool has_beacon(const pm_port_info_t &port) { return is_port(port) && pm_is_beacon_mode_supported(port.if_index) != 0; }

// The predicate says yes to most Ethernet ports.
bool has_credits(const pm_port_info_t &port) {
    return is_port(port) && port.phy_layer != ethernet_layer && pm_is_bbcredit_supported(port.if_index) != 0;
}

// Values that have words

template <const char *(*Words)(uint8_t)>
std::string words_of_byte(uint32_t value) {
    return Words(static_cast<uint8_t>(value));
}

constexpr vocabulary buffer_sizes = {{}, nullptr, 1, most_in_halfword, "bytes"};
constexpr vocabulary vsans = {{}, nullptr, 1, most_in_halfword};
constexpr vocabulary packet_sizes = {{}, nullptr, 1, most_in_word, "bytes"};
constexpr vocabulary bandwidths = {{}, nullptr, 1, most_in_word, "kbit/s"};

// Not every bit is a mode, and several bits have one text.
constexpr uint32_t modes[] = {0x1,      0x2,       0x4,       0x8,    0x10,    0x20,     0x40,
                              0x200,    0x400,     0x4000,    0x8000, 0x80000, 0x100000, 0x400000,
                              0x800000, 0x4000000, 0x8000000, 0x60,   0xffff,  0xfffb,   0xfe3f};
constexpr vocabulary mode_values = {
    modes, [](uint32_t mode) -> std::string { return port_mode_string(static_cast<int32_t>(mode)); }, 1, most_in_word};

constexpr uint32_t automatic_speeds[] = {0, 1, 2, 110};
constexpr vocabulary speed_values = {automatic_speeds,
                                     [](uint32_t speed) -> std::string { return pm_cli_dump_port_speed(speed); }, 1,
                                     most_in_word, "Mbit/s"};

constexpr uint32_t one_to_two[] = {1, 2};
constexpr uint32_t one_to_three[] = {1, 2, 3};
constexpr vocabulary trunk_modes = {one_to_three, words_of_byte<pm_cli_dump_trunk_mode>};
constexpr vocabulary rate_modes = {one_to_two, words_of_byte<pm_cli_dump_port_rate_mode>};
constexpr vocabulary duplex_modes = {one_to_three, words_of_byte<pm_cli_dump_port_duplex_mode>};
constexpr vocabulary on_off = {one_to_two, [](uint32_t value) -> std::string { return value == 1 ? "on" : "off"; }};

constexpr uint32_t three_to_four[] = {3, 4};
constexpr vocabulary policy = {three_to_four, [](uint32_t value) -> std::string { return value == 3 ? "on" : "off"; }};

constexpr uint32_t no_credits[] = {0};
constexpr vocabulary credit_values = {no_credits, [](uint32_t) -> std::string { return "default"; }, 1, most_in_word};

#define OF(member) [](const pm_port_info_t &port) { return uint32_t{port.member}; }

using enum value_width;

constexpr setting settings[] = {
    {"shutdown", PM_ATTR_ADMIN_STATE, byte, {}, 2, 1, every, OF(admin_state), 0},
    {"description", PM_ATTR_DESCRIPTION, text, {}, {}, 0, every, nullptr, 0},
    {"switchport mode", PM_ATTR_PORT_MODE, word, mode_values, {}, {}, has_mode, OF(admin_mode), 1},
    {"switchport trunk mode", PM_ATTR_TRUNK_MODE, byte, trunk_modes, {}, {}, has_trunking, OF(admin_trunk_mode), 1},
    {"speed", PM_ATTR_SPEED, word, speed_values, {}, {}, has_speed, OF(admin_speed), 0},
    {"rate-mode", PM_ATTR_RATE_MODE, byte, rate_modes, {}, {}, every, OF(rate_mode), 0},
    {"duplex", PM_ATTR_DUPLEX, byte, duplex_modes, {}, {}, every, OF(duplex), 0},
    {"auto-negotiation", PM_ATTR_AUTO_NEG, word, on_off, {}, {}, every, OF(auto_neg), 0},
    {"beacon", PM_ATTR_BEACON_MODE, byte, on_off, {}, {}, has_beacon, OF(beacon_mode), 2},
    {"receive-buffer-size", PM_ATTR_RX_BUF_SIZE, halfword, buffer_sizes, {}, {}, every, OF(rx_buf_size), 0},
    {"receive-bb-credit", PM_ATTR_RX_BB_CREDIT, word, credit_values, {}, {}, has_credits, OF(bb_credit[0]), 0},
    {"port-vsan", PM_ATTR_PORT_VSAN, halfword, vsans, {}, {}, every, OF(port_vsan), 0},
    {"mtu", PM_ATTR_MTU, word, packet_sizes, {}, {}, every, OF(mtu), 0},
    {"bandwidth", PM_ATTR_BANDWIDTH, word, bandwidths, {}, 0, every, OF(bandwidth), 0},
    {"down-on-link-failure", PM_ATTR_DOWN_ON_LINK_FAILURE, byte, policy, {}, {}, is_port, OF(down_on_link_failure), 4},
};

#undef OF

}  // namespace

std::span<const setting> all_settings() { return settings; }

setting_change value_in(const pm_port_info_t &port, const setting &of) {
    if (!is_text(of)) return {&of, of.number(port)};
    return {&of, 0, std::string(port.description, strnlen(port.description, sizeof port.description))};
}

bool is_same_value(const setting_change &one, const setting_change &other) {
    return one.number == other.number && one.text == other.text;
}

}  // namespace pmctl
