// SPDX-License-Identifier: Apache-2.0
#include "library_test.h"
#include "port_mgr/port_mgr_common.h"

namespace {

using support::bytes;
using testing::ElementsAre;
using testing::MatchesRegex;

constexpr mts_handle_t handle = 0x1234abcd;

class messaging : public support::library_test {
  protected:
    mts_msg_t response{};
};

// ---- pm_mts_recv_with_eintr

TEST_F(messaging, receive_returns_what_the_transport_returned) {
    transport.will_receive(7);
    const mts_recv_options_t options{{1, 2, 3, 4, 5, 6, 7, 8, 9}};
    EXPECT_EQ(pm_mts_recv_with_eintr(handle, &response, &options), 7);
    EXPECT_THAT(support::call_log::take(),
                ElementsAre("mts_recv(0x1234abcd, 0x1 0x2 0x3 0x4 0x5 0x6 0x7 0x8 0x9)", "mts_errno_get(0x1234abcd)"));
    transport.drop(response);
}

TEST_F(messaging, receive_goes_on_while_it_is_interrupted) {
    constexpr int interruptions = 1000;
    for (int i = 0; i < interruptions; ++i) transport.will_receive(-1, 4);
    transport.will_receive(0);
    const mts_recv_options_t options{};
    EXPECT_EQ(pm_mts_recv_with_eintr(handle, &response, &options), 0);
    EXPECT_EQ(support::call_log::take().size(), 2U * (interruptions + 1));
    transport.drop(response);
}

TEST_F(messaging, receive_ends_with_a_success_although_the_last_error_was_an_interruption) {
    transport.will_receive(-1, 4);
    transport.will_receive(1);
    const mts_recv_options_t options{};
    EXPECT_EQ(pm_mts_recv_with_eintr(handle, &response, &options), 1);
    transport.drop(response);
}

class receive_failure : public messaging, public testing::WithParamInterface<uint32_t> {};

TEST_P(receive_failure, ends_the_receive_at_once) {
    transport.will_receive(-1, GetParam());
    const mts_recv_options_t options{};
    EXPECT_EQ(pm_mts_recv_with_eintr(handle, &response, &options), -1);
    EXPECT_EQ(support::call_log::take().size(), 2U);
}

INSTANTIATE_TEST_SUITE_P(messaging, receive_failure, testing::Values(0U, 1U, 3U, 5U, 9U, 11U, 110U, 260U));

TEST_F(messaging, receive_counts_only_minus_1_as_a_failure) {
    transport.will_receive(-1, 4);
    transport.will_receive(-2);
    const mts_recv_options_t options{};
    EXPECT_EQ(pm_mts_recv_with_eintr(handle, &response, &options), -2);
    transport.drop(response);
}

// ---- pm_ips_send_receive

class send_receive : public messaging {
  protected:
    int32_t exchange(uint32_t wait = 77) {
        return pm_ips_send_receive(handle, 0xfe0102aa, 943, 1908, request.data(), static_cast<uint32_t>(request.size()),
                                   &response, wait);
    }

    const bytes request{1, 2, 3, 4, 5};
    const std::string sent = "mts_send(0x1234abcd, 0xfe0102aa, 943, 1908, <0102030405>, 5, 0, 0)";
};

TEST_F(send_receive, asks_and_receives_the_answer_to_its_request) {
    transport.will_send();
    transport.will_receive();
    transport.will_drop();
    EXPECT_EQ(exchange(), 0);
    EXPECT_THAT(support::call_log::take(), ElementsAre(sent, "mts_rr_token_get(message 0x7001)",
                                                       "mts_recv(0x1234abcd, 0x1 0x0 0x4d 0x7001 0x0 0x0 0x0 0x0 0x0)",
                                                       "mts_drop(0x1234abcd, message 0x7001)"));
    transport.drop(response);
}

TEST_F(send_receive, takes_any_wait) {
    transport.will_send();
    transport.will_receive();
    transport.will_drop();
    EXPECT_EQ(exchange(0xffffffff), 0);
    EXPECT_EQ(support::call_log::take().at(2), "mts_recv(0x1234abcd, 0x1 0x0 0xffffffff 0x7001 0x0 0x0 0x0 0x0 0x0)");
    transport.drop(response);
}

TEST_F(send_receive, passes_a_missing_payload_on) {
    transport.will_send();
    transport.will_receive();
    transport.will_drop();
    EXPECT_EQ(pm_ips_send_receive(0, 1, 2, 3, nullptr, 0, &response, 10), 0);
    EXPECT_EQ(support::call_log::take().at(0), "mts_send(0x0, 0x1, 2, 3, null, 0, 0, 0)");
    transport.drop(response);
}

TEST_F(send_receive, drops_nothing_after_a_failed_send) {
    transport.will_send(-1, 113);
    EXPECT_EQ(exchange(), -1);
    EXPECT_THAT(support::call_log::take(), ElementsAre(sent));
}

TEST_F(send_receive, takes_any_result_of_a_send_but_0_for_a_failure) {
    transport.will_send(1);
    EXPECT_EQ(exchange(), -1);
    EXPECT_THAT(support::call_log::take(), ElementsAre(sent));
    transport.drop(transport.latest());
}

TEST_F(send_receive, drops_its_request_after_a_failed_receive) {
    transport.will_send();
    transport.will_receive(-1, 110);
    transport.will_drop();
    EXPECT_EQ(exchange(), -1);
    EXPECT_EQ(support::call_log::take().at(3), "mts_drop(0x1234abcd, message 0x7001)");
}

TEST_F(send_receive, does_not_mind_a_failed_drop) {
    transport.will_send();
    transport.will_receive();
    transport.will_drop(-1, 9);
    EXPECT_EQ(exchange(), 0);
    transport.drop(response);
}

TEST_F(send_receive, takes_any_result_of_a_receive_but_minus_1_for_a_success) {
    transport.will_send();
    transport.will_receive(5);
    transport.will_drop();
    EXPECT_EQ(exchange(), 0);
    transport.drop(response);
}

TEST_F(send_receive, fails_when_both_receive_and_drop_fail) {
    transport.will_send();
    transport.will_receive(-1, 110);
    transport.will_drop(-1, 9);
    EXPECT_EQ(exchange(), -1);
}

// ---- pm_get_module_resources

class module_resources : public messaging {
  protected:
    uint32_t query(uint16_t count, const pm_if_index_range_t *ranges) {
        return pm_get_module_resources(handle, count, ranges, 0x0b0c, 0xfe0000a1, &response);
    }

    uint32_t query() { return query(1, &range); }

    const pm_if_index_range_t range{0x01020304, 0x05060708};
    const std::string sent = "mts_send(0x1234abcd, 0xfe0000a1, 902, 3147, <0b0c00010102030405060708>, 12, 0, 0)";
    const std::string received = "mts_recv(0x1234abcd, 0x1 0x0 0xa 0x7001 0x0 0x0 0x0 0x0 0x0)";
    const std::string token = "mts_rr_token_get(message 0x7001)";
    const std::string dropped = "mts_drop(0x1234abcd, message 0x7001)";
    const std::string error = "mts_errno_get(0x1234abcd)";
};

TEST_F(module_resources, sends_module_count_and_ranges_and_receives_the_answer) {
    transport.will_send();
    transport.will_receive();
    transport.will_drop();
    EXPECT_EQ(query(), 0U);
    EXPECT_THAT(support::call_log::take(),
                ElementsAre("malloc(12)", "hton_if_index(0x01020304)", "hton_if_index(0x05060708)", sent, token,
                            received, dropped, "free(12)"));
    transport.drop(response);
}

TEST_F(module_resources, sends_the_header_alone_for_a_count_of_0) {
    transport.will_send();
    transport.will_receive();
    transport.will_drop();
    EXPECT_EQ(query(0, nullptr), 0U);
    const auto calls = support::call_log::take();
    EXPECT_EQ(calls.at(0), "malloc(4)");
    EXPECT_EQ(calls.at(1), "mts_send(0x1234abcd, 0xfe0000a1, 902, 3147, <0b0c0000>, 4, 0, 0)");
    transport.drop(response);
}

TEST_F(module_resources, sends_every_range_in_order) {
    const pm_if_index_range_t ranges[] = {{0x01000001, 0x01000002}, {0x02000003, 0x02000004}, {0x04000005, 0x04000006}};
    transport.will_send();
    transport.will_receive();
    transport.will_drop();
    EXPECT_EQ(query(3, ranges), 0U);
    EXPECT_EQ(support::call_log::take().at(7),
              "mts_send(0x1234abcd, 0xfe0000a1, 902, 3147, "
              "<0b0c0003010000010100000202000003020000040400000504000006>, 28, 0, 0)");
    transport.drop(response);
}

TEST_F(module_resources, sends_the_largest_count) {
    const std::vector<pm_if_index_range_t> ranges(0xffff, {0x01000001, 0x01000002});
    transport.will_send();
    transport.will_receive();
    transport.will_drop();
    EXPECT_EQ(query(0xffff, ranges.data()), 0U);
    const auto calls = support::call_log::take();
    EXPECT_EQ(calls.at(0), "malloc(524284)");
    EXPECT_THAT(calls.at(1 + 2 * 0xffff), testing::StartsWith("mts_send(0x1234abcd, 0xfe0000a1, 902, 3147, <0b0cffff"));
    EXPECT_THAT(calls.at(1 + 2 * 0xffff), testing::EndsWith("0100000101000002>, 524284, 0, 0)"));
    transport.drop(response);
}

TEST_F(module_resources, sends_zeros_for_missing_ranges) {
    transport.will_send();
    transport.will_receive();
    transport.will_drop();
    EXPECT_EQ(query(1, nullptr), 0U);
    EXPECT_THAT(support::call_log::take(),
                testing::Contains("mts_send(0x1234abcd, 0xfe0000a1, 902, 3147, <0b0c00010000000000000000>, 12, 0, 0)"));
    transport.drop(response);
}

TEST_F(module_resources, puts_interface_indexes_on_the_wire_as_the_platform_does) {
    interfaces.wire_mask = 0xffffffff;
    transport.will_send();
    transport.will_receive();
    transport.will_drop();
    EXPECT_EQ(query(), 0U);
    EXPECT_THAT(support::call_log::take(),
                testing::Contains("mts_send(0x1234abcd, 0xfe0000a1, 902, 3147, <0b0c0001fefdfcfbfaf9f8f7>, 12, 0, 0)"));
    transport.drop(response);
}

TEST_F(module_resources, takes_a_zero_handle_to_the_transport) {
    transport.will_send(-1, 9);
    EXPECT_EQ(pm_get_module_resources(0, 0, nullptr, 1, 2, &response), 9U);
    EXPECT_THAT(support::call_log::take(),
                ElementsAre("malloc(4)", "mts_send(0x0, 0x2, 902, 3147, <00010000>, 4, 0, 0)", "mts_errno_get(0x0)",
                            "free(4)"));
}

TEST_F(module_resources, returns_the_error_of_a_failed_send) {
    transport.will_send(-1, 113);
    EXPECT_EQ(query(), 113U);
    EXPECT_THAT(support::call_log::take(), ElementsAre("malloc(12)", "hton_if_index(0x01020304)",
                                                       "hton_if_index(0x05060708)", sent, error, "free(12)"));
}

TEST_F(module_resources, returns_the_error_of_a_failed_receive_and_drops_its_request) {
    transport.will_send();
    transport.will_receive(-1, 110);
    transport.will_drop();
    EXPECT_EQ(query(), 110U);
    EXPECT_THAT(support::call_log::take(),
                ElementsAre("malloc(12)", "hton_if_index(0x01020304)", "hton_if_index(0x05060708)", sent, token,
                            received, error, dropped, "free(12)"));
}

TEST_F(module_resources, returns_the_error_of_the_receive_when_the_drop_fails_too) {
    transport.will_send();
    transport.will_receive(-1, 110);
    transport.will_drop(-1, 9);
    EXPECT_EQ(query(), 110U);
}

TEST_F(module_resources, reads_and_ignores_the_error_of_a_drop_after_a_good_answer) {
    transport.will_send();
    transport.will_receive();
    transport.will_drop(-1, 9);
    EXPECT_EQ(query(), 0U);
    const auto calls = support::call_log::take();
    EXPECT_EQ(calls.at(6), dropped);
    EXPECT_EQ(calls.at(7), error);
    EXPECT_EQ(calls.at(8), "free(12)");
    transport.drop(response);
}

TEST_F(module_resources, sends_nothing_without_memory) {
    heap.fail_allocation(1);
    EXPECT_EQ(query(), 1U);
    EXPECT_THAT(support::call_log::take(), ElementsAre("malloc(12) fails"));
    EXPECT_THAT(output.take(),
                MatchesRegex("\\(Error\\) Malloc Failure in infra/port_manager/lib/pm_api_common/messaging\\.cc"
                             "\\[[0-9]+\\] for size 12\n"));
}

}  // namespace
