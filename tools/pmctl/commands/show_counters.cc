// SPDX-License-Identifier: Apache-2.0
#include "commands/show_counters.h"

#include <memory>

#include <fmt/core.h>

#include "command_line/interface_words.h"
#include "commands/asked_ports.h"
#include "commands/rate_meter.h"
#include "output/counter_members.h"
#include "output/json_text.h"
#include "platform/if_index.h"
#include "switch/interface_counters.h"
#include "switch/interface_names.h"

namespace pmctl {
namespace {

bool counts_by_itself(if_index_t index) { return has_counters(index) && !is_sub_interface(index); }

void refuse_without_counters(if_index_t index) {
    if (!has_counters(index))
        throw query_refused(fmt::format("{}: interfaces of this kind have no counters", interface_name(index)));
}

void refuse_sub_interface(if_index_t index) {
    if (is_sub_interface(index))
        throw query_refused(fmt::format("{}: its counters are those of {}", interface_name(index),
                                        interface_name(if_index_get_mainintf_from_subintf(index))));
}

command_result show_counters(const arguments &given, rate_meter *meter) {
    command_result result;
    std::vector<counted_interface> interfaces;
    counter_client client;
    const auto read = [&](if_index_t index) {
        refuse_without_counters(index);
        counted_interface &found = interfaces.emplace_back(counted_interface{index, client.read(index), {}, {}});
        if (meter != nullptr) meter->measure(found, std::chrono::steady_clock::now());
    };
    attempt(result.failures, [&] {
        for (const if_index_t index : asked_interfaces(given, counts_by_itself, result.failures))
            if (!attempt(result.failures, [&] { read(index); })) break;
    });
    if (given.has("--json"))
        result.output.text =
            json_text("interfaces", counter_groups(), records_of(std::span<const counted_interface>(interfaces)));
    else
        result.output.sheets = counter_sheets(interfaces, meter != nullptr);
    return result;
}

}  // namespace

command_result run_show_counters(const arguments &given) { return show_counters(given, nullptr); }

command_function watched_counters() {
    return
        [meter = std::make_shared<rate_meter>()](const arguments &given) { return show_counters(given, meter.get()); };
}

command_result run_clear_counters(const arguments &given) {
    command_result result;
    const std::vector<interface_range> ranges = interfaces_named(given.words("RANGE"));
    counter_client client;
    const auto clear = [&](if_index_t index) {
        refuse_without_counters(index);
        refuse_sub_interface(index);
        client.clear(index);
        result.output.text += fmt::format("cleared the counters of {}\n", interface_name(index));
    };
    attempt(result.failures, [&] {
        for (const if_index_t index : existing_interfaces(ranges, result.failures))
            if (!attempt(result.failures, [&] { clear(index); })) break;
    });
    return result;
}

}  // namespace pmctl
