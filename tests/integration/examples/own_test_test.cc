// SPDX-License-Identifier: Apache-2.0
// The script that gives a caller's test a switch of its own.
#include "integration/pmctl/pmctl_runs.h"
#include "integration/virtual_switch/virtual_switch_test.h"

namespace {

class beside_switch : public runtime_dir_test {
  protected:
    // Its temporary files lie where nothing else does.
    [[nodiscard]] run_result run(const std::string &chassis, const std::string &script) const {
        return shell("TMPDIR=" + directory_.file("") +
                     " " SOURCE_FOLDER "/examples/own_test/beside_switch " PM_VIRTUAL_SWITCH " " + chassis +
                     " sh -c '" + script + "'");
    }

    [[nodiscard]] std::string left_behind() const { return shell("ls " + directory_.file("")).output; }
};

TEST_F(beside_switch, a_program_asks_it_and_its_status_counts) {
    const auto result = run(fixed_switch, EXAMPLES "list_ports; exit 7");
    EXPECT_EQ(result.status, 7);
    EXPECT_THAT(lines_of(result.output), testing::SizeIs(1 + 28));
    EXPECT_EQ(left_behind(), "");
}

TEST_F(beside_switch, nothing_runs_when_it_does_not_start) {
    const auto result = run("/dev/null", "echo it ran");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.messages, testing::StartsWith("pm-virtual-switch: /dev/null"));
    EXPECT_EQ(left_behind(), "");
}

}  // namespace
