// SPDX-License-Identifier: Apache-2.0
#include "chassis/port_settings.h"

#include <algorithm>
#include <array>

#include "chassis/chassis_error.h"
#include "chassis/port_words.h"
#include "chassis/value_reader.h"

namespace virtual_switch {
namespace {

enum class setting_kind : uint8_t {
    number,
    word,
    word_or_number,
    text,
    network_number,  // a number whose four bytes stay in network order
    ipv4_address
};

struct port_setting {
    std::string_view key;
    setting_kind kind;
    size_t member;  // offset in pm_port_info_t
    size_t size;    // bytes of the member, or of each of its elements
    number_range range{};
    std::span<const named_value> words{};
    size_t count = 1;  // more than one is set by an array
};

constexpr number_range any_8{0, 0xff};
constexpr number_range any_16{0, 0xffff};
constexpr number_range any_32{0, 0xffffffff};
constexpr number_range speeds{10, 400000};
constexpr number_range vsans{1, 4093};
constexpr number_range vlans{1, 4094};
constexpr number_range mtus{64, 65535};
constexpr number_range fc_ids{0, 0xffffff};

#define PM_SETTING(member, kind, ...)                                                                              \
    port_setting {                                                                                                 \
#member, setting_kind::kind, offsetof(pm_port_info_t, member), sizeof(pm_port_info_t::member), __VA_ARGS__ \
    }
#define PM_ELEMENTS(member, kind, range, words, count)                                                           \
    port_setting {                                                                                               \
#member, setting_kind::kind, offsetof(pm_port_info_t, member), sizeof(pm_port_info_t::member) / (count), \
            range, words, count                                                                                  \
    }
#define PM_NAMED_ELEMENT(key, kind, member, range) \
    port_setting { key, setting_kind::kind, offsetof(pm_port_info_t, member), sizeof(uint32_t), range }

constexpr std::span<const named_value> no_words{};

constexpr std::array port_settings{
    PM_SETTING(description, text),
    PM_SETTING(owner, text),
    PM_SETTING(admin_mode, word, {}, mode_words),
    PM_SETTING(oper_mode, word, {}, mode_words),
    PM_SETTING(admin_speed, word_or_number, speeds, speed_words),
    PM_SETTING(oper_speed, number, speeds),
    PM_SETTING(state_reason, word_or_number, any_8, reason_words),
    PM_SETTING(port_vsan, number, vsans),
    PM_SETTING(admin_trunk_mode, word, {}, trunk_words),
    PM_SETTING(oper_trunk_mode, word, {}, trunk_words),
    PM_SETTING(mtu, number, mtus),
    PM_SETTING(bandwidth, number, any_32),
    PM_SETTING(beacon_mode, word, {}, on_off_words),
    PM_ELEMENTS(bb_credit, number, any_32, no_words, 5),
    PM_SETTING(rx_buf_size, number, any_16),
    PM_SETTING(fcid, network_number, fc_ids),
    PM_SETTING(ip_address, ipv4_address),
    PM_SETTING(ip_mask, ipv4_address),
    PM_SETTING(service_state, word, {}, service_state_words),
    PM_SETTING(port_type, word, {}, port_type_words),
    PM_ELEMENTS(snmp_trap, word, number_range{}, on_off_words, 2),
    PM_SETTING(down_on_link_failure, word, {}, link_failure_words),
    PM_ELEMENTS(link_error_count, number, any_32, no_words, 5),
    PM_ELEMENTS(lane_state, number, any_8, no_words, 4),
    PM_SETTING(rate_mode, word, {}, rate_words),
    PM_SETTING(auto_neg, word, {}, on_off_words),
    PM_SETTING(duplex, word, {}, duplex_words),
    PM_SETTING(native_vlan, number, vlans),
    PM_SETTING(flowctrl_receive, word, {}, flow_control_words),
    PM_SETTING(flowctrl_send, word, {}, flow_control_words),
    PM_SETTING(promiscuous, word, {}, on_off_words),
    PM_SETTING(phy_layer, word, {}, phy_layer_words),
    PM_SETTING(encap, word, {}, encap_words),
    PM_SETTING(bb_scn, word, {}, on_off_words),
    PM_SETTING(ignore_param, word, {}, on_off_words),
    PM_SETTING(track_mode, word, {}, track_words),
    PM_SETTING(delayed_trap_state, word, {}, delayed_trap_words),
    PM_SETTING(ec_bb_credit, number, any_32),
    PM_SETTING(bb_credit_multiplier, number, any_32),
    PM_SETTING(bb_credit_performance_buf, number, any_32),
    PM_SETTING(fcot_present, word, {}, present_words),
    PM_NAMED_ELEMENT("fcip_peer", ipv4_address, fcip_params[0], any_32),
    PM_SETTING(fcip_tcp_port, number, any_16),
    PM_NAMED_ELEMENT("tlv_86", number, fcip_params[1], any_32),
    PM_NAMED_ELEMENT("tlv_87", number, fcip_params[2], any_32),
    PM_NAMED_ELEMENT("tlv_88", number, fcip_params[5], any_32),
    PM_NAMED_ELEMENT("tlv_89", number, fcip_params[4], any_32),
    PM_NAMED_ELEMENT("tlv_90", number, fcip_params[3], any_32),
    PM_NAMED_ELEMENT("tlv_91", number, fcip_params[6], any_32),
    PM_SETTING(tlv_67, number, any_8),
    PM_SETTING(tlv_68, number, any_8),
    PM_SETTING(tlv_78, number, any_8),
    PM_SETTING(tlv_81, network_number, any_32),
    PM_SETTING(tlv_82, network_number, any_32),
    PM_SETTING(tlv_93, number, any_32),
    PM_SETTING(tlv_94, number, any_16),
    PM_SETTING(tlv_95, number, any_32),
    PM_SETTING(tlv_106, number, any_32),
    PM_SETTING(tlv_107, number, any_32),
    PM_SETTING(tlv_108, number, any_32),
};
#undef PM_SETTING
#undef PM_ELEMENTS
#undef PM_NAMED_ELEMENT

// One word for the members that say together how a port is.
struct port_condition {
    std::string_view word;
    uint8_t admin_state;
    uint8_t oper_state;
    uint8_t state_reason;
};

constexpr std::string_view state_key = "state";
constexpr std::array port_conditions{
    port_condition{"up", port_state::up, port_state::up, reason::none},
    port_condition{"trunking", port_state::up, port_state::trunking, reason::none},
    port_condition{"testing", port_state::up, port_state::testing, reason::initializing},
    port_condition{"down", port_state::up, port_state::down, reason::not_connected},
    port_condition{"no-sfp", port_state::up, port_state::down, reason::sfp_absent},
    port_condition{"error-disabled", port_state::up, port_state::down, reason::error_disabled},
    port_condition{"shutdown", port_state::down, port_state::down, reason::administratively_down},
};

constexpr auto condition_words = [] {
    std::array<named_value, port_conditions.size()> words{};
    for (uint32_t i = 0; i < words.size(); ++i) words[i] = {port_conditions[i].word, i};
    return words;
}();

constexpr auto setting_keys = [] {
    std::array<std::string_view, port_settings.size() + 1> keys{state_key};
    std::transform(port_settings.begin(), port_settings.end(), keys.begin() + 1, [](const auto &s) { return s.key; });
    return keys;
}();

uint32_t read_setting(const port_setting &setting, const document_value &value, const std::string &key) {
    switch (setting.kind) {
        case setting_kind::number:
            return read_number(value, key, setting.range);
        case setting_kind::network_number:
            return pm::swap_be32(read_number(value, key, setting.range));
        case setting_kind::word:
            return read_word(value, key, setting.words);
        case setting_kind::word_or_number:
            return std::holds_alternative<std::string>(value.data) ? read_word(value, key, setting.words)
                                                                   : read_number(value, key, setting.range);
        case setting_kind::ipv4_address:
            return read_ipv4_address(value, key);
        case setting_kind::text:
            break;
    }
    return 0;
}

void store_number(uint8_t *member, size_t size, uint32_t number) {
    if (size == sizeof(uint8_t)) return pm::store(member, static_cast<uint8_t>(number));
    if (size == sizeof(uint16_t)) return pm::store(member, static_cast<uint16_t>(number));
    pm::store(member, number);
}

void store_text(uint8_t *member, size_t size, const std::string &text) {
    std::memset(member, 0, size);
    std::memcpy(member, text.data(), text.size());
}

void store_setting(const port_setting &setting, const document_value &value, const std::string &key, uint8_t *member) {
    if (setting.kind == setting_kind::text) {
        return store_text(member, setting.size, read_text(value, key, setting.size - 1));
    }
    if (setting.count == 1) return store_number(member, setting.size, read_setting(setting, value, key));
    for (const document_value &element : read_array(value, key, setting.count)) {
        store_number(member, setting.size, read_setting(setting, element, key));
        member += setting.size;
    }
}

// Members that travel in attribute elements exist only on the kinds of ports that send those elements.
bool has_member(port_kind kind, const port_setting &setting) {
    const auto sent_by =
        std::find_if(pm::port_attributes.begin(), pm::port_attributes.end(), [&](const auto &attribute) {
            return attribute.kind != pm::attribute_kind::ignored && attribute.member == setting.member;
        });
    return sent_by == pm::port_attributes.end() || traits_of(kind).attributes.test(sent_by->type);
}

void apply_condition(const document_value &value, const std::string &key, pm_port_info_t &info) {
    const port_condition &condition = port_conditions.at(read_word(value, key, condition_words));
    info.admin_state = condition.admin_state;
    info.oper_state = condition.oper_state;
    info.state_reason = condition.state_reason;
    if (condition.state_reason == reason::sfp_absent) info.fcot_present = 0;
}

}  // namespace

std::span<const std::string_view> port_setting_keys() { return setting_keys; }

bool is_port_setting(std::string_view key) {
    return std::find(setting_keys.begin(), setting_keys.end(), key) != setting_keys.end();
}

void apply_port_setting(const document_entry &entry, const std::string &section, port &to) {
    const std::string key = section + "." + entry.key;
    if (entry.key == state_key) return apply_condition(entry.value, key, to.configured);
    const port_setting &setting = *std::find_if(port_settings.begin(), port_settings.end(),
                                                [&](const auto &candidate) { return candidate.key == entry.key; });
    if (!has_member(to.kind, setting)) {
        throw chassis_error(entry.value.line, key,
                            name_of(to.configured.if_index) + " is of kind '" + std::string(traits_of(to.kind).name) +
                                "', which has no such setting");
    }
    store_setting(setting, entry.value, key, reinterpret_cast<uint8_t *>(&to.configured) + setting.member);
}

}  // namespace virtual_switch
