// SPDX-License-Identifier: Apache-2.0
// What a daemon with a state file has acknowledged survives its end, whatever that was.
#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <random>
#include <thread>

#include "configuration_client.h"

namespace {

class kept_configuration : public virtual_switch_test {
  protected:
    [[nodiscard]] std::vector<std::string> keeping() const { return {"--state", state_file_}; }

    [[nodiscard]] std::string state() const {
        std::ifstream file(state_file_);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    std::string state_file_ = directory_.file("state.toml");
    configuration_client client_;
};

TEST_F(kept_configuration, comes_back_with_the_next_daemon) {
    std::string before;
    {
        const virtual_switch_process daemon(every_kind, keeping());
        ASSERT_EQ(client_.set("fc1/3", byte_value(PM_ATTR_ADMIN_STATE, 2)).status, 0u);
        ASSERT_EQ(client_.set("Ethernet2/3", word_value(PM_ATTR_MTU, 9216)).status, 0u);
        ASSERT_EQ(client_.config_sub_interfaces(true, {range_of("Ethernet2/3.20", "Ethernet2/3.29")}), 0u);
        ASSERT_EQ(client_.config_sub_interfaces(false, {range_of("Ethernet2/4.9", "Ethernet2/4.9")}), 0u);
        ASSERT_EQ(client_.set("Ethernet2/3.25", description("twenty-five \"\\\t\x7f")).status, 0u);
        ASSERT_EQ(client_.config_loopbacks(true, {range_of("loopback5", "loopback5")}), 0u);
        ASSERT_EQ(client_.config_loopbacks(false, {range_of("loopback1", "loopback1")}), 0u);
        before = state();
    }
    const virtual_switch_process daemon(every_kind, keeping());
    EXPECT_EQ(client_.record("fc1/3").state_reason, 12);
    EXPECT_EQ(client_.record("Ethernet2/3").mtu, 9216u);
    EXPECT_EQ(client_.range("Ethernet2/3.20", "Ethernet2/3.29").records.size(), 10u);
    EXPECT_STREQ(client_.record("Ethernet2/3.25").description, "twenty-five \"\\\t\x7f");
    EXPECT_FALSE(client_.exists("Ethernet2/4.9"));
    EXPECT_TRUE(client_.exists("loopback5"));
    EXPECT_FALSE(client_.exists("loopback1"));
    EXPECT_EQ(state(), before) << "a start changes nothing";
}

TEST_F(kept_configuration, belongs_to_one_switch_at_a_time) {
    const temporary_runtime_dir elsewhere;
    const virtual_switch_process first(every_kind, keeping());
    directory_.use();
    std::vector<std::string> command{PM_VIRTUAL_SWITCH, every_kind};
    command.insert(command.end() - 1, {"--state", state_file_});
    child_process second(command);
    EXPECT_EQ(second.wait(), 1);
    EXPECT_EQ(second.read_rest(child_process::standard_error),
              "pm-virtual-switch: " + state_file_ + ": another switch keeps its configuration there\n");
    const virtual_switch_process third(every_kind, {"--state", directory_.file("other.toml")});
}

TEST_F(kept_configuration, is_forgotten_without_a_state_file) {
    {
        const virtual_switch_process daemon(every_kind);
        ASSERT_EQ(client_.set("fc1/3", byte_value(PM_ATTR_ADMIN_STATE, 2)).status, 0u);
    }
    const virtual_switch_process daemon(every_kind);
    EXPECT_EQ(client_.record("fc1/3").admin_state, 1);
}

TEST_F(kept_configuration, stays_through_a_reload_of_the_chassis_file) {
    const virtual_switch_process daemon(every_kind, keeping());
    ASSERT_EQ(client_.set("fc1/3", byte_value(PM_ATTR_ADMIN_STATE, 2)).status, 0u);
    daemon.send(SIGHUP);
    ASSERT_EQ(client_.set("fc1/4", byte_value(PM_ATTR_ADMIN_STATE, 2)).status, 0u);
    EXPECT_EQ(client_.record("fc1/3").admin_state, 2);
}

// Numbers that two ports are given in turn, until the daemon is gone.
struct acknowledged {
    uint32_t number = 0;  // the last that was acknowledged, of either port
    uint32_t asked = 0;   // the last that was asked for
};

acknowledged set_until_it_fails(const configuration_client &client, uint32_t from) {
    acknowledged told{from, from};
    for (;;) {
        told.asked = told.number + 1;
        const char *const port = told.asked % 2 == 0 ? "fc1/3" : "fc1/4";
        if (client.set(port, description(std::to_string(told.asked))).status != 0) return told;
        told.number = told.asked;
    }
}

uint32_t number_of(const pm_port_info_t &record) { return static_cast<uint32_t>(std::atoi(record.description)); }

TEST_F(kept_configuration, has_all_that_was_acknowledged_when_the_daemon_is_killed) {
    const uint32_t seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::minstd_rand random(seed);
    constexpr int kills = 25;
    uint32_t last = 0;
    uint32_t total = 0;
    for (int kill = 0; kill < kills; ++kill) {
        acknowledged told;
        {
            virtual_switch_process daemon(every_kind, keeping());
            std::thread killer([&daemon, wait = std::chrono::microseconds(random() % 30000)] {
                std::this_thread::sleep_for(wait);
                daemon.send(SIGKILL);
            });
            told = set_until_it_fails(client_, last);
            killer.join();
            EXPECT_EQ(daemon.wait(), 128 + SIGKILL);
        }
        total += told.number - last;
        const virtual_switch_process daemon(every_kind, keeping());
        const uint32_t newest = std::max(number_of(client_.record("fc1/3")), number_of(client_.record("fc1/4")));
        const uint32_t older = std::min(number_of(client_.record("fc1/3")), number_of(client_.record("fc1/4")));
        EXPECT_GE(newest, told.number) << "nothing that was acknowledged is lost";
        EXPECT_LE(newest, told.asked) << "nothing is there that was not asked for";
        if (newest > 1) {
            EXPECT_EQ(older, newest - 1) << "one was changed, and the other kept";
        }
        last = newest;
    }
    EXPECT_GT(total, 0u) << "some were acknowledged before a kill";
}

}  // namespace
