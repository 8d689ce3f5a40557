// SPDX-License-Identifier: Apache-2.0
// What line cards answer about counters.
#include "ethernet_stats_fixture.h"
#include "parse_outputs.h"

namespace {

using support::bytes;
using testing::ElementsAre;
using testing::EndsWith;
using unit::asked_error;
using unit::calls;
using unit::eth_answer;
using unit::eth_stats_size;

constexpr const char *as_reported = "ethernet_stats.cc: pm_get_clear_eth_stats";
constexpr const char *unreachable = "Linecard unable to communicate with port for port 2060708\n";
constexpr const char *refused = "Linecard returned error for port 2060708\n";
constexpr auto rejected = static_cast<int32_t>(PM_ERR_REJECTED);

// The record of an answer: the fields that are numbers have their bytes turned round.
bytes in_host_order(bytes record) {
    size_t at = 0;
    const auto as_is = [&](size_t size) { at += size; };
    const auto number = [&](size_t size) {
        const auto begin = record.begin() + static_cast<ptrdiff_t>(at);
        std::reverse(begin, begin + static_cast<ptrdiff_t>(size));
        at += size;
    };
    as_is(32);
    for (int traffic = 0; traffic < 8; ++traffic) {
        for (const size_t size : {8, 8, 4, 4}) number(size);
    }
    number(4);
    as_is(4);
    number(8);
    number(8);
    for (int counter = 0; counter < 15; ++counter) number(4);
    as_is(12);
    EXPECT_EQ(at, eth_stats_size);
    return record;
}

bytes with_bytes(bytes answer, size_t at, const bytes &some) {
    std::ranges::copy(some, answer.begin() + static_cast<ptrdiff_t>(at));
    return answer;
}

class ethernet_stats_answer : public unit::ethernet_stats_test {
  protected:
    // The answer is dropped last.
    static void expect_dropped() {
        EXPECT_THAT(support::call_log::take().back(), testing::StartsWith("mts_drop(0x55667788, message 0x7"));
    }

    void expect_another_size(const std::optional<bytes> &answer) {
        EXPECT_EQ(get_answered(answer), 0);
        EXPECT_THAT(assertions.take(), ElementsAre(as_reported));
        EXPECT_EQ(result(), untouched);
        expect_dropped();
    }

    void expect_unreachable(const bytes &answer, int32_t drop = 0) {
        EXPECT_EQ(get_answered(answer, drop), -1);
        EXPECT_EQ(output.take(), unreachable);
        EXPECT_EQ(result(), untouched);
    }
};

TEST_F(ethernet_stats_answer, has_its_counters_in_host_order_and_the_rest_as_it_came) {
    EXPECT_EQ(get_answered(eth_answer()), 0);
    EXPECT_EQ(result(), in_host_order(eth_answer()));
    expect_dropped();
}

TEST_F(ethernet_stats_answer, has_its_counters_in_their_members) {
    const support::payload wire = support::payload()
                                      .fill(24, 0)
                                      .be32(0x01000000)
                                      .fill(4, 0)
                                      .be32(0x01020304)
                                      .be32(0x05060708)
                                      .be32(0x090a0b0c)
                                      .be32(0x0d0e0f10)
                                      .be32(0x11121314)
                                      .be32(0x15161718)
                                      .fill(168, 0)
                                      .be32(0x21222324)
                                      .fill(4, 0)
                                      .be32(0)
                                      .be32(31)
                                      .be32(32)
                                      .be32(0)
                                      .be32(41)
                                      .fill(52, 0)
                                      .be32(55)
                                      .fill(12, 0);
    EXPECT_EQ(get_answered(wire), 0);
    EXPECT_EQ(stats.result, 1U);
    EXPECT_EQ(stats.traffic[PM_ETH_TRAFFIC_RX].octets, 0x0102030405060708U);
    EXPECT_EQ(stats.traffic[PM_ETH_TRAFFIC_RX].frames, 0x090a0b0c0d0e0f10U);
    EXPECT_EQ(stats.traffic[PM_ETH_TRAFFIC_RX].errors, 0x11121314U);
    EXPECT_EQ(stats.traffic[PM_ETH_TRAFFIC_RX].drops, 0x15161718U);
    EXPECT_EQ(stats.seconds_since_clear, 0x21222324U);
    EXPECT_EQ(stats.rx_pause_frames, 31U);
    EXPECT_EQ(stats.tx_pause_frames, uint64_t{32} << 32);
    EXPECT_EQ(stats.crc_errors, 41U);
    EXPECT_EQ(stats.link_resets, 55U);
}

TEST_F(ethernet_stats_answer, that_is_not_dropped_returns_the_error) {
    EXPECT_EQ(get_answered(eth_answer(), -1), 9);
    EXPECT_EQ(result(), in_host_order(eth_answer()));
    EXPECT_EQ(support::call_log::take().back(), asked_error);
}

TEST_F(ethernet_stats_answer, need_not_be_dropped_with_0) { EXPECT_EQ(get_answered(eth_answer(), 1), 0); }

TEST_F(ethernet_stats_answer, without_record_returns_the_error_of_a_failed_drop) {
    will_answer(eth_answer(), -1);
    EXPECT_EQ(pm_get_clear_eth_stats(unit::handle, unit::this_interface, 1, 0, nullptr), 9);
}

// ---- the line card cannot reach the port

TEST_F(ethernet_stats_answer, of_a_port_out_of_reach_is_told) {
    for (const bytes &status : {bytes{0, 1}, bytes{1, 0}, bytes{0xff, 0xff}}) {
        expect_unreachable(with_bytes(eth_answer(), 10, status));
        expect_dropped();
    }
}

TEST_F(ethernet_stats_answer, of_a_port_out_of_reach_is_told_whatever_its_size) {
    for (const size_t size : {12, 13, 319, 321}) {
        expect_unreachable(with_bytes(bytes(size, 0), 10, {0, 1}));
        expect_dropped();
    }
}

TEST_F(ethernet_stats_answer, of_a_port_out_of_reach_is_told_before_a_refusal) {
    expect_unreachable(with_bytes(bytes(eth_stats_size, 0), 10, {0, 1}));
}

TEST_F(ethernet_stats_answer, of_a_port_out_of_reach_need_not_be_dropped) {
    expect_unreachable(with_bytes(eth_answer(), 10, {0, 1}), -1);
}

TEST_F(ethernet_stats_answer, of_a_port_out_of_reach_may_name_a_long_interface) {
    interfaces.name_size = 255;
    EXPECT_EQ(get_answered(with_bytes(eth_answer(), 10, {0, 1})), -1);
    EXPECT_EQ(output.take(),
              "Linecard unable to communicate with port for port 2060708" + std::string(243, '+') + "\n");
}

// ---- the line card refuses

TEST_F(ethernet_stats_answer, that_refuses_is_told_and_left_in_the_record_as_it_came) {
    const bytes answer = with_bytes(eth_answer(), 24, {0, 0, 0, 0});
    EXPECT_EQ(get_answered(answer), rejected);
    EXPECT_EQ(output.take(), refused);
    EXPECT_EQ(result(), answer);
    expect_dropped();
}

TEST_F(ethernet_stats_answer, that_refuses_need_not_be_dropped) {
    EXPECT_EQ(get_answered(with_bytes(eth_answer(), 24, {0, 0, 0, 0}), -1), rejected);
    EXPECT_EQ(output.take(), refused);
}

TEST_F(ethernet_stats_answer, that_refuses_may_name_a_long_interface) {
    interfaces.name_size = 255;
    EXPECT_EQ(get_answered(with_bytes(eth_answer(), 24, {0, 0, 0, 0})), rejected);
    EXPECT_THAT(output.take(), EndsWith("port 2060708" + std::string(243, '+') + "\n"));
}

TEST_F(ethernet_stats_answer, with_any_bit_in_its_result_is_good) {
    for (const bytes &good : {bytes{1, 0, 0, 0}, bytes{0, 1, 0, 0}, bytes{0, 0, 1, 0}, bytes{0, 0, 0, 1}}) {
        const bytes answer = with_bytes(eth_answer(), 24, good);
        EXPECT_EQ(get_answered(answer), 0);
        EXPECT_EQ(result(), in_host_order(answer));
    }
}

// ---- answers of another size

TEST_F(ethernet_stats_answer, of_another_size_is_reported) {
    for (const size_t size : {0, 1, 9, 10, 11, 12, 24, 28, 319, 321, 640, 65856}) {
        SCOPED_TRACE(size);
        expect_another_size(bytes(size, 0));
    }
}

TEST_F(ethernet_stats_answer, without_room_for_the_communication_status_has_none) {
    for (const size_t size : {10, 11}) expect_another_size(bytes(size, 1));
}

TEST_F(ethernet_stats_answer, without_payload_is_reported) { expect_another_size({}); }

TEST_F(ethernet_stats_answer, of_another_size_that_is_not_dropped_returns_the_error) {
    EXPECT_EQ(get_answered(bytes(319, 0), -1), 9);
    EXPECT_THAT(assertions.take(), ElementsAre(as_reported));
    EXPECT_EQ(support::call_log::take().back(), asked_error);
    EXPECT_EQ(result(), untouched);
}

}  // namespace
