// SPDX-License-Identifier: Apache-2.0
#include "chassis/port_settings.h"

#include <algorithm>
#include <array>

#include "chassis/chassis_error.h"

namespace virtual_switch {
namespace {

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
    port_condition{"shutdown", port_state::down, port_state::up, reason::none},
};

constexpr auto condition_words = words_of(port_conditions, &port_condition::word);

constexpr auto setting_keys = [] {
    std::array<std::string_view, port_settings.size() + 1> keys{state_key};
    std::transform(port_settings.begin(), port_settings.end(), keys.begin() + 1, [](const auto &s) { return s.key; });
    return keys;
}();

uint32_t read_number_setting(const port_setting &setting, const document_value &value, const std::string &key) {
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

uint8_t *member_of(pm_port_info_t &info, const port_setting &setting) {
    return reinterpret_cast<uint8_t *>(&info) + setting.member;
}

void store_array(const port_setting &setting, const document_value &value, const std::string &key,
                 pm_port_info_t &info) {
    uint8_t *element = member_of(info, setting);
    for (const document_value &each : read_array(value, key, setting.count)) {
        store_number(element, setting.size, read_number_setting(setting, each, key));
        element += setting.size;
    }
}

bool is_good_number(const port_setting &setting, uint32_t number) {
    const bool is_word = word_of(setting, number).has_value();
    const bool is_in_range = number >= setting.range.least && number <= setting.range.most;
    return is_word || (setting.kind != setting_kind::word && is_in_range);
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

bool has_member(port_kind kind, const port_setting &setting) {
    const auto sent_by =
        std::find_if(pm::port_attributes.begin(), pm::port_attributes.end(), [&](const auto &attribute) {
            return attribute.kind != pm::attribute_kind::ignored && attribute.member == setting.member;
        });
    return sent_by == pm::port_attributes.end() || traits_of(kind).attributes.test(sent_by->type);
}

std::optional<std::string_view> word_of(const port_setting &setting, uint32_t number) {
    for (const named_value &candidate : setting.words) {
        if (candidate.value == number) return candidate.word;
    }
    return std::nullopt;
}

bool is_good(const port_setting &setting, const setting_value &value) {
    if (const auto *number = std::get_if<uint32_t>(&value)) return is_good_number(setting, *number);
    return std::get<std::string>(value).size() < setting.size;
}

setting_value read_setting(const port_setting &setting, const document_value &value, const std::string &key) {
    if (setting.kind == setting_kind::text) return read_text(value, key, setting.size - 1);
    return read_number_setting(setting, value, key);
}

void store_setting(const port_setting &setting, const setting_value &value, pm_port_info_t &info) {
    uint8_t *const member = member_of(info, setting);
    if (const auto *number = std::get_if<uint32_t>(&value)) return store_number(member, setting.size, *number);
    store_text(member, setting.size, std::get<std::string>(value));
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
    if (setting.count > 1) return store_array(setting, entry.value, key, to.configured);
    store_setting(setting, read_setting(setting, entry.value, key), to.configured);
}

}  // namespace virtual_switch
