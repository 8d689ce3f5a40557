// SPDX-License-Identifier: Apache-2.0
// What is counted, by the rates of the chassis file and the time that passes.
#include "chassis/traffic_counters.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_outlets.h"
#include "names.h"
#include "port_mgr/config_attribute.h"

namespace {

using namespace std::chrono_literals;
using virtual_switch::configuration;
using virtual_switch::counter_table;
using virtual_switch::parse_chassis;
using virtual_switch::switch_state;
using virtual_switch::switch_time;

const std::string chassis = R"([chassis]
name = 'test'
type = 6
slots = 3
[[module]]
slot = 1
kind = 'ethernet'
ports = 3
[[module]]
slot = 2
kind = 'ips'
ports = 2
[[module]]
slot = 3
kind = 'ethernet-sfp'
ports = 1
[[fcip]]
name = 'fcip7'
slot = 2
port = 2
)";

std::string counting(const std::string &name, const std::string &settings) {
    return "[[counters]]\nname = '" + name + "'\n" + settings + "\n";
}

// A switch whose time is the test's.
class traffic_counters : public testing::Test {
  protected:
    void start(const std::string &sections) {
        state_.emplace(state_of(chassis + sections, [this] { return now_; }));
    }

    void pass(switch_time time) { now_ += time; }

    pm_eth_stats_t read(const char *name) { return state_->counters().read(index_of(name)); }

    void configure(const char *name, uint32_t admin_state) {
        configuration changes = state_->changes();
        changes.settings[index_of(name)][PM_ATTR_ADMIN_STATE] = admin_state;
        ASSERT_TRUE(state_->change(changes));
    }
    void shut(const char *name) { configure(name, 2); }
    void open(const char *name) { configure(name, 1); }

    switch_time now_ = 0ms;
    std::optional<switch_state> state_;
};

TEST_F(traffic_counters, stay_at_0_without_rates) {
    start(counting("Ethernet1/1", "rx_unicast_octets = 1"));
    pass(24h);
    for (const char *name : {"Ethernet1/2", "if13-2/1", "if26-3/1", "fcip7"}) {
        pm_eth_stats_t stats = read(name);
        EXPECT_EQ(stats.seconds_since_clear, 86400u) << name;
        stats.seconds_since_clear = 0;
        const pm_eth_stats_t nothing{};
        EXPECT_EQ(std::memcmp(&stats, &nothing, sizeof stats), 0) << name;
    }
}

TEST_F(traffic_counters, advance_on_every_kind_that_keeps_them) {
    start(counting("Ethernet1/1, if13-2/1, if26-3/1, fcip7", "rx_unicast_octets = 10"));
    pass(2s);
    for (const char *name : {"Ethernet1/1", "if13-2/1", "if26-3/1", "fcip7"})
        EXPECT_EQ(read(name).traffic[PM_ETH_TRAFFIC_RX_UNICAST].octets, 20u) << name;
}

// Where a member lies, and what a rate of 3600 comes to in an hour.
struct expected_counter {
    const char *key;
    size_t offset;
    size_t size;
    uint64_t in_an_hour;
};

const expected_counter expected_counters[] = {
    {"rx_unicast_octets", 80, 8, 12960000},
    {"rx_unicast_frames", 88, 8, 12960000},
    {"rx_unicast_errors", 96, 4, 3600},
    {"rx_unicast_drops", 100, 4, 3600},
    {"tx_unicast_octets", 104, 8, 12960000},
    {"tx_unicast_frames", 112, 8, 12960000},
    {"tx_unicast_errors", 120, 4, 3600},
    {"tx_unicast_drops", 124, 4, 3600},
    {"rx_multicast_octets", 128, 8, 12960000},
    {"rx_multicast_frames", 136, 8, 12960000},
    {"rx_multicast_errors", 144, 4, 3600},
    {"rx_multicast_drops", 148, 4, 3600},
    {"tx_multicast_octets", 152, 8, 12960000},
    {"tx_multicast_frames", 160, 8, 12960000},
    {"tx_multicast_errors", 168, 4, 3600},
    {"tx_multicast_drops", 172, 4, 3600},
    {"rx_broadcast_octets", 176, 8, 12960000},
    {"rx_broadcast_frames", 184, 8, 12960000},
    {"rx_broadcast_errors", 192, 4, 3600},
    {"rx_broadcast_drops", 196, 4, 3600},
    {"tx_broadcast_octets", 200, 8, 12960000},
    {"tx_broadcast_frames", 208, 8, 12960000},
    {"tx_broadcast_errors", 216, 4, 3600},
    {"tx_broadcast_drops", 220, 4, 3600},
    {"rx_pause_frames", 232, 8, 3600},
    {"tx_pause_frames", 240, 8, 3600},
    {"crc_errors", 248, 4, 3600},
    {"alignment_errors", 252, 4, 3600},
    {"symbol_errors", 256, 4, 3600},
    {"undersize_frames", 260, 4, 3600},
    {"oversize_frames", 264, 4, 3600},
    {"fragments", 268, 4, 3600},
    {"jabbers", 272, 4, 3600},
    {"rx_overruns", 276, 4, 3600},
    {"tx_underruns", 280, 4, 3600},
    {"collisions", 284, 4, 3600},
    {"late_collisions", 288, 4, 3600},
    {"excessive_collisions", 292, 4, 3600},
    {"deferred_frames", 296, 4, 3600},
    {"carrier_losses", 300, 4, 3600},
    {"link_resets", 304, 4, 3600},
};

void put(pm_eth_stats_t &stats, size_t offset, size_t size, uint64_t value) {
    std::memcpy(reinterpret_cast<uint8_t *>(&stats) + offset, &value, size);
}

// Nothing else moves but the total of the class.
TEST_F(traffic_counters, have_a_key_each) {
    ASSERT_EQ(std::size(expected_counters), counter_table.size());
    constexpr size_t first_class = 80;
    constexpr size_t behind_classes = 224;
    for (const expected_counter &counter : expected_counters) {
        now_ = 0ms;
        start(counting("Ethernet1/1", std::string(counter.key) + " = 3600"));
        pass(1h);
        const pm_eth_stats_t stats = read("Ethernet1/1");
        pm_eth_stats_t expected{};
        expected.seconds_since_clear = 3600;
        put(expected, counter.offset, counter.size, counter.in_an_hour);
        if (counter.offset < behind_classes)
            put(expected, 32 + (counter.offset - first_class) % 48, counter.size, counter.in_an_hour);
        EXPECT_EQ(std::memcmp(&stats, &expected, sizeof stats), 0) << counter.key;
    }
}

TEST_F(traffic_counters, add_up_to_totals_of_each_direction) {
    start(counting("Ethernet1/1",
                   "rx_unicast_octets = 1\nrx_multicast_octets = 20\nrx_broadcast_octets = 300\n"
                   "tx_unicast_frames = 4\ntx_multicast_frames = 50\ntx_broadcast_frames = 600\n"
                   "rx_unicast_errors = 3600\nrx_multicast_errors = 36000\n"
                   "tx_multicast_drops = 7200\ntx_broadcast_drops = 72000"));
    pass(1s);
    const pm_eth_stats_t stats = read("Ethernet1/1");
    const pm_eth_traffic_t &received = stats.traffic[PM_ETH_TRAFFIC_RX];
    const pm_eth_traffic_t &transmitted = stats.traffic[PM_ETH_TRAFFIC_TX];
    EXPECT_EQ(received.octets, 321u);
    EXPECT_EQ(received.frames, 0u);
    EXPECT_EQ(received.errors, 11u);
    EXPECT_EQ(received.drops, 0u);
    EXPECT_EQ(transmitted.octets, 0u);
    EXPECT_EQ(transmitted.frames, 654u);
    EXPECT_EQ(transmitted.errors, 0u);
    EXPECT_EQ(transmitted.drops, 22u);
}

TEST_F(traffic_counters, count_the_same_however_often_they_are_read) {
    start(counting("Ethernet1/1", "rx_unicast_octets = 7\ntx_unicast_frames = 999\ncrc_errors = 11\nlink_resets = 1"));
    for (int i = 0; i < 100000; ++i) {
        pass(37ms);
        read("Ethernet1/1");
    }
    const pm_eth_stats_t stats = read("Ethernet1/1");
    EXPECT_EQ(stats.traffic[PM_ETH_TRAFFIC_RX_UNICAST].octets, 25900u);
    EXPECT_EQ(stats.traffic[PM_ETH_TRAFFIC_TX_UNICAST].frames, 3696300u);
    EXPECT_EQ(stats.crc_errors, 11u);  // 11.3
    EXPECT_EQ(stats.link_resets, 1u);
}

TEST_F(traffic_counters, count_nothing_before_its_time) {
    start(counting("Ethernet1/1", "rx_unicast_frames = 1\ncrc_errors = 1"));
    pass(999ms);
    EXPECT_EQ(read("Ethernet1/1").traffic[PM_ETH_TRAFFIC_RX_UNICAST].frames, 0u);
    EXPECT_EQ(read("Ethernet1/1").seconds_since_clear, 0u);
    pass(1ms);
    EXPECT_EQ(read("Ethernet1/1").traffic[PM_ETH_TRAFFIC_RX_UNICAST].frames, 1u);
    EXPECT_EQ(read("Ethernet1/1").seconds_since_clear, 1u);
    pass(3598s + 999ms);
    EXPECT_EQ(read("Ethernet1/1").crc_errors, 0u);
    pass(1ms);
    EXPECT_EQ(read("Ethernet1/1").crc_errors, 1u);
}

TEST_F(traffic_counters, hold_years_at_the_fastest_rate_and_wrap) {
    start(counting("Ethernet1/1", "rx_unicast_octets = 0xffffffff\ncrc_errors = 0xffffffff"));
    pass(24h * 3650 + 1ms);
    const pm_eth_stats_t stats = read("Ethernet1/1");
    EXPECT_EQ(stats.traffic[PM_ETH_TRAFFIC_RX].octets, 0xffffffffull * 315360000 + 4294967);
    EXPECT_EQ(stats.crc_errors, static_cast<uint32_t>(0xffffffffull * 87600 + 1193));
    EXPECT_EQ(stats.seconds_since_clear, 315360000u);
}

TEST_F(traffic_counters, advance_only_while_the_port_is_up) {
    start(counting("Ethernet1/1-2", "rx_unicast_frames = 1000\ncrc_errors = 3600"));
    pass(1500ms);
    shut("Ethernet1/1");
    pass(1h);
    EXPECT_EQ(read("Ethernet1/1").traffic[PM_ETH_TRAFFIC_RX].frames, 1500u);
    open("Ethernet1/1");
    pass(700ms);
    // The time when it was down has not counted, the part of a period before has.
    const pm_eth_stats_t stats = read("Ethernet1/1");
    EXPECT_EQ(stats.traffic[PM_ETH_TRAFFIC_RX].frames, 2200u);
    EXPECT_EQ(stats.crc_errors, 2u);
    EXPECT_EQ(stats.seconds_since_clear, 3602u);
    EXPECT_EQ(read("Ethernet1/2").traffic[PM_ETH_TRAFFIC_RX].frames, 3602200u);
}

TEST_F(traffic_counters, are_those_of_ports_that_start_down) {
    start("[[ports]]\nname = 'Ethernet1/1'\nstate = 'no-sfp'\n[[ports]]\nname = 'Ethernet1/2'\nstate = 'trunking'\n" +
          counting("Ethernet1/1-2", "rx_unicast_frames = 1"));
    pass(10s);
    EXPECT_EQ(read("Ethernet1/1").traffic[PM_ETH_TRAFFIC_RX].frames, 0u);
    EXPECT_EQ(read("Ethernet1/2").traffic[PM_ETH_TRAFFIC_RX].frames, 10u);
}

TEST_F(traffic_counters, survive_changes_of_sub_interfaces) {
    start(counting("Ethernet1/1", "rx_unicast_frames = 1"));
    pass(1500ms);
    configuration changes;
    changes.create(index_of("Ethernet1/1.7"));
    ASSERT_TRUE(state_->change(changes));
    pass(1500ms);
    changes.remove(index_of("Ethernet1/1.7"), state_->chassis());
    ASSERT_TRUE(state_->change(changes));
    EXPECT_EQ(read("Ethernet1/1").traffic[PM_ETH_TRAFFIC_RX].frames, 3u);
}

TEST_F(traffic_counters, start_again_when_cleared) {
    start(counting("Ethernet1/1-2", "rx_unicast_frames = 1"));
    pass(1900ms);
    state_->counters().clear(index_of("Ethernet1/1"));
    EXPECT_EQ(read("Ethernet1/1").traffic[PM_ETH_TRAFFIC_RX].frames, 0u);
    EXPECT_EQ(read("Ethernet1/2").traffic[PM_ETH_TRAFFIC_RX].frames, 1u);
    pass(900ms);
    EXPECT_EQ(read("Ethernet1/1").traffic[PM_ETH_TRAFFIC_RX].frames, 0u);
    EXPECT_EQ(read("Ethernet1/1").seconds_since_clear, 0u);
    pass(100ms);
    EXPECT_EQ(read("Ethernet1/1").traffic[PM_ETH_TRAFFIC_RX].frames, 1u);
    EXPECT_EQ(read("Ethernet1/1").seconds_since_clear, 1u);
    EXPECT_EQ(read("Ethernet1/2").seconds_since_clear, 2u);
}

TEST_F(traffic_counters, go_on_with_new_rates_after_a_reload) {
    start(counting("Ethernet1/1", "rx_unicast_frames = 1") + counting("Ethernet1/2", "rx_unicast_frames = 1"));
    pass(1500ms);
    state_->reload(parse_chassis(chassis + counting("Ethernet1/1", "rx_unicast_frames = 3")));
    pass(500ms);
    EXPECT_EQ(read("Ethernet1/1").traffic[PM_ETH_TRAFFIC_RX].frames, 3u);
    EXPECT_EQ(read("Ethernet1/1").seconds_since_clear, 2u);
    EXPECT_EQ(read("Ethernet1/2").traffic[PM_ETH_TRAFFIC_RX].frames, 1u);
}

TEST_F(traffic_counters, come_and_go_with_their_module) {
    const std::string without_ethernet =
        chassis.substr(0, chassis.find("[[module]]")) + chassis.substr(chassis.find("[[module]]\nslot = 2"));
    start(counting("Ethernet1/1, fcip7", "rx_unicast_frames = 1"));
    pass(10s);
    state_->reload(parse_chassis(without_ethernet));
    pass(10s);
    EXPECT_THROW(read("Ethernet1/1"), std::out_of_range);
    state_->reload(parse_chassis(chassis + counting("Ethernet1/1", "rx_unicast_frames = 1")));
    pass(5s);
    EXPECT_EQ(read("Ethernet1/1").traffic[PM_ETH_TRAFFIC_RX].frames, 5u);
    EXPECT_EQ(read("Ethernet1/1").seconds_since_clear, 5u);
    EXPECT_EQ(read("fcip7").traffic[PM_ETH_TRAFFIC_RX].frames, 10u);
    EXPECT_EQ(read("fcip7").seconds_since_clear, 25u);
}

TEST_F(traffic_counters, take_the_last_rate_of_several_sections) {
    start(counting("Ethernet1/1-3", "rx_unicast_frames = 1\ntx_unicast_frames = 2\nunreachable = 'yes'") +
          counting("Ethernet1/2", "tx_unicast_frames = 5\nunreachable = 'no'"));
    pass(1s);
    EXPECT_EQ(read("Ethernet1/2").traffic[PM_ETH_TRAFFIC_RX].frames, 1u);
    EXPECT_EQ(read("Ethernet1/2").traffic[PM_ETH_TRAFFIC_TX].frames, 5u);
    EXPECT_EQ(read("Ethernet1/3").traffic[PM_ETH_TRAFFIC_TX].frames, 2u);
    EXPECT_FALSE(state_->model().counting.at(index_of("Ethernet1/2")).unreachable);
    EXPECT_TRUE(state_->model().counting.at(index_of("Ethernet1/3")).unreachable);
}

}  // namespace
