// SPDX-License-Identifier: Apache-2.0
#include "services/sfp_diagnostics_service.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_reply.h"
#include "names.h"
#include "optics_chassis.h"
#include "platform/tlv_array.h"
#include "port_mgr/opcodes.h"
#include "port_mgr/status.h"
#include "services/guarded_service.h"
#include "services/line_card.h"
#include "services/line_card_services.h"

namespace {

using namespace std::chrono_literals;
using bytes = std::vector<uint8_t>;

constexpr size_t answer_size = 176;
constexpr size_t elements_size = 12 + 8 + 20;

bytes word_of(uint32_t word) {
    return {static_cast<uint8_t>(word >> 24), static_cast<uint8_t>(word >> 16), static_cast<uint8_t>(word >> 8),
            static_cast<uint8_t>(word)};
}

class sfp_diagnostics : public testing::Test {
  protected:
    mts_reply send(uint8_t slot, const bytes &payload, uint32_t opcode = MTS_OPC_GET_SFP_DIAG_INFO) {
        virtual_switch::line_card_context card{&switch_.state, slot, started_};
        const auto size = static_cast<uint32_t>(payload.size());
        const mts_request_t request{card.slot, PM_SAP_SFP_DIAGNOSTICS, opcode, 0, 0, size, payload.data(), {}};
        mts_reply reply;
        virtual_switch::sfp_diagnostics_service(&card, &request, &reply);
        return reply;
    }
    mts_reply ask(const char *name, uint8_t slot = 0) { return send(slot, word_of(index_of(name))); }

    // A word of the block.
    uint32_t word(const char *name, size_t number) { return ask(name).word(4 + 4 * number); }

    void expect_refusal(const mts_reply &reply, uint32_t status) {
        ASSERT_EQ(reply.payload->size(), answer_size);
        EXPECT_EQ(reply.word(0), 27u << 16 | 172);
        for (size_t i = 0; i < 43; ++i) EXPECT_EQ(reply.word(4 + 4 * i), i == 1 ? status : 0) << i;
    }

    optics_switch switch_;
    virtual_switch::switch_time started_{};
};

// The usual transceiver of fc1/1, whose phase is that of its index.
TEST_F(sfp_diagnostics, are_told_word_for_word) {
    const mts_reply reply = ask("fc1/1");
    ASSERT_EQ(reply.payload->size(), answer_size + elements_size);
    EXPECT_EQ(reply.word(0), 27u << 16 | 172);
    EXPECT_EQ(reply.word(4), 0u);
    EXPECT_EQ(reply.word(8), 0u);
    const auto &plugged_in = *switch_.state.model().plugged_into(index_of("fc1/1"));
    const auto page = diagnostics_at(plugged_in, index_of("fc1/1"), {true, true}, 0s);
    const uint32_t thresholds[] = {75 * 256, 70 * 256, 0,     0xfffffb00, 36000, 35000, 31000, 30000, 6000, 5500,
                                   1000,     500,      14791, 7413,       1862,  741,   19953, 10000, 776,  309};
    for (size_t quantity = 0; quantity < 5; ++quantity) {
        const size_t at = 12 + 20 * quantity;
        EXPECT_EQ(reply.word(at), uint32_t{page[96 + 2 * quantity]} << 8 | page[97 + 2 * quantity]);
        for (size_t i = 0; i < 4; ++i)
            EXPECT_EQ(reply.word(at + 4 + 4 * i), thresholds[4 * quantity + i]) << quantity << " " << i;
    }
    for (size_t i = 27; i < 43; ++i) EXPECT_EQ(reply.word(4 + 4 * i), 0u);
}

TEST_F(sfp_diagnostics, tell_port_alarms_and_age) {
    switch_.now = std::chrono::milliseconds(0x123456789a);
    started_ = 0x80ms;
    const mts_reply reply = ask("fc1/1");
    const bytes tail(reply.payload->begin() + answer_size, reply.payload->end());
    ASSERT_EQ(tail.size(), elements_size);
    EXPECT_EQ(tlv_aligned_array_get_num_tlvs(tail.data(), 1), 2u);
    uint32_t position = 0;
    const auto next = [&](uint16_t wanted_type) -> bytes {
        uint16_t type = 0;
        uint16_t length = 0;
        const void *value = nullptr;
        EXPECT_EQ(tlv_aligned_array_get_next_tlv(tail.data(), &type, &length, &value, 1, &position), 0u);
        EXPECT_EQ(type, wanted_type);
        const auto *const begin = static_cast<const uint8_t *>(value);
        return {begin, begin + length};
    };
    EXPECT_EQ(next(79), word_of(index_of("fc1/1")));
    EXPECT_THAT(next(80), testing::ElementsAre(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x12, 0x34, 0x56, 0x78, 0x1a));
}

TEST_F(sfp_diagnostics, are_calibrated_for_the_client) {
    EXPECT_EQ(word("fc1/2", 0), 1u);
    EXPECT_EQ(word("fc1/1", 0), 0u);
    EXPECT_NEAR(word("fc1/2", 7), 33000, 1);
    EXPECT_NEAR(word("fc1/2", 8), 36000, 1);
    EXPECT_NEAR(word("fc1/2", 11), 30000, 1);
    EXPECT_NEAR(word("fc1/2", 22), 4467, 1);
    EXPECT_NEAR(word("fc1/2", 17), 5623, 1);
}

// Between 61 and 77 degrees, with a warning above 70 and an alarm above 75.
TEST_F(sfp_diagnostics, drift_through_warning_and_alarm_with_the_clock) {
    std::set<uint32_t> alarms;
    std::set<uint32_t> warnings;
    uint32_t least = UINT32_MAX;
    uint32_t most = 0;
    for (int seconds = 0; seconds < 400; seconds += 2) {
        switch_.now = std::chrono::seconds(seconds);
        const mts_reply reply = ask("fc1/2");
        const uint32_t temperature = reply.word(12);
        least = std::min(least, temperature);
        most = std::max(most, temperature);
        const size_t extra = answer_size + 12 + 8 + 4;
        EXPECT_EQ(reply.word(extra), temperature > reply.word(16) ? 0x8000u : 0u);
        EXPECT_EQ(reply.word(extra + 4), temperature > reply.word(20) ? 0x8000u : 0u);
        alarms.insert(reply.word(extra));
        warnings.insert(reply.word(extra + 4));
    }
    EXPECT_EQ(alarms.size(), 2u);
    EXPECT_EQ(warnings.size(), 2u);
    EXPECT_NEAR(least, 61 * 256, 30);
    EXPECT_NEAR(most, 77 * 256, 30);
}

TEST_F(sfp_diagnostics, go_dark_without_a_peer_or_a_laser) {
    EXPECT_EQ(word("fc1/5", 22), 0u);
    EXPECT_NE(word("fc1/5", 17), 0u);
    virtual_switch::configuration changes;
    changes.settings[index_of("fc1/1")][1] = 2u;  // shut down
    changes.settings[index_of("fc1/2")][1] = 2u;
    ASSERT_TRUE(switch_.state.change(changes));
    for (const char *name : {"fc1/1", "fc1/2"}) {
        EXPECT_EQ(word(name, 12), 0u);
        EXPECT_EQ(word(name, 17), 0u);
        EXPECT_NE(word(name, 22), 0u);
        EXPECT_EQ(word(name, 1), 0u);
    }
}

TEST_F(sfp_diagnostics, are_of_the_cards_own_ports) {
    EXPECT_EQ(ask("Ethernet2/1", 1).word(8), 0u);
    expect_refusal(ask("if13-3/1", 2), PM_ERR_REJECTED);
    expect_refusal(ask("fc1/1", 1), PM_ERR_INVALID_RANGE);
    expect_refusal(ask("Ethernet2/1", 0), PM_ERR_INVALID_RANGE);
    for (const char *name : {"fc1/6", "fc4/1", "mgmt0", "loopback1", "port-channel1"})
        expect_refusal(ask(name, 0), PM_ERR_INVALID_RANGE);
}

TEST_F(sfp_diagnostics, are_refused_without_a_transceiver_that_has_them) {
    expect_refusal(ask("fc1/3"), PM_ERR_REJECTED);
    expect_refusal(ask("fc1/4"), PM_ERR_REJECTED);
    expect_refusal(ask("fcip1", 2), PM_ERR_REJECTED);
    expect_refusal(ask("Ethernet2/1.7", 1), PM_ERR_REJECTED);
}

TEST_F(sfp_diagnostics, are_refused_for_malformed_requests) {
    const bytes good = word_of(index_of("fc1/1"));
    for (size_t size = 0; size < 4; ++size)
        expect_refusal(send(0, {good.begin(), good.begin() + static_cast<ptrdiff_t>(size)}), PM_ERR_INVALID_PARAM);
    bytes longer = good;
    longer.push_back(0);
    expect_refusal(send(0, longer), PM_ERR_INVALID_PARAM);
    expect_refusal(send(0, good, 426), PM_ERR_FAILURE);
}

TEST_F(sfp_diagnostics, send_nothing_when_memory_runs_out) {
    virtual_switch::line_card_context card{&switch_.state, 0};
    const bytes payload = word_of(index_of("fc1/1"));
    const mts_request_t request{0x102, PM_SAP_SFP_DIAGNOSTICS, MTS_OPC_GET_SFP_DIAG_INFO, 0, 0, 4, payload.data(), {}};
    mts_reply reply;
    reply.largest = 100;
    virtual_switch::sfp_diagnostics_service(&card, &request, &reply);
    EXPECT_FALSE(reply.payload.has_value());
}

TEST(line_card_services, include_the_diagnostics) {
    constexpr mts_service_t guarded = virtual_switch::guarded<virtual_switch::sfp_diagnostics_service>;
    bool is_there = false;
    for (const auto &[sap, serve] : virtual_switch::line_card_services())
        is_there = is_there || (sap == PM_SAP_SFP_DIAGNOSTICS && serve == guarded);
    EXPECT_TRUE(is_there);
}

}  // namespace
