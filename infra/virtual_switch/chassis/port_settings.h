// SPDX-License-Identifier: Apache-2.0
// port_settings.h: the keys by which a chassis file sets what a port reports.
#ifndef VIRTUAL_SWITCH_CHASSIS_PORT_SETTINGS_H
#define VIRTUAL_SWITCH_CHASSIS_PORT_SETTINGS_H

#include <span>

#include "chassis/document.h"
#include "chassis/model.h"

namespace virtual_switch {

// All keys, in the order they are documented.
std::span<const std::string_view> port_setting_keys();

bool is_port_setting(std::string_view key);

// Applies a setting to a port. `key` is one of port_setting_keys, `section` what messages put before it. Throws
// chassis_error for a value that the key does not take, or a port that does not have such a thing.
void apply_port_setting(const document_entry &setting, const std::string &section, port &to);

}  // namespace virtual_switch

#endif
