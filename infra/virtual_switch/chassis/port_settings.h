// SPDX-License-Identifier: Apache-2.0
// port_settings.h: sets what a port reports, by the keys of the table.
#ifndef VIRTUAL_SWITCH_CHASSIS_PORT_SETTINGS_H
#define VIRTUAL_SWITCH_CHASSIS_PORT_SETTINGS_H

#include <optional>
#include <span>
#include <string>
#include <variant>

#include "chassis/document.h"
#include "chassis/model.h"
#include "chassis/port_setting_table.h"

namespace virtual_switch {

// The value of a setting that is no array. Addresses and other numbers that keep network order are as they lie there.
using setting_value = std::variant<uint32_t, std::string>;

// All keys of a chassis file, in the order they are documented.
std::span<const std::string_view> port_setting_keys();

bool is_port_setting(std::string_view key);

// Whether a kind of port has what the setting sets: members that travel in attribute elements exist only on the kinds
// of ports that send those elements.
bool has_member(port_kind kind, const port_setting &setting);

// The word that stands for a number, if one does.
std::optional<std::string_view> word_of(const port_setting &setting, uint32_t number);

// Whether a setting takes a value of its type.
bool is_good(const port_setting &setting, const setting_value &value);

// Throws chassis_error for a value that the setting does not take.
setting_value read_setting(const port_setting &setting, const document_value &value, const std::string &key);

// Stores a good value.
void store_setting(const port_setting &setting, const setting_value &value, pm_port_info_t &info);

// Applies a setting to a port. `key` is one of port_setting_keys, `section` what messages put before it. Throws
// chassis_error for a value that the key does not take, or a port that does not have such a thing.
void apply_port_setting(const document_entry &setting, const std::string &section, port &to);

}  // namespace virtual_switch

#endif
