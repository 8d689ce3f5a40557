// SPDX-License-Identifier: Apache-2.0
#include <signal.h>

#include <chrono>
#include <fstream>
#include <memory>

#include "integration/pmctl/pmctl_runs.h"
#include "integration/virtual_switch/virtual_switch_test.h"

namespace {

const std::string chassis_text =
    "[chassis]\nname = \"watched\"\ntype = 6\nslots = 2\n"
    "[[module]]\nslot = 1\nkind = \"fc\"\nports = 60\nadmin_speed = 8000\n";

class watch_ports : public runtime_dir_test {
  protected:
    void SetUp() override {
        start_switch();
        watch_ = std::make_unique<child_process>(std::vector<std::string>{EXAMPLES "watch_ports", "50"});
        EXPECT_EQ(next_line(), "the switch answers");
    }

    void write_chassis(const std::string &addition) { std::ofstream(chassis_) << chassis_text << addition; }

    void start_switch() {
        write_chassis("");
        switch_ = std::make_unique<virtual_switch_process>(chassis_);
    }

    void change_chassis(const std::string &addition) {
        write_chassis(addition);
        switch_->send(SIGHUP);
    }

    std::string next_line() { return watch_->read_line(child_process::standard_output); }

    std::string chassis_ = directory_.file("chassis.toml");
    std::unique_ptr<virtual_switch_process> switch_;
    std::unique_ptr<child_process> watch_;
};

TEST_F(watch_ports, prints_a_line_a_change) {
    change_chassis("[[ports]]\nname = \"fc1/60\"\nstate = \"shutdown\"\n");
    EXPECT_EQ(next_line(), "fc1/60: state up -> down (Administratively down), change 1");
    EXPECT_EQ(next_line(), "fc1/60: speed 8 Gbps -> unknown, change 2");
    change_chassis("[[ports]]\nname = \"fc1/60\"\noper_speed = 4000\n");
    EXPECT_EQ(next_line(), "fc1/60: state down (Administratively down) -> up, change 3");
    EXPECT_EQ(next_line(), "fc1/60: speed unknown -> 4 Gbps, change 4");
    change_chassis("[[ports]]\nname = \"fc1/60\"\noper_speed = 4000\nlink_error_count = [3]\n");
    EXPECT_EQ(next_line(), "fc1/60: link failures 0 -> 3, change 5");
}

TEST_F(watch_ports, sees_ports_come_and_go) {
    change_chassis("[[port_channel]]\nname = \"port-channel7\"\n");
    EXPECT_EQ(next_line(), "port-channel7: new, change 1");
    change_chassis("");
    EXPECT_EQ(next_line(), "port-channel7: gone, change 2");
}

TEST_F(watch_ports, goes_on_when_the_switch_starts_again) {
    switch_->send(SIGKILL);
    EXPECT_THAT(next_line(), testing::StartsWith("no answer: "));
    switch_->wait();
    switch_.reset();
    start_switch();
    std::string line = next_line();
    while (line.starts_with("no answer: ")) line = next_line();
    EXPECT_EQ(line, "the switch answers");
    change_chassis("[[port_channel]]\nname = \"port-channel7\"\n");
    EXPECT_EQ(next_line(), "port-channel7: new, change 1");
}

TEST_F(watch_ports, waits_for_a_switch_to_start) {
    switch_->send(SIGTERM);
    switch_->wait();
    child_process early({EXAMPLES "watch_ports", "50"});
    EXPECT_EQ(early.read_line(child_process::standard_output), "no answer: No route to host");
    start_switch();
    EXPECT_EQ(early.read_line(child_process::standard_output), "the switch answers");
}

TEST_F(watch_ports, does_not_wait_for_ever) {
    const auto start = std::chrono::steady_clock::now();
    switch_->send(SIGSTOP);
    EXPECT_EQ(next_line(), "no answer: Connection timed out");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
    switch_->send(SIGCONT);
    EXPECT_EQ(next_line(), "the switch answers");
}

TEST_F(watch_ports, ends_at_once_when_asked_to) {
    switch_->send(SIGSTOP);  // also with requests under way
    watch_->send(SIGTERM);
    EXPECT_EQ(watch_->wait(), 0);
    EXPECT_EQ(watch_->read_rest(child_process::standard_output), "");
    switch_->send(SIGCONT);
}

TEST_F(watch_ports, ends_from_the_keyboard) {
    watch_->send(SIGINT);
    EXPECT_EQ(watch_->wait(), 0);
}

TEST_F(watch_ports, ends_when_nobody_can_read) {
    const auto result = shell(EXAMPLES "watch_ports 50 >/dev/full");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.messages, "watch_ports: standard output: No space left on device\n");
}

TEST_F(watch_ports, takes_an_interval) {
    for (const char *wrong : {"0", "-1", "1s", "", "1 2"}) {
        const auto result = shell(EXAMPLES "watch_ports '" + std::string(wrong) + "'");
        EXPECT_EQ(result.status, 2) << wrong;
        EXPECT_EQ(result.messages, "usage: watch_ports [MILLISECONDS]\n");
    }
}

}  // namespace
