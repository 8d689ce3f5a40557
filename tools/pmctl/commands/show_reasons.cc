// SPDX-License-Identifier: Apache-2.0
#include "commands/show_reasons.h"

#include <string_view>

#include "output/json_text.h"
#include "port_mgr/port_state_reason.h"

namespace pmctl {
namespace {

constexpr uint32_t last_code = 255;
constexpr int32_t keyword_form = 1;
constexpr int32_t message_form = 0;

struct reason {
    uint32_t code;
    std::string keyword;
    std::string message;
};

// A code that nothing is known of has no message.
bool is_known(const reason &each) { return each.message != "Unknown"; }

std::vector<reason> reasons(bool unknown_ones_too) {
    std::vector<reason> listed;
    for (uint32_t code = 0; code <= last_code; ++code) {
        const auto byte = static_cast<uint8_t>(code);
        reason each{code, port_state_reason_string(byte, keyword_form), port_state_reason_string(byte, message_form)};
        if (unknown_ones_too || is_known(each)) listed.push_back(std::move(each));
    }
    return listed;
}

sheet table_of(const std::vector<reason> &listed) {
    sheet table{"", {"Code", "Keyword", "Message"}, {}};
    for (const reason &each : listed)
        table.rows.push_back({{std::to_string(each.code)}, {each.keyword}, {each.message}});
    return table;
}

std::vector<json_fields> objects_of(const std::vector<reason> &listed) {
    std::vector<json_fields> objects;
    for (const reason &each : listed)
        objects.push_back({{"code", each.code}, {"keyword", each.keyword}, {"message", each.message}});
    return objects;
}

}  // namespace

command_result run_show_reasons(const arguments &given) {
    command_result result;
    const std::vector<reason> listed = reasons(given.has("--all"));
    if (given.has("--json"))
        result.output.text = json_text("reasons", objects_of(listed));
    else
        result.output.sheets.push_back(table_of(listed));
    return result;
}

}  // namespace pmctl
