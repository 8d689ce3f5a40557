// SPDX-License-Identifier: Apache-2.0
#include "services/ethernet_stats_service.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>

#include "fake_outlets.h"
#include "fake_reply.h"
#include "names.h"
#include "port_mgr/ethernet_stats.h"
#include "port_mgr/opcodes.h"
#include "protocol/byte_order.h"
#include "services/line_card.h"

namespace {

using virtual_switch::line_card_context;
using virtual_switch::switch_state;
using namespace std::chrono_literals;

constexpr const char *chassis = R"([chassis]
name = 'test'
type = 6
slots = 4
[[module]]
slot = 1
kind = 'fc'
ports = 2
[[module]]
slot = 2
kind = 'ethernet'
ports = 4
[[module]]
slot = 3
kind = 'ips'
ports = 4
[[module]]
slot = 4
kind = 'ethernet-sfp'
ports = 2
[[interface]]
name = 'mgmt0'
[[fcip]]
name = 'fcip9'
slot = 3
port = 3
[[sub_interface]]
name = 'Ethernet2/2.5'
[[port_channel]]
name = 'port-channel1'
members = 'Ethernet2/4'
[[counters]]
name = 'Ethernet2/2, Ethernet2/3, if13-3/2, if26-4/2, fcip9'
rx_unicast_octets = 0x11121314
tx_unicast_frames = 3
rx_broadcast_errors = 7200000
tx_pause_frames = 3600000
crc_errors = 10800000
link_resets = 14400000
[[counters]]
name = 'Ethernet2/4'
crc_errors = 3600000
unreachable = 'yes'
)";

struct question {
    const char *interface;
    uint16_t port;
    uint32_t word = PM_ETH_STATS_READ;
};

std::vector<uint8_t> payload_for(const question &asked) {
    std::vector<uint8_t> payload(32);
    pm::store_be16(&payload[4], asked.port);
    pm::store_be32(&payload[24], index_of(asked.interface));
    pm::store_be32(&payload[28], asked.word);
    return payload;
}

class ethernet_stats_service : public testing::Test {
  protected:
    mts_reply ask(uint8_t slot, const std::vector<uint8_t> &payload, uint32_t opcode = 1908) {
        line_card_context card{&state_, static_cast<uint8_t>(slot - 1)};
        const mts_request_t request{0x302,          943, opcode, 0, 0, static_cast<uint32_t>(payload.size()),
                                    payload.data(), {}};
        mts_reply reply;
        virtual_switch::ethernet_stats_service(&card, &request, &reply);
        EXPECT_EQ(reply.payload.value().size(), 320u);
        EXPECT_EQ(reply.failure, 0u);
        return reply;
    }
    mts_reply ask(uint8_t slot, const question &asked) { return ask(slot, payload_for(asked)); }

    // Refusals are records of zeros.
    static bool is_refusal(const mts_reply &reply) { return *reply.payload == std::vector<uint8_t>(320); }

    static constexpr size_t result = 24;
    static constexpr size_t crc_errors = 248;

    virtual_switch::switch_time now_ = 0ms;
    switch_state state_ = state_of(chassis, [this] { return now_; });
};

TEST_F(ethernet_stats_service, answers_with_the_record) {
    now_ = 5s;
    const mts_reply reply = ask(2, {"Ethernet2/2", 1});
    std::vector<uint8_t> expected(320);
    const auto put32 = [&](size_t offset, uint32_t value) { pm::store_be32(&expected[offset], value); };
    const auto put64 = [&](size_t offset, uint64_t value) {
        put32(offset, static_cast<uint32_t>(value >> 32));
        put32(offset + 4, static_cast<uint32_t>(value));
    };
    put32(result, 1);
    put64(32, 0x11121314ull * 5);  // octets received
    put32(48, 10000);              // errors received
    put64(64, 15);                 // frames transmitted
    put64(80, 0x11121314ull * 5);
    put64(112, 15);
    put32(192, 10000);
    put32(224, 5);
    put64(240, 5000);
    put32(crc_errors, 15000);
    put32(304, 20000);
    EXPECT_EQ(*reply.payload, expected);
}

TEST_F(ethernet_stats_service, counts_for_every_kind_of_port) {
    now_ = 1s;
    const std::pair<uint8_t, question> ports[] = {
        {2, {"Ethernet2/3", 2}}, {3, {"if13-3/2", 1}}, {4, {"if26-4/2", 1}}, {3, {"fcip9", 2}}};
    for (const auto &[slot, asked] : ports) {
        const mts_reply reply = ask(slot, asked);
        EXPECT_EQ(reply.word(result), 1u) << asked.interface;
        EXPECT_EQ(reply.word(crc_errors), 3000u) << asked.interface;
    }
    const mts_reply without_rates = ask(2, {"Ethernet2/1", 0});
    EXPECT_EQ(without_rates.word(result), 1u);
    EXPECT_EQ(without_rates.word(crc_errors), 0u);
    EXPECT_EQ(without_rates.word(224), 1u);
}

TEST_F(ethernet_stats_service, counts_a_sub_interface_with_its_port) {
    now_ = 1s;
    for (const char *name : {"Ethernet2/2.5", "Ethernet2/2.77"})
        EXPECT_EQ(ask(2, {name, 1}).word(crc_errors), 3000u) << name;
    EXPECT_EQ(ask(2, {"Ethernet2/2.5", 1, PM_ETH_STATS_CLEAR}).word(crc_errors), 3000u);
    EXPECT_EQ(ask(2, {"Ethernet2/2", 1}).word(crc_errors), 0u);
}

TEST_F(ethernet_stats_service, clears_one_interface_after_it_was_read) {
    now_ = 2500ms;
    const mts_reply cleared = ask(2, {"Ethernet2/2", 1, PM_ETH_STATS_CLEAR});
    EXPECT_EQ(cleared.word(result), 1u);
    EXPECT_EQ(cleared.word(crc_errors), 7500u);
    EXPECT_EQ(cleared.word(224), 2u);
    EXPECT_EQ(ask(2, {"Ethernet2/2", 1}).word(crc_errors), 0u);
    EXPECT_EQ(ask(2, {"Ethernet2/3", 2}).word(crc_errors), 7500u);
    now_ += 1s;
    EXPECT_EQ(ask(2, {"Ethernet2/2", 1}).word(crc_errors), 3000u);
    EXPECT_EQ(ask(2, {"Ethernet2/2", 1}).word(224), 1u);
    EXPECT_EQ(ask(2, {"Ethernet2/3", 2}).word(224), 3u);
}

TEST_F(ethernet_stats_service, refuses_what_is_not_the_port_of_the_request) {
    now_ = 1s;
    const std::pair<uint8_t, question> bad[] = {
        {2, {"Ethernet2/2", 0}}, {2, {"Ethernet2/2", 2}},   {2, {"Ethernet2/2", 0x101}}, {2, {"Ethernet2/2", 0xffff}},
        {3, {"Ethernet2/2", 1}},                                                 // of another card
        {2, {"Ethernet2/5", 4}},                                                 // does not exist
        {2, {"Ethernet3/2", 1}}, {3, {"fcip9", 1}},         {3, {"fcip9", 30}},  // its port base
        {2, {"fcip9", 2}},       {3, {"fcip10", 2}},        {1, {"fc1/1", 0}},   // keep no counters
        {1, {"mgmt0", 0}},       {2, {"port-channel1", 0}}, {1, {"port-channel1", 0}},   {2, {"port-channel1.5", 0}},
    };
    for (const auto &[slot, asked] : bad) {
        for (const uint32_t word : {PM_ETH_STATS_READ, PM_ETH_STATS_CLEAR})
            EXPECT_TRUE(is_refusal(ask(slot, {asked.interface, asked.port, word}))) << asked.interface << asked.port;
    }
    EXPECT_EQ(ask(2, {"Ethernet2/2", 1}).word(crc_errors), 3000u);
    EXPECT_EQ(ask(3, {"fcip9", 2}).word(crc_errors), 3000u);
}

TEST_F(ethernet_stats_service, refuses_other_request_words) {
    now_ = 1s;
    for (const uint32_t word : {2u, 0x01000000u, 0xffffffffu})
        EXPECT_TRUE(is_refusal(ask(2, {"Ethernet2/2", 1, word}))) << word;
    EXPECT_EQ(ask(2, {"Ethernet2/2", 1}).word(crc_errors), 3000u);
}

TEST_F(ethernet_stats_service, refuses_requests_of_another_size_and_other_requests) {
    const std::vector<uint8_t> good = payload_for({"Ethernet2/2", 1});
    for (size_t size = 0; size < good.size(); ++size)
        EXPECT_TRUE(is_refusal(ask(2, {good.begin(), good.begin() + static_cast<ptrdiff_t>(size)}))) << size;
    std::vector<uint8_t> longer = good;
    longer.push_back(0);
    EXPECT_TRUE(is_refusal(ask(2, longer)));
    EXPECT_TRUE(is_refusal(ask(2, good, 1909)));
    EXPECT_FALSE(is_refusal(ask(2, good)));
}

TEST_F(ethernet_stats_service, does_not_look_at_what_nobody_uses) {
    std::vector<uint8_t> payload = payload_for({"Ethernet2/2", 1});
    std::fill(payload.begin(), payload.begin() + 4, uint8_t{0xee});
    std::fill(payload.begin() + 6, payload.begin() + 24, uint8_t{0xee});
    EXPECT_EQ(ask(2, payload).word(result), 1u);
}

TEST_F(ethernet_stats_service, tells_of_a_port_out_of_reach) {
    now_ = 1s;
    std::vector<uint8_t> expected(320);
    expected[11] = 1;
    expected[27] = 1;
    for (const uint32_t word : {PM_ETH_STATS_READ, PM_ETH_STATS_CLEAR})
        EXPECT_EQ(*ask(2, {"Ethernet2/4", 3, word}).payload, expected);
    // Nothing was cleared either.
    EXPECT_EQ(state_.counters().read(index_of("Ethernet2/4")).crc_errors, 1000u);
    EXPECT_TRUE(is_refusal(ask(2, {"Ethernet2/4", 2})));
    EXPECT_TRUE(is_refusal(ask(2, {"Ethernet2/4", 3, 2})));
}

TEST_F(ethernet_stats_service, leaves_a_request_alone_that_it_has_no_memory_for) {
    const std::vector<uint8_t> payload = payload_for({"Ethernet2/2", 1, PM_ETH_STATS_CLEAR});
    line_card_context card{&state_, 1};
    const mts_request_t request{0x302, 943, 1908, 0, 0, 32, payload.data(), {}};
    mts_reply reply;
    reply.largest = 319;
    now_ = 1s;
    virtual_switch::ethernet_stats_service(&card, &request, &reply);
    EXPECT_FALSE(reply.payload.has_value());
    EXPECT_EQ(state_.counters().read(index_of("Ethernet2/2")).crc_errors, 3000u);
}

}  // namespace
