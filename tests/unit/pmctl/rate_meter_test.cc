// SPDX-License-Identifier: Apache-2.0
#include "commands/rate_meter.h"

#include <gmock/gmock.h>

namespace {

using pmctl::counted_interface;
using pmctl::no_rate;
using std::chrono::milliseconds;

constexpr pmctl::rate_meter::time start{std::chrono::seconds(1000)};

counted_interface counted(if_index_t index, uint64_t octets, uint64_t frames, uint32_t errors) {
    counted_interface found{index, {}, {}, {}};
    found.stats.traffic[PM_ETH_TRAFFIC_RX] = {octets, frames, errors, 99};
    found.stats.traffic[PM_ETH_TRAFFIC_TX] = {2 * octets, 2 * frames, 2 * errors, 99};
    return found;
}

class rate_meter : public testing::Test {
  protected:
    counted_interface measured(counted_interface at, int after_ms) {
        meter_.measure(at, start + milliseconds(after_ms));
        return at;
    }

    pmctl::rate_meter meter_;
};

TEST_F(rate_meter, has_no_rates_at_first) {
    const counted_interface first = measured(counted(7, 100, 10, 1), 0);
    for (const uint64_t rate : {uint64_t{first.rx.bytes}, uint64_t{first.rx.frames}, uint64_t{first.rx.errors},
                                uint64_t{first.tx.bytes}, uint64_t{first.tx.frames}, uint64_t{first.tx.errors}})
        EXPECT_EQ(rate, no_rate);
}

TEST_F(rate_meter, divides_what_was_counted_by_the_time_that_passed) {
    measured(counted(7, 100, 10, 1), 0);
    const counted_interface second = measured(counted(7, 5100, 510, 6), 2500);
    EXPECT_EQ(second.rx.bytes, 2000u);
    EXPECT_EQ(second.rx.frames, 200u);
    EXPECT_EQ(second.rx.errors, 2u);
    EXPECT_EQ(second.tx.bytes, 4000u);
    EXPECT_EQ(second.tx.frames, 400u);
    EXPECT_EQ(second.tx.errors, 4u);
    const counted_interface third = measured(counted(7, 5200, 510, 6), 3000);
    EXPECT_EQ(third.rx.bytes, 200u);
    EXPECT_EQ(third.rx.frames, 0u);
}

TEST_F(rate_meter, rounds_to_whole_numbers) {
    measured(counted(7, 0, 0, 0), 0);
    EXPECT_EQ(measured(counted(7, 5, 0, 0), 2000).rx.bytes, 3u);
}

TEST_F(rate_meter, starts_again_where_a_counter_went_down) {
    measured(counted(7, 1000, 4000000000, 4294967295), 0);
    const counted_interface second = measured(counted(7, 500, 100, 0), 1000);
    EXPECT_EQ(second.rx.bytes, 500u);
    EXPECT_EQ(second.rx.frames, 100u);
    EXPECT_EQ(second.rx.errors, 0u);
}

TEST_F(rate_meter, keeps_interfaces_apart) {
    measured(counted(7, 1000, 0, 0), 0);
    EXPECT_EQ(measured(counted(8, 9000, 0, 0), 500).rx.bytes, no_rate);
    EXPECT_EQ(measured(counted(7, 3000, 0, 0), 1000).rx.bytes, 2000u);
    EXPECT_EQ(measured(counted(8, 9100, 0, 0), 1000).rx.bytes, 200u);
}

TEST_F(rate_meter, survives_extremes) {
    measured(counted(7, 0, 0, 0), 0);
    EXPECT_EQ(measured(counted(7, UINT64_MAX, 0, 0), 100).rx.bytes, no_rate - 1);
    EXPECT_EQ(measured(counted(7, UINT64_MAX, 0, 0), 100).rx.bytes, no_rate) << "no time has passed";
}

}  // namespace
