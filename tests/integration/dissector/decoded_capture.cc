// SPDX-License-Identifier: Apache-2.0
#include "decoded_capture.h"

#include <gmock/gmock.h>

#include "integration/pmctl/pmctl_runs.h"

namespace dissector_test {

std::string tshark(const std::string &capture, const std::vector<std::string> &options) {
    std::vector<std::string> command{"/usr/bin/tshark", "-n", "-X", "lua_script:" DISSECTOR, "-r", capture};
    command.insert(command.end(), options.begin(), options.end());
    const run_result run = run_program(command);
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.messages, testing::AnyOf("", testing::StartsWith("Running as user \"root\""))) << run.messages;
    EXPECT_THAT(run.messages, testing::Not(testing::HasSubstr("lua")));
    for (const char *const failure : {"Lua Error", "Dissector bug", "_ws.lua.error"})
        EXPECT_EQ(run.output.find(failure), std::string::npos) << run.output.substr(run.output.find(failure), 300);
    return run.output;
}

std::vector<json> decode(const std::string &capture, const std::vector<std::string> &options) {
    std::vector<std::string> all{"-T", "json", "--no-duplicate-keys"};
    all.insert(all.end(), options.begin(), options.end());
    std::vector<json> packets;
    for (const json &packet : json::parse(tshark(capture, all)))
        packets.push_back(packet.at("_source").at("layers").at("port_mgr"));
    return packets;
}

std::vector<std::string> values_of(const json &packet, const std::string &field) {
    std::vector<std::string> values;
    const auto append = [&values](const std::vector<std::string> &more) {
        values.insert(values.end(), more.begin(), more.end());
    };
    if (packet.is_array()) {
        for (const json &element : packet) append(values_of(element, field));
    }
    if (!packet.is_object()) return values;
    for (const auto &[key, value] : packet.items()) {
        if (key != field)
            append(values_of(value, field));
        else if (value.is_string())
            values.push_back(value);
        else if (value.is_array())
            append(value.get<std::vector<std::string>>());
    }
    return values;
}

std::string value_of(const json &packet, const std::string &field) {
    const std::vector<std::string> values = values_of(packet, field);
    EXPECT_EQ(values.size(), 1u) << field << " in " << packet.dump(1);
    return values.empty() ? "" : values.front();
}

}  // namespace dissector_test
