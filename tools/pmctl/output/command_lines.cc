// SPDX-License-Identifier: Apache-2.0
// A setting is written wherever it can be made, whatever its value: the lines restore what was changed since.
//
// Where it can be made is told by the library's predicates where there is one. They say no to Ethernet ports, which
// have a port mode, a trunking mode and a speed all the same, and yes to sub-interfaces and loopbacks, which have none
// of their own. Where a setting has no predicate, a value that is none (0) tells that the port does not have it. A port
// that should not have a setting but holds another value than such ports do has it nevertheless, so nothing is lost.
#include "output/command_lines.h"

#include <cstring>

#include <fmt/core.h>

#include "output/printable_text.h"
#include "platform/if_index.h"
#include "port_mgr/command_words.h"
#include "port_mgr/port_capabilities.h"
#include "port_mgr/port_strings.h"
#include "switch/interface_names.h"

namespace pmctl {
namespace {

constexpr uint8_t ethernet_layer = 2;

bool is_sub_interface(const pm_port_info_t &port) {
    return if_index_get_mainintf_from_subintf(port.if_index) != port.if_index;
}

bool is_loopback(const pm_port_info_t &port) { return interface_type(port.if_index) == IF_TYPE_LOOPBACK; }

// Which ports have a setting

bool every(const pm_port_info_t &) { return true; }

bool is_port(const pm_port_info_t &port) { return !is_sub_interface(port) && !is_loopback(port); }

template <int32_t (*Is_supported)(uint8_t)>
bool supports(const pm_port_info_t &port) {
    return is_port(port) &&
           (Is_supported(interface_type(port.if_index)) != 0 || interface_type(port.if_index) == IF_TYPE_ETHERNET);
}

bool has_beacon(const pm_port_info_t &port) { return is_port(port) && pm_is_beacon_mode_supported(port.if_index) != 0; }

// The predicate says yes to most Ethernet ports.
bool has_credits(const pm_port_info_t &port) {
    return is_port(port) && port.phy_layer != ethernet_layer && pm_is_bbcredit_supported(port.if_index) != 0;
}

// Values as words; empty for a number that is no value of the setting

std::string number_words(uint32_t number) { return number == 0 ? std::string() : std::to_string(number); }

std::string credit_words(uint32_t credit) { return credit == 0 ? "default" : std::to_string(credit); }

std::string state_words(uint32_t state) { return state == 1 ? "no shutdown" : state == 2 ? "shutdown" : ""; }

std::string on_off_words(uint32_t number) { return number == 1 ? "on" : number == 2 ? "off" : ""; }

std::string link_failure_words(uint32_t number) { return number == 3 ? "on" : number == 4 ? "off" : ""; }

// Several modes may share a text, which then stands for the lowest of them.
bool has_text_of_its_own(uint32_t mode, const std::string &text) {
    for (uint32_t lower = 1; lower < mode && lower != 0; lower <<= 1)
        if (text == port_mode_string(static_cast<int32_t>(lower))) return false;
    return true;
}

std::string mode_words(uint32_t mode) {
    if (mode == 0) return {};
    const char *text = port_mode_string(static_cast<int32_t>(mode));
    const bool is_known = text != local_temp_string_buffer;
    return is_known && has_text_of_its_own(mode, text) ? text : std::to_string(mode);
}

std::string speed_words(uint32_t speed) { return pm_cli_dump_port_speed(speed); }

// The words of one of the library's functions for values from 1 to `Last`.
template <const char *(*Words)(uint8_t), uint32_t Last>
std::string words_up_to(uint32_t number) {
    return number >= 1 && number <= Last ? Words(static_cast<uint8_t>(number)) : "";
}

struct setting {
    const char *keywords;
    bool (*belongs_to)(const pm_port_info_t &port);
    uint32_t (*number)(const pm_port_info_t &port);
    uint32_t otherwise;  // what ports hold that do not have it
    std::string (*words)(uint32_t number);
};

// What follows from the speed is no setting.
uint32_t bandwidth_set(const pm_port_info_t &port) {
    constexpr uint64_t kbit_in_mbit = 1000;
    return port.bandwidth == port.oper_speed * kbit_in_mbit ? 0 : port.bandwidth;
}

#define NUMBER(member) [](const pm_port_info_t &port) { return uint32_t{port.member}; }

constexpr setting admin_state = {"", every, NUMBER(admin_state), 0, state_words};

constexpr setting settings[] = {
    {"switchport mode ", supports<pm_is_port_mode_supported>, NUMBER(admin_mode), 1, mode_words},
    {"switchport trunk mode ", supports<pm_is_trunk_mode_supported>, NUMBER(admin_trunk_mode), 1,
     words_up_to<pm_cli_dump_trunk_mode, 3>},
    {"speed ", supports<pm_is_port_speed_supported>, NUMBER(admin_speed), 0, speed_words},
    {"rate-mode ", every, NUMBER(rate_mode), 0, words_up_to<pm_cli_dump_port_rate_mode, 2>},
    {"duplex ", every, NUMBER(duplex), 0, words_up_to<pm_cli_dump_port_duplex_mode, 3>},
    {"auto-negotiation ", every, NUMBER(auto_neg), 0, on_off_words},
    {"beacon ", has_beacon, NUMBER(beacon_mode), 2, on_off_words},
    {"receive-buffer-size ", every, NUMBER(rx_buf_size), 0, number_words},
    {"receive-bb-credit ", has_credits, NUMBER(bb_credit[0]), 0, credit_words},
    {"port-vsan ", every, NUMBER(port_vsan), 0, number_words},
    {"mtu ", every, NUMBER(mtu), 0, number_words},
    {"bandwidth ", every, bandwidth_set, 0, number_words},
    {"down-on-link-failure ", is_port, NUMBER(down_on_link_failure), 4, link_failure_words},
};

#undef NUMBER

std::string line_of(const setting &each, const pm_port_info_t &port) {
    const uint32_t number = each.number(port);
    if (!each.belongs_to(port) && number == each.otherwise) return {};
    const std::string words = each.words(number);
    return words.empty() ? words : fmt::format("  {}{}\n", each.keywords, words);
}

std::string description_line(const pm_port_info_t &port) {
    const std::string_view text(port.description, strnlen(port.description, sizeof port.description));
    return text.empty() ? "  no description\n" : fmt::format("  description {}\n", quoted_text(text));
}

std::string creating_line(const pm_port_info_t &port, const std::string &name) {
    if (is_sub_interface(port)) return fmt::format("subinterface create {}\n", name);
    if (is_loopback(port)) return fmt::format("loopback create {}\n", name);
    return {};
}

}  // namespace

std::string command_lines(const pm_port_info_t &port) {
    const std::string name = interface_name(port.if_index);
    std::string lines = creating_line(port, name) + fmt::format("interface {}\n", name);
    lines += line_of(admin_state, port) + description_line(port);
    for (const setting &each : settings) lines += line_of(each, port);
    return lines;
}

}  // namespace pmctl
