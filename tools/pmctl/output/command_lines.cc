// SPDX-License-Identifier: Apache-2.0
#include "output/command_lines.h"

#include <fmt/core.h>

#include "output/printable_text.h"
#include "switch/interface_names.h"

namespace pmctl {
namespace {

bool is_negated(const setting_change &change) {
    return is_text(*change.what) ? change.text.empty() : change.what->negated == change.number;
}

std::string indented_line(const setting &each, const pm_port_info_t &port) {
    const setting_change value = value_in(port, each);
    if (!each.belongs_to(port) && value.number == each.otherwise) return {};
    const std::string line = setting_line(value);
    return line.empty() ? line : fmt::format("  {}\n", line);
}

std::string creating_line(if_index_t index, const std::string &name) {
    if (is_sub_interface(index)) return fmt::format("subinterface create {}\n", name);
    if (is_loopback(index)) return fmt::format("loopback create {}\n", name);
    return {};
}

}  // namespace

std::string setting_line(const setting_change &change) {
    const setting &of = *change.what;
    if (is_negated(change)) return fmt::format("no {}", of.keywords);
    if (is_text(of)) return fmt::format("{} {}", of.keywords, quoted_text(change.text));
    if (of.bare == change.number) return std::string(of.keywords);
    const auto value = written_value(of.values, change.number);
    return value ? fmt::format("{} {}", of.keywords, *value) : std::string();
}

std::string command_lines(const pm_port_info_t &port) {
    const std::string name = interface_name(port.if_index);
    std::string lines = creating_line(port.if_index, name) + fmt::format("interface {}\n", name);
    for (const setting &each : all_settings()) lines += indented_line(each, port);
    return lines;
}

}  // namespace pmctl
