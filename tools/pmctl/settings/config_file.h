// SPDX-License-Identifier: Apache-2.0
// Files of command lines, as `show running-config` prints them.
#ifndef PMCTL_SETTINGS_CONFIG_FILE_H
#define PMCTL_SETTINGS_CONFIG_FILE_H

#include <memory>
#include <variant>

#include "settings/setting_table.h"
#include "switch/interface_ranges.h"

namespace pmctl {

// The settings behind one line `interface` share its interfaces.
struct setting_step {
    std::shared_ptr<const std::vector<interface_range>> interfaces;
    setting_change change;
};

enum class created_kind : uint8_t { sub_interface, loopback };

struct creation_step {
    created_kind kind;
    bool creates;  // else it deletes
    std::vector<interface_range> interfaces;
};

struct config_step {
    size_t line;  // counted from 1
    std::variant<setting_step, creation_step> what;
};

// The steps of a file's text in their order. Throws usage_errors with every mistake,
// up to the hundredth; `name` is the file's in them.
std::vector<config_step> read_config(const std::string &name, std::string_view text);

// "lab.cfg:3".
std::string line_name(const std::string &file, size_t line);

// Throws usage_error when one is not of the kind.
void check_kind(created_kind kind, const std::vector<interface_range> &interfaces);

}  // namespace pmctl

#endif
