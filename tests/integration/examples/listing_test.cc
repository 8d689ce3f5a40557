// SPDX-License-Identifier: Apache-2.0
#include "integration/pmctl/pmctl_runs.h"
#include "integration/virtual_switch/virtual_switch_test.h"

namespace {

using testing::EndsWith;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::SizeIs;

const char *const ports_of_the_fixed_switch = R"(fc1/1                up         8 Gbps     None
fc1/2                up         8 Gbps     None
fc1/3                up         8 Gbps     None
fc1/4                up         8 Gbps     None
fc1/5                up         8 Gbps     None
fc1/6                up         8 Gbps     None
fc1/7                up         8 Gbps     None
fc1/8                up         8 Gbps     None
fc1/9                down       unknown    SFP not present
fc1/10               down       unknown    SFP not present
fc1/11               down       unknown    SFP not present
fc1/12               down       unknown    SFP not present
fc1/13               down       unknown    SFP not present
fc1/14               down       unknown    SFP not present
fc1/15               down       unknown    SFP not present
fc1/16               down       unknown    SFP not present
Ethernet2/1          up         10 Gbps    None
Ethernet2/2          up         10 Gbps    None
Ethernet2/3          up         10 Gbps    None
Ethernet2/4          up         10 Gbps    None
Ethernet2/5          up         10 Gbps    None
Ethernet2/6          up         10 Gbps    None
Ethernet2/7          down       unknown    SFP not present
Ethernet2/8          down       unknown    SFP not present
port-channel1        up         16 Gbps    None
port-channel2        up         20 Gbps    None
port-channel2.7      up         20 Gbps    None
mgmt0                up         1 Gbps     None
)";

class listing : public runtime_dir_test, public testing::WithParamInterface<const char *> {
  protected:
    [[nodiscard]] static run_result list() { return run_program({std::string(EXAMPLES) + GetParam()}); }
};

INSTANTIATE_TEST_SUITE_P(languages, listing, testing::Values("list_ports", "list_ports_cc"));

TEST_P(listing, shows_every_port) {
    const virtual_switch_process fixed(fixed_switch);
    const auto result = list();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, ports_of_the_fixed_switch);
}

TEST_P(listing, goes_through_all_modules) {
    const virtual_switch_process large(director);
    const auto result = list();
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(lines_of(result.output), SizeIs(215));
}

TEST_P(listing, tells_that_there_is_no_switch) {
    const auto result = list();
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.messages, testing::StartsWith("list_ports: "));
}

class transceivers : public runtime_dir_test {
  protected:
    [[nodiscard]] static run_result list(const std::vector<std::string> &ends) {
        std::vector<std::string> command{EXAMPLES "list_transceivers"};
        command.insert(command.end(), ends.begin(), ends.end());
        return run_program(command);
    }

    virtual_switch_process switch_{fixed_switch};
};

TEST_F(transceivers, are_listed_with_their_readings) {
    const auto result = list({"fc1/1", "fc1/2", "fc1/9", "fc1/9"});
    const auto lines = lines_of(result.output);
    EXPECT_EQ(result.status, 0);
    ASSERT_THAT(lines, SizeIs(5));
    EXPECT_THAT(lines[0], MatchesRegex("fc1/1: INVENTED OPTICS IO-FC8-LW, serial number [A-Z0-9]+"));
    EXPECT_THAT(lines[1],
                MatchesRegex("  [0-9]+\\.[0-9] °C  3\\.[0-9]+ V  sends -?[0-9.]+ dBm  receives -[0-9.]+ dBm"));
    EXPECT_THAT(lines[2], testing::StartsWith("fc1/2: "));
    EXPECT_EQ(lines[4], "fc1/9: none");
}

TEST_F(transceivers, may_have_no_readings) {
    const auto lines = lines_of(list({"Ethernet2/1", "Ethernet2/1"}).output);
    ASSERT_THAT(lines, SizeIs(2));
    EXPECT_EQ(lines[1], "  no readings: request rejected (PM_ERR_REJECTED, 0x40290009)");
}

TEST_F(transceivers, are_refused_by_the_switch) {
    const auto result = list({"fc2/1", "fc2/1"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.messages, EndsWith("no such interface or range (PM_ERR_INVALID_RANGE, 0x4029000a)\n"));
}

TEST_F(transceivers, are_named_by_both_ends) {
    for (const auto &ends : std::vector<std::vector<std::string>>{{}, {"fc1/1"}, {"fc1/1", "what"}}) {
        const auto result = list(ends);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.messages, "usage: list_transceivers FIRST LAST ...\n");
        EXPECT_THAT(result.output, IsEmpty());
    }
}

}  // namespace
