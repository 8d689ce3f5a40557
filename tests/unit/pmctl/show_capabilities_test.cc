// SPDX-License-Identifier: Apache-2.0
#include <cerrno>
#include <fstream>
#include <nlohmann/json.hpp>

#include "command_test.h"
#include "fixed_records.h"
#include "support/json_schema.h"

namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::IsEmpty;

class show_capabilities : public command_test {};

TEST_F(show_capabilities, has_a_row_for_each_interface) {
    const auto outcome = run({"show", "interface", "fc1/1-2,Ethernet4/1", "port-channel5", "po1/5", "mgmt0", "fcip1",
                              "if11-1/2", "if13-5/1", "loopback1", "if22-5", "if26-1/4", "if254-7", "capabilities"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.messages, IsEmpty());
    EXPECT_EQ(outcome.output,
              R"(Interface        Port mode  Trunk mode  Speed  Duplex  Beacon  BB credit  Transceiver  Bundle  xgfc
fc1/1            yes        yes         yes    no      yes     yes        yes          no      no
fc1/2            yes        yes         yes    no      yes     yes        yes          no      no
Ethernet4/1      no         no          no     no      yes     yes        yes          no      no
port-channel5    yes        yes         yes    no      no      no         no           yes     no
port-channel1/5  yes        yes         yes    no      yes     yes        no           no      yes
mgmt0            no         no          yes    yes     no      no         no           no      no
fcip1            yes        yes         yes    no      no      no         no           no      no
if11-1/2         no         no          no     no      no      no         no           no      no
if13-5/1         yes        yes         yes    no      yes     yes        no           no      no
loopback1        yes        yes         yes    no      yes     yes        no           no      no
if22-5           yes        yes         yes    no      yes     yes        no           yes     no
if26-1/4         yes        yes         yes    no      yes     yes        yes          no      no
if254-7          yes        yes         yes    no      yes     no         no           no      no
)");
    EXPECT_THAT(the_switch.asked, IsEmpty());
}

TEST_F(show_capabilities, take_names_before_and_after_the_command) {
    const auto both = run({"show", "interface", "fc1/1", "capabilities", "mgmt0"});
    EXPECT_EQ(both.output, run({"show", "interface", "capabilities", "fc1/1", "mgmt0"}).output);
    EXPECT_THAT(both.output, testing::AllOf(testing::HasSubstr("\nfc1/1 "), testing::HasSubstr("\nmgmt0 ")));
}

TEST_F(show_capabilities, are_booleans_in_json) {
    const json document = json::parse(run({"show", "interface", "mgmt0", "capabilities", "--json"}).output);
    EXPECT_EQ(document, json::parse(R"({"interfaces": [{"if_index": 83886080, "name": "mgmt0",
        "port_mode": false, "trunk_mode": false, "speed": true, "duplex": true, "beacon": false, "bb_credit": false,
        "transceiver": false, "bundle": false, "xgfc": false}]})"));
    const json_schema schema(DOCUMENTS "/schema/pmctl-show-interface-capabilities.schema.json");
    schema.expect_described("interface", document["interfaces"][0]);
}

TEST_F(show_capabilities, are_in_the_manual) {
    std::ifstream file(DOCUMENTS "/pmctl.md");
    const std::string manual(std::istreambuf_iterator<char>(file), {});
    const json port =
        json::parse(run({"show", "interface", "mgmt0", "capabilities", "--json"}).output)["interfaces"][0];
    for (const auto &[key, value] : port.items()) EXPECT_THAT(manual, testing::HasSubstr("| `" + key + "` | ")) << key;
}

TEST_F(show_capabilities, asks_the_switch_for_all_its_interfaces) {
    the_switch.brief_ports = {full_brief_port(), bare_brief_port()};
    const auto outcome = run({"show", "interface", "capabilities", "--all"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, run({"show", "interface", "capabilities", "fc1/4", "mgmt0"}).output);
    EXPECT_THAT(the_switch.asked, ElementsAre("brief"));
}

TEST_F(show_capabilities, says_that_the_switch_does_not_answer) {
    the_switch.request_status = ETIMEDOUT;
    const auto outcome = run({"show", "interface", "capabilities", "--all", "--json"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "{\n  \"interfaces\": []\n}\n");
    EXPECT_THAT(outcome.messages, ElementsAre("all interfaces: Connection timed out"));
}

TEST_F(show_capabilities, needs_names) {
    const auto none = run({"show", "interface", "capabilities"});
    EXPECT_EQ(none.status, 2);
    EXPECT_THAT(none.messages, ElementsAre("show interface capabilities needs names of interfaces, or --all"));
    EXPECT_EQ(run({"show", "interface", "fc1/1", "capabilities", "--all"}).status, 2);
    EXPECT_EQ(run({"show", "interface", "fcx1", "capabilities"}).status, 2);
    EXPECT_THAT(the_switch.asked, IsEmpty());
}

}  // namespace
