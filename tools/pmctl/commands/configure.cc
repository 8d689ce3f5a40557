// SPDX-License-Identifier: Apache-2.0
#include "commands/configure.h"

#include <cstring>

#include <fmt/core.h>

#include "commands/asked_ports.h"
#include "failure.h"
#include "output/command_lines.h"
#include "port_mgr/status.h"
#include "switch/interface_names.h"

namespace pmctl {
namespace {

template <typename Number>
std::vector<std::byte> bytes_of(uint32_t value) {
    const auto number = static_cast<Number>(value);
    const auto bytes = std::as_bytes(std::span(&number, 1));
    return {bytes.begin(), bytes.end()};
}

std::vector<std::byte> text_field(const std::string &text) {
    std::vector<std::byte> field(static_cast<size_t>(value_width::text));
    std::memcpy(field.data(), text.data(), text.size());
    return field;
}

attribute_value encoded(const setting_change &change) {
    const uint8_t attribute = change.what->attribute;
    switch (change.what->width) {
        case value_width::byte:
            return {attribute, bytes_of<uint8_t>(change.number)};
        case value_width::halfword:
            return {attribute, bytes_of<uint16_t>(change.number)};
        case value_width::word:
            return {attribute, bytes_of<uint32_t>(change.number)};
        default:
            return {attribute, text_field(change.text)};
    }
}

// Where no service takes an attribute, its value stays as it is; that may be what was asked for. An interface that
// cannot be asked about has no value.
bool has_value_already(configuration &on, if_index_t index, const setting_change &change) try {
    for (const pm_port_info_t &port : on.ports(interface_page{{index, index}}))
        if (port.if_index == index) return is_same_value(value_in(port, *change.what), change);
    return false;
} catch (const query_refused &) {
    return false;
}

std::string reason_of(port_mgr::status status, const setting_change &change) {
    const std::string words = status.words();
    switch (status.value()) {
        case PM_ERR_REJECTED:
            return fmt::format("it takes no {}: {}", change.what->keywords, words);
        case PM_ERR_INVALID_PARAM:
            return fmt::format("it does not take {}: {}", setting_line(change), words);
        case PM_ERR_FAILURE:
            return fmt::format("the switch could not keep {}: {}", setting_line(change), words);
        default:
            return words;
    }
}

// Of an interface that no service said anything about.
void note_silence(configuration &on, if_index_t index, const setting_change &change,
                  std::vector<std::string> &failures) {
    if (has_value_already(on, index, change)) return;
    failures.push_back(
        fmt::format("{}: no service of this switch takes its {}", interface_name(index), change.what->keywords));
}

// What became of one range, in the order of its members. Those that do not exist are none of it, unless all do not.
void note_range(configuration &on, const interface_range &range, const setting_change &change,
                const change_results &results, std::vector<std::string> &failures) {
    uint32_t missing = 0;
    for (uint32_t offset = 0; offset < range.count(); ++offset) {
        const if_index_t index = range.member(offset);
        const auto found = results.find(index);
        if (found == results.end()) continue;
        const std::optional<port_mgr::status> status = found->second;
        if (!status)
            note_silence(on, index, change, failures);
        else if (status->value() == PM_ERR_INVALID_RANGE)
            ++missing;
        else if (!status->ok())
            failures.push_back(fmt::format("{}: {}", interface_name(index), reason_of(*status, change)));
    }
    if (missing == range.count()) failures.push_back(fmt::format("no such interface: {}", range.text()));
}

std::string reason_of(port_mgr::status status, const creation_step &step) {
    const bool is_creation = step.kind == created_kind::sub_interface && step.creates;
    const std::string words = status.words();
    if (status.value() == PM_ERR_REJECTED)
        return fmt::format("the switch takes no configuration from {}, or no more such interfaces: {}", user_name(),
                           words);
    if (is_creation && status.value() == PM_ERR_INVALID_RANGE)
        return fmt::format("its main interface does not exist, or can have no sub-interfaces: {}", words);
    if (is_creation && status.value() == PM_ERR_INVALID_PARAM)
        return fmt::format("the numbers 1, 4094 and 4095 are reserved: {}", words);
    return words;
}

void configure_range(configuration &on, const interface_range &range, const creation_step &step) {
    const port_mgr::status status = step.kind == created_kind::loopback ? on.config_loopbacks(range, step.creates)
                                                                        : on.config_sub_interfaces(range, step.creates);
    if (status.ok()) return;
    if (status.value() == PM_ERR_INVALID_RANGE && !step.creates)
        throw query_refused(fmt::format("no such interface: {}", range.text()));
    throw query_refused(fmt::format("{}: {}", range.text(), reason_of(status, step)));
}

}  // namespace

bool carry_out(configuration &on, const setting_step &step, std::vector<std::string> &failures) {
    const attribute_value value = encoded(step.change);
    change_results results;
    bool goes_on = true;
    for (const interface_page &page : owner_pages(members_of(*step.interfaces)))
        if (goes_on) goes_on = attempt(failures, [&] { on.set(page, value, results); });
    for (const interface_range &range : *step.interfaces)
        if (goes_on) goes_on = attempt(failures, [&] { note_range(on, range, step.change, results, failures); });
    return goes_on;
}

bool carry_out(configuration &on, const creation_step &step, std::vector<std::string> &failures) {
    for (const interface_range &range : step.interfaces)
        if (!attempt(failures, [&] { configure_range(on, range, step); })) return false;
    return true;
}

}  // namespace pmctl
