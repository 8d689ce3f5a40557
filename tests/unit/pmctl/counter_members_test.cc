// SPDX-License-Identifier: Apache-2.0
#include "output/counter_members.h"

#include <gmock/gmock.h>

#include <cstring>
#include <nlohmann/json.hpp>

#include "fixed_records.h"
#include "output/json_text.h"

namespace {

using nlohmann::json;
using testing::ElementsAre;

// A distinct number in every member, of which those of 64 bits do not fit in 32.
pmctl::counted_interface counted() {
    pmctl::counted_interface found{index_named("Ethernet4/1"), {}, {}, {}};
    constexpr uint64_t wide = 10000000000;
    uint32_t next = 100;
    for (pm_eth_traffic_t &each : found.stats.traffic) {
        each = {wide + next, wide + next + 1, next + 2, next + 3};
        next += 10;
    }
    found.stats.seconds_since_clear = 200;
    found.stats.rx_pause_frames = wide + 201;
    found.stats.tx_pause_frames = wide + 202;
    uint32_t errors[15];
    for (uint32_t i = 0; i < 15; ++i) errors[i] = 301 + i;
    std::memcpy(reinterpret_cast<uint8_t *>(&found.stats) + offsetof(pm_eth_stats_t, crc_errors), errors,
                sizeof errors);
    found.rx = {.bytes = wide + 401, .frames = 402, .errors = 403};
    found.tx = {.bytes = 404, .frames = 405, .errors = 406};
    return found;
}

json object_of(const pmctl::counted_interface &of) {
    const auto records = pmctl::records_of(std::span(&of, 1));
    return json::parse(pmctl::json_text("interfaces", pmctl::counter_groups(), records))["interfaces"][0];
}

TEST(counter_members, are_all_in_json) {
    EXPECT_EQ(object_of(counted()), json::parse(R"({"if_index": 35127296, "name": "Ethernet4/1",
        "seconds_since_clear": 200,
        "rx_bytes": 10000000100, "rx_frames": 10000000101, "rx_errors": 102, "rx_drops": 103,
        "tx_bytes": 10000000110, "tx_frames": 10000000111, "tx_errors": 112, "tx_drops": 113,
        "rx_unicast_bytes": 10000000120, "rx_unicast_frames": 10000000121, "rx_unicast_errors": 122,
        "rx_unicast_drops": 123,
        "tx_unicast_bytes": 10000000130, "tx_unicast_frames": 10000000131, "tx_unicast_errors": 132,
        "tx_unicast_drops": 133,
        "rx_multicast_bytes": 10000000140, "rx_multicast_frames": 10000000141, "rx_multicast_errors": 142,
        "rx_multicast_drops": 143,
        "tx_multicast_bytes": 10000000150, "tx_multicast_frames": 10000000151, "tx_multicast_errors": 152,
        "tx_multicast_drops": 153,
        "rx_broadcast_bytes": 10000000160, "rx_broadcast_frames": 10000000161, "rx_broadcast_errors": 162,
        "rx_broadcast_drops": 163,
        "tx_broadcast_bytes": 10000000170, "tx_broadcast_frames": 10000000171, "tx_broadcast_errors": 172,
        "tx_broadcast_drops": 173,
        "rx_bytes_per_second": 10000000401, "rx_frames_per_second": 402, "rx_errors_per_second": 403,
        "tx_bytes_per_second": 404, "tx_frames_per_second": 405, "tx_errors_per_second": 406,
        "rx_pause_frames": 10000000201, "crc_errors": 301, "alignment_errors": 302, "symbol_errors": 303,
        "undersize_frames": 304, "oversize_frames": 305, "fragments": 306, "jabbers": 307, "rx_overruns": 308,
        "tx_pause_frames": 10000000202, "tx_underruns": 309, "collisions": 310, "late_collisions": 311,
        "excessive_collisions": 312, "deferred_frames": 313, "carrier_losses": 314, "link_resets": 315})"));
}

TEST(counter_members, have_no_rate_where_none_was_measured) {
    pmctl::counted_interface unmeasured = counted();
    unmeasured.rx = {};
    unmeasured.tx = {};
    const json object = object_of(unmeasured);
    for (const char *key : {"rx_bytes_per_second", "rx_frames_per_second", "rx_errors_per_second",
                            "tx_bytes_per_second", "tx_frames_per_second", "tx_errors_per_second"})
        EXPECT_TRUE(object[key].is_null()) << key;
}

std::vector<std::string> texts_of(const pmctl::row &cells) {
    std::vector<std::string> texts;
    for (const pmctl::cell &each : cells) texts.push_back(each.text);
    return texts;
}

TEST(counter_sheets, are_tables_by_direction) {
    const auto sheets = pmctl::counter_sheets({counted()}, false);
    ASSERT_EQ(sheets.size(), 4u);
    EXPECT_EQ(sheets[0].title, "Received");
    EXPECT_THAT(sheets[0].header, ElementsAre("Interface", "Bytes", "Frames", "Unicast", "Multicast", "Broadcast",
                                              "Pause", "Errors", "Drops"));
    EXPECT_THAT(texts_of(sheets[0].rows.at(0)), ElementsAre("Ethernet4/1", "10000000100", "10000000101", "10000000121",
                                                            "10000000141", "10000000161", "10000000201", "102", "103"));
    EXPECT_EQ(sheets[1].title, "Transmitted");
    EXPECT_THAT(texts_of(sheets[1].rows.at(0)), ElementsAre("Ethernet4/1", "10000000110", "10000000111", "10000000131",
                                                            "10000000151", "10000000171", "10000000202", "112", "113"));
    EXPECT_EQ(sheets[2].title, "Receive errors");
    EXPECT_THAT(texts_of(sheets[2].rows.at(0)),
                ElementsAre("Ethernet4/1", "200", "301", "302", "303", "304", "305", "306", "307", "308"));
    EXPECT_THAT(sheets[2].header, ElementsAre("Interface", "Counting (s)", "CRC", "Alignment", "Symbol", "Undersize",
                                              "Oversize", "Fragments", "Jabbers", "Overruns"));
    EXPECT_EQ(sheets[3].title, "Transmit errors");
    EXPECT_THAT(texts_of(sheets[3].rows.at(0)),
                ElementsAre("Ethernet4/1", "200", "309", "310", "311", "312", "313", "314", "315"));
}

TEST(counter_sheets, show_errors_of_those_that_have_any) {
    pmctl::counted_interface receives{index_named("Ethernet4/2"), {}, {}, {}};
    receives.stats.rx_overruns = 1;
    receives.stats.tx_pause_frames = 1;
    pmctl::counted_interface transmits{index_named("Ethernet4/3"), {}, {}, {}};
    transmits.stats.link_resets = 1;
    const auto sheets = pmctl::counter_sheets({receives, transmits}, false);
    EXPECT_EQ(sheets[0].rows.size(), 2u);
    EXPECT_EQ(sheets[1].rows.size(), 2u);
    ASSERT_EQ(sheets[2].rows.size(), 1u);
    EXPECT_EQ(sheets[2].rows[0][0].text, "Ethernet4/2");
    ASSERT_EQ(sheets[3].rows.size(), 1u);
    EXPECT_EQ(sheets[3].rows[0][0].text, "Ethernet4/3");
}

TEST(counter_sheets, have_rates_in_front_when_they_are_measured) {
    pmctl::counted_interface half = counted();
    half.tx = {};
    const auto sheets = pmctl::counter_sheets({half}, true);
    EXPECT_THAT(sheets[0].header, ElementsAre("Interface", "Bytes/s", "Frames/s", "Errors/s", "Bytes", "Frames",
                                              "Unicast", "Multicast", "Broadcast", "Pause", "Errors", "Drops"));
    const auto received = texts_of(sheets[0].rows.at(0));
    EXPECT_THAT(std::vector(received.begin() + 1, received.begin() + 5),
                ElementsAre("10000000401", "402", "403", "10000000100"));
    const auto transmitted = texts_of(sheets[1].rows.at(0));
    EXPECT_THAT(std::vector(transmitted.begin() + 1, transmitted.begin() + 5),
                ElementsAre("-", "-", "-", "10000000110"));
}

}  // namespace
