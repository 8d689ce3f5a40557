// SPDX-License-Identifier: Apache-2.0
#include "commands/config.h"

#include <fmt/core.h>

#include "command_line/interface_words.h"
#include "commands/asked_ports.h"
#include "commands/configure.h"
#include "settings/setting_reader.h"
#include "settings/text_file.h"

namespace pmctl {
namespace {

std::vector<interface_range> ranges_in(const arguments &given) { return interfaces_named(given.words("RANGE")); }

template <typename Step>
command_result carried_out(const Step &step) {
    command_result result;
    attempt(result.failures, [&] {
        configuration on;
        carry_out(on, step, result.failures);
    });
    return result;
}

command_result created(const arguments &given, created_kind kind, bool creates) {
    creation_step step{kind, creates, ranges_in(given)};
    check_kind(kind, step.interfaces);
    return carried_out(step);
}

// Puts the line before the failures of its step.
void note(const std::string &line, const std::vector<std::string> &of_step, std::vector<std::string> &failures) {
    for (const std::string &each : of_step) failures.push_back(fmt::format("{}: {}", line, each));
}

void carry_out_all(const std::string &file, const std::vector<config_step> &steps, std::vector<std::string> &failures) {
    configuration on;
    for (const config_step &each : steps) {
        std::vector<std::string> of_step;
        const bool goes_on = std::visit([&](const auto &step) { return carry_out(on, step, of_step); }, each.what);
        note(line_name(file, each.line), of_step, failures);
        if (goes_on) continue;
        if (&each != &steps.back())
            failures.push_back(fmt::format("{}: what follows was not carried out", line_name(file, each.line)));
        return;
    }
}

}  // namespace

command_result run_config_file(const arguments &given) {
    const text_file file = read_text_file(given.word("FILE"));
    const std::vector<config_step> steps = read_config(file.name, file.text);
    command_result result;
    attempt(result.failures, [&] { carry_out_all(file.name, steps, result.failures); });
    return result;
}

command_result run_config_interface(const arguments &given) {
    return carried_out(setting_step{std::make_shared<const std::vector<interface_range>>(ranges_in(given)),
                                    read_setting(given.words("SETTING"))});
}

command_result run_create_sub_interfaces(const arguments &given) {
    return created(given, created_kind::sub_interface, true);
}

command_result run_delete_sub_interfaces(const arguments &given) {
    return created(given, created_kind::sub_interface, false);
}

command_result run_create_loopbacks(const arguments &given) { return created(given, created_kind::loopback, true); }

command_result run_delete_loopbacks(const arguments &given) { return created(given, created_kind::loopback, false); }

}  // namespace pmctl
