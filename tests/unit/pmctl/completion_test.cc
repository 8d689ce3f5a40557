// SPDX-License-Identifier: Apache-2.0
#include "command_line/completion.h"

#include <gmock/gmock.h>

#include "command_table.h"

namespace {

using strings = std::vector<std::string>;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::Eq;
using testing::IsEmpty;
using testing::Not;

int times_asked = 0;

strings some_names() {
    ++times_asked;
    return {"fc1/1", "fc1/2", "fc2/1", "Ethernet2/7", "port-channel5", "mgmt0"};
}

strings completed(const strings &words) {
    times_asked = 0;
    return pmctl::completions(words, some_names);
}

// One word for every option of a command and of every command.
strings options_of(const char *words) {
    strings names;
    for (const auto &each : pmctl::find_command(words)->takes)
        if (is_option(each)) names.emplace_back(each.name);
    for (const auto &each : pmctl::global_options()) names.emplace_back(each.name);
    return names;
}

TEST(completions, are_commands) {
    EXPECT_THAT(completed({""}), AllOf(Contains("show"), Contains("help"), Not(Contains("complete"))));
    EXPECT_THAT(completed({"sh"}), ElementsAre("show"));
    EXPECT_THAT(completed({"--color", "never", "show", "inter"}), ElementsAre("interface"));
    EXPECT_THAT(completed({"show", "interface", "bri"}), ElementsAre("brief"));
    EXPECT_THAT(completed({"xyz"}), IsEmpty());
    EXPECT_THAT(completed({}), IsEmpty());
}

TEST(completions, are_options_that_are_not_given_yet) {
    EXPECT_EQ(completed({"show", "interface", "-"}), options_of("show interface"));
    EXPECT_EQ(completed({"show", "interface", "brief", "--"}), options_of("show interface brief"));
    EXPECT_THAT(completed({"show", "interface", "--j"}), ElementsAre("--json"));
    EXPECT_THAT(completed({"show", "interface", "--json", "--"}), Not(Contains("--json")));
    EXPECT_EQ(times_asked, 0);
}

TEST(completions, are_values_of_options) {
    EXPECT_THAT(completed({"show", "interface", "--color", ""}), ElementsAre("auto", "always", "never"));
    EXPECT_THAT(completed({"--color", "n"}), ElementsAre("never"));
    EXPECT_THAT(completed({"show", "interface", "--color=a"}), ElementsAre("--color=auto", "--color=always"));
    EXPECT_THAT(completed({"show", "interface", "--watch", ""}), IsEmpty());
    EXPECT_THAT(completed({"show", "interface", "index", "--type", "ip"}), ElementsAre("ips"));
    EXPECT_THAT(completed({"show", "interface", "index", "--type=ether"}),
                ElementsAre("--type=ethernet", "--type=ethernet-sfp"));
    EXPECT_THAT(completed({"--json=1", ""}), IsEmpty());
    EXPECT_THAT(completed({"--xyz=a"}), IsEmpty());
    EXPECT_EQ(times_asked, 0);
}

TEST(completions, are_interfaces_beside_sub_commands) {
    EXPECT_THAT(completed({"show", "interface", ""}), AllOf(Contains("brief"), Contains("fc1/1"), Contains("mgmt0")));
    EXPECT_THAT(completed({"show", "interface", "fc1/1", "--json", "FC"}), ElementsAre("fc1/1", "fc1/2", "fc2/1"));
    EXPECT_THAT(completed({"show", "interface", "eth"}), ElementsAre("Ethernet2/7"));
    EXPECT_EQ(times_asked, 1);
}

TEST(completions, go_on_after_a_comma) {
    EXPECT_THAT(completed({"show", "interface", "mgmt0,fc1/1-4,fc2"}), ElementsAre("mgmt0,fc1/1-4,fc2/1"));
    EXPECT_THAT(completed({"show", "interface", "mgmt0,"}), Contains("mgmt0,Ethernet2/7"));
}

TEST(completions, are_words_only_after_a_separator) {
    EXPECT_THAT(completed({"show", "interface", "--", "b"}), IsEmpty());
    EXPECT_THAT(completed({"show", "interface", "--", "m"}), ElementsAre("mgmt0"));
    EXPECT_THAT(completed({"show", "interface", "--", "-"}), IsEmpty());
}

TEST(completions, are_none_after_what_makes_no_command) {
    EXPECT_THAT(completed({"shwo", ""}), IsEmpty());
    EXPECT_THAT(completed({"show", "interface", "brief", ""}), IsEmpty());
    EXPECT_THAT(completed({"show", "--xyz", ""}), IsEmpty());
    EXPECT_EQ(times_asked, 0);
}

TEST(completions, are_settings_after_names) {
    EXPECT_THAT(completed({"config", "interface", "fc1"}), ElementsAre("fc1/1", "fc1/2"));
    EXPECT_THAT(completed({"config", "interface", "fc1/1,", "fc2"}), ElementsAre("fc2/1"));
    EXPECT_THAT(completed({"config", "interface", "fc1/1", ""}), AllOf(Contains("shutdown"), Not(Contains("fc1/2"))));
    EXPECT_THAT(completed({"config", "interface", "fc1/1", "sw"}), ElementsAre("switchport"));
    EXPECT_THAT(completed({"config", "interface", "fc1/1", "switchport", "mode", "T"}),
                ElementsAre("TE", "TL", "trunk", "TF", "TNP"));
    EXPECT_THAT(completed({"config", "interface", "fc1/1", "duplex", "half", ""}), IsEmpty());
    EXPECT_THAT(completed({"config", "subinterface", "create", "eth"}), ElementsAre("Ethernet2/7"));
}

TEST(completions, follow_the_places_of_a_command) {
    EXPECT_THAT(completed({"show", "module", ""}), ElementsAre("resources"));
    EXPECT_THAT(completed({"show", "module", "3", ""}), ElementsAre("resources", "interfaces"));
    EXPECT_THAT(completed({"show", "module", "3", "interfaces", ""}), ElementsAre("resources"));
    EXPECT_THAT(completed({"config", ""}), ElementsAre("interface", "loopback", "subinterface"));
    EXPECT_THAT(completed({"config", "lab"}), IsEmpty());
}

TEST(completions, of_help_are_commands) {
    EXPECT_THAT(completed({"help", "sh"}), ElementsAre("show"));
    EXPECT_THAT(completed({"help", "show", "interface", ""}), AllOf(Contains("brief"), Not(Contains("fc1/1"))));
    EXPECT_THAT(completed({"help", "shwo", ""}), IsEmpty());
}

// Every row of the table, so that a new one needs nothing more.
TEST(completions, know_every_command) {
    for (const auto &each : pmctl::all_commands()) {
        if (is_hidden(each)) continue;
        strings words;
        std::string_view rest = each.words;
        for (size_t end; (end = rest.find(' ')) != std::string_view::npos; rest.remove_prefix(end + 1))
            words.emplace_back(rest.substr(0, end));
        words.emplace_back(rest.substr(0, rest.size() - 1));
        EXPECT_THAT(completed(words), Contains(Eq(rest))) << each.words;
    }
}

}  // namespace
