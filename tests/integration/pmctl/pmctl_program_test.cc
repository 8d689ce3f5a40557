// SPDX-License-Identifier: Apache-2.0
#include "integration/pmctl/pmctl_program.h"

#include <cstdlib>

namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

TEST_F(pmctl_program, shows_ranges_in_the_order_named) {
    const auto result = pmctl({"show", "interface", "fc2/3,fc1/1-3", "MGMT0", "po5", "--json"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.messages, IsEmpty());
    EXPECT_EQ(names_in(result.output),
              (std::vector<std::string>{"fc2/3", "fc1/1", "fc1/2", "fc1/3", "mgmt0", "port-channel5"}));
}

TEST_F(pmctl_program, shows_what_the_switch_knows) {
    const auto result = pmctl({"show", "interface", "mgmt0"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, StartsWith("mgmt0\n  General\n"));
    EXPECT_THAT(lines_of(result.output), testing::Contains("    Description                   out-of-band management"));
    EXPECT_THAT(lines_of(result.output), testing::Contains("    IP address                    192.0.2.10"));
}

TEST_F(pmctl_program, shows_the_others_when_one_does_not_exist) {
    const auto result = pmctl({"show", "interface", "fc1/1", "fc9/1", "fc1/2", "--json"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.messages, "pmctl: no such interface: fc9/1\n");
    EXPECT_EQ(names_in(result.output), (std::vector<std::string>{"fc1/1", "fc1/2"}));
}

TEST_F(pmctl_program, shows_the_same_ports_in_brief_and_in_full) {
    const auto brief = pmctl({"show", "interface", "brief", "--json"});
    const auto full = pmctl({"show", "interface", "--all", "--json"});
    const auto table = pmctl({"show", "interface", "brief"});
    EXPECT_EQ(brief.status + full.status + table.status, 0);
    const auto names = names_in(full.output);
    EXPECT_THAT(names, SizeIs(testing::Gt(100u)));
    EXPECT_EQ(names_in(brief.output), names);
    const auto lines = lines_of(table.output);
    ASSERT_THAT(lines, SizeIs(names.size() + 1));
    for (size_t i = 0; i < names.size(); ++i) EXPECT_THAT(lines[i + 1], StartsWith(names[i] + " "));
}

TEST_F(pmctl_program, says_that_the_disk_is_full) {
    const auto result = shell(PMCTL " show interface brief >/dev/full");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.messages, "pmctl: cannot write the output: No space left on device\n");
}

TEST_F(pmctl_program, ends_quietly_when_nobody_reads_on) {
    const auto result = pipeline(PMCTL " show interface --all | head -n 1");
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(lines_of(result.output), SizeIs(1));
    EXPECT_THAT(result.messages, IsEmpty());
}

TEST_F(pmctl_program, shows_diagnostics_only_when_asked) {
    const std::string diagnostic = "Error configuring invalid parameter on ether-channel sub-interface\n";
    const std::vector<std::string> refused{"config", "interface", "port-channel20.30", "switchport", "trunk",
                                           "mode",   "on"};
    std::vector<std::string> verbose{"--verbose"};
    verbose.insert(verbose.end(), refused.begin(), refused.end());
    EXPECT_THAT(pmctl(verbose).messages, StartsWith(diagnostic));
    EXPECT_THAT(pmctl(refused).messages, StartsWith("pmctl: port-channel20.30: "));
}

TEST_F(pmctl_alone, says_how_to_start_a_switch) {
    const auto result = pmctl({"show", "interface", "fc1/1", "fc1/2"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.output, IsEmpty());
    EXPECT_EQ(result.messages, std::string("pmctl: no switch is running in ") + getenv("MTS_RUNTIME_DIR") +
                                   ": start one with: pm-virtual-switch CHASSIS.toml\n");
}

TEST_F(pmctl_alone, refuses_a_wrong_command_line) {
    const auto result = pmctl({"show", "interface", "fcx1"});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.output, IsEmpty());
    EXPECT_EQ(result.messages, "pmctl: not an interface name: fcx1; see pmctl show interface --help\n");
}

TEST_F(pmctl_alone, explains_itself) {
    const auto result = pmctl({"--help"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, AllOf(HasSubstr("Commands:\n"), HasSubstr("Examples:\n"), EndsWith("\n")));
    EXPECT_THAT(result.messages, IsEmpty());
}

}  // namespace
