// SPDX-License-Identifier: Apache-2.0
#include <cerrno>

#include "command_test.h"
#include "fixed_records.h"
#include "port_mgr/status.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

pm_port_info_t port_named(const char *name) {
    pm_port_info_t port = full_port();
    port.if_index = index_named(name);
    return port;
}

class show_module : public command_test {
  protected:
    static void answer_type(uint8_t type, std::vector<pm_port_info_t> ports) {
        the_switch.modules[type] = {0, 0, std::move(ports)};
    }

    static void refuse_types(const std::vector<uint8_t> &types) {
        for (const uint8_t type : types) the_switch.modules[type].answer_status = PM_ERR_INVALID_RANGE;
    }

    static pmctl::outcome run(std::vector<const char *> words) {
        words.insert(words.begin(), {"show", "module"});
        return command_test::run(std::move(words));
    }
};

TEST_F(show_module, merges_all_types_that_have_slots) {
    answer_type(1, {port_named("fc3/1"), port_named("fc3/2")});
    answer_type(26, {port_named("if26-3/1")});
    const auto outcome = run({"3", "interfaces"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(the_switch.asked, ElementsAre("module 3 type 1", "module 3 type 2", "module 3 type 11",
                                              "module 3 type 13", "module 3 type 26"));
    EXPECT_THAT(outcome.output, StartsWith("Interface  Admin mode"));
    EXPECT_THAT(outcome.output, HasSubstr("\nfc3/1 "));
    EXPECT_THAT(outcome.output, HasSubstr("\nfc3/2 "));
    EXPECT_THAT(outcome.output, HasSubstr("\nif26-3/1 "));
}

TEST_F(show_module, has_the_columns_of_brief) {
    answer_type(1, {full_port()});
    the_switch.brief_ports = {full_brief_port()};
    EXPECT_EQ(run({"3", "interfaces"}).output, command_test::run({"show", "interface", "brief"}).output);
}

TEST_F(show_module, describes_ports_in_json_as_show_interface_does) {
    answer_type(2, {full_port()});
    the_switch.brief_ports = {full_brief_port()};
    answer("fc1/4 fc1/4", {full_port()});
    EXPECT_EQ(run({"255", "interfaces", "--json"}).output, command_test::run({"show", "interface", "--json"}).output);
}

TEST_F(show_module, says_that_there_is_none) {
    refuse_types({1, 2, 11, 13, 26});
    const auto outcome = run({"7", "interfaces"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.output, IsEmpty());
    EXPECT_THAT(outcome.messages, ElementsAre("no such module: 7"));
    EXPECT_EQ(run({"7", "interfaces", "--json"}).output, "{\n  \"interfaces\": []\n}\n");
}

TEST_F(show_module, shows_a_module_that_has_one_type_of_ports_only) {
    refuse_types({1, 2, 11, 26});
    EXPECT_EQ(run({"7", "interfaces"}).status, 0);
}

TEST_F(show_module, names_failures) {
    the_switch.modules[2].answer_status = PM_ERR_FAILURE;
    EXPECT_THAT(run({"7", "interfaces"}).messages,
                ElementsAre("module 7: missing or invalid arguments (PM_ERR_FAILURE, 0x40290000)"));
    the_switch.modules[1].request_status = ETIMEDOUT;
    EXPECT_THAT(run({"7", "interfaces"}).messages, ElementsAre("module 7: Connection timed out"));
}

TEST_F(show_module, takes_numbers_from_1_to_255) {
    for (const char *number : {"0", "256", "x", "3x", "-1", ""}) {
        const auto outcome = run({number, "interfaces"});
        EXPECT_EQ(outcome.status, 2) << number;
        EXPECT_THAT(outcome.messages, ElementsAre(StartsWith("not the number of a module, from 1 to 255: ")));
    }
    EXPECT_THAT(run({"3", "intrfaces"}).messages,
                ElementsAre("not a value of interfaces: intrfaces; did you mean interfaces?"));
    EXPECT_THAT(the_switch.asked, IsEmpty());
}

}  // namespace
