// SPDX-License-Identifier: Apache-2.0
// The settings of interfaces: one table for those who write them as lines and those who read such lines.
#ifndef PMCTL_SETTINGS_SETTING_TABLE_H
#define PMCTL_SETTINGS_SETTING_TABLE_H

#include <string_view>

#include "port_mgr/config_attribute.h"
#include "port_mgr/port_info_record.h"
#include "settings/vocabulary.h"

namespace pmctl {

// Bytes of an attribute's value.
enum class value_width : uint8_t { byte = 1, halfword = 2, word = 4, text = PM_CFG_VALUE_SIZE };

// A line is the keywords and a value; or, for values that are no words, the keywords alone or "no" before them.
struct setting {
    std::string_view keywords;
    uint8_t attribute;  // PM_ATTR_...
    value_width width;
    vocabulary values;                               // behind the keywords; of a text none
    std::optional<uint32_t> bare;                    // the value of the keywords alone
    std::optional<uint32_t> negated;                 // the value of "no" and the keywords; of a text the empty one
    bool (*belongs_to)(const pm_port_info_t &port);  // whether such ports have the setting
    uint32_t (*number)(const pm_port_info_t &port);  // its value; of a text null
    uint32_t otherwise;                              // what ports hold that do not have it
};

constexpr bool is_text(const setting &each) { return each.width == value_width::text; }

// In the order in which they are written and restored.
std::span<const setting> all_settings();

// A value to give to a setting: a number, or a text.
struct setting_change {
    const setting *what;
    uint32_t number = 0;
    std::string text = {};
};

// What a port's setting is.
setting_change value_in(const pm_port_info_t &port, const setting &of);

// Whether two changes of one setting come to the same.
bool is_same_value(const setting_change &one, const setting_change &other);

}  // namespace pmctl

#endif
