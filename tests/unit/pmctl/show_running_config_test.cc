// SPDX-License-Identifier: Apache-2.0
#include "command_test.h"
#include "fixed_records.h"
#include "output/command_lines.h"
#include "port_mgr/status.h"

namespace {

using pmctl::command_lines;
using testing::ElementsAre;

class show_running_config : public command_test {};

TEST_F(show_running_config, parts_interfaces_by_a_blank_line) {
    the_switch.ports = {full_port(), bare_port()};
    const auto outcome = run({"show", "running-config"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, command_lines(full_port()) + "\n" + command_lines(bare_port()));
    EXPECT_THAT(the_switch.asked, ElementsAre("all"));
}

TEST_F(show_running_config, shows_the_interfaces_named) {
    answer("mgmt0 mgmt0", {bare_port()});
    refuse("fc9/1 fc9/1", PM_ERR_INVALID_RANGE);
    const auto outcome = run({"show", "running-config", "fc9/1", "mgmt0"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, command_lines(bare_port()));
    EXPECT_THAT(outcome.messages, ElementsAre("no such interface: fc9/1"));
}

}  // namespace
