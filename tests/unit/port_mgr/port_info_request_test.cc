// SPDX-License-Identifier: Apache-2.0
// What every request has in common.
#include <functional>

#include "library_test.h"
#include "port_mgr/port_mgr_common.h"
#include "request_calls.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;
using unit::asked_error;
using unit::asked_token;
using unit::calls;
using unit::dropped;
using unit::handle;
using unit::received;

using ranges = std::vector<pm_if_index_range_t>;

// ---- what every request has in common: each is made about a Fibre Channel port

struct request_case {
    const char *name;
    bool is_blocking;
    const char *printed_refusal;       // of a refused argument, behind the function's name
    const char *printed_send_failure;  // the same, of a failed send
    uint32_t payload_size;             // on the heap, or 0
    const char *allocating_function;   // whose name a failed allocation's second line starts with
    std::function<uint32_t(mts_handle_t, mts_msg_t *)> function;
};

void PrintTo(const request_case &request, std::ostream *to) { *to << request.name; }

constexpr if_index_t port = 0x01040000;
const ranges one_range{{port, port + 1}};

const request_case requests[] = {
    {"pm_send_get_port_info", false, "", "", 23, "pm_send_get_port_info",
     [](auto queue, auto *message) {
         return pm_send_get_port_info(queue, 0, 0, 0, 0, 0, 1, one_range.data(), message);
     }},
    {"pm_get_port_info", true, "", "", 23, "pm_send_get_port_info",
     [](auto queue, auto *message) { return pm_get_port_info(queue, 0, 0, 0, 0, 0, 1, one_range.data(), message); }},
    {"pm_send_get_port_info_brief", false, "", "", 23, "pm_send_get_port_info_brief",
     [](auto queue, auto *message) {
         return pm_send_get_port_info_brief(queue, 0, 0, 0, 0, 0, 1, one_range.data(), message);
     }},
    {"pm_get_port_info_brief", true, "", "", 23, "pm_send_get_port_info_brief",
     [](auto queue, auto *message) {
         return pm_get_port_info_brief(queue, 0, 0, 0, 0, 0, 1, one_range.data(), message);
     }},
    {"pm_send_get_port_info_range", false, "pm_send_get_port_info_range: Invalid MTS queue handle\n",
     "pm_send_get_port_info_range: Error with MTS send\n", 23, "pm_send_get_port_info",
     [](auto queue, auto *message) { return pm_send_get_port_info_range(queue, port, port + 1, message); }},
    {"pm_get_port_info_range", true, "pm_get_port_info_range: Invalid param\n",
     "pm_send_get_port_info_range: Error with MTS send\n", 23, "pm_send_get_port_info",
     [](auto queue, auto *message) { return pm_get_port_info_range(queue, port, port + 1, message); }},
    {"pm_send_get_next_port_info", false, "", "", 0, "",
     [](auto queue, auto *message) { return pm_send_get_next_port_info(queue, port, message); }},
    {"pm_get_next_port_info", true, "", "", 0, "",
     [](auto queue, auto *message) { return pm_get_next_port_info(queue, port, message); }},
};

class request : public support::library_test, public testing::WithParamInterface<request_case> {
  protected:
    uint32_t make() { return GetParam().function(handle, &message); }

    [[nodiscard]] std::string as_reported() const { return std::string("port_info_request.cc: ") + GetParam().name; }

    void expect_refusal(uint32_t status) {
        EXPECT_EQ(status, PM_ERR_INVALID_PARAM);
        EXPECT_THAT(support::call_log::take(), IsEmpty());
        EXPECT_EQ(output.take(), GetParam().printed_refusal);
        EXPECT_THAT(assertions.take(), ElementsAre(as_reported()));
    }

    mts_msg_t message{};
};

using blocking_request = request;
using send_only_request = request;

std::vector<request_case> chosen(bool is_blocking) {
    std::vector<request_case> some;
    for (const request_case &each : requests) {
        if (each.is_blocking == is_blocking) some.push_back(each);
    }
    return some;
}

TEST_P(request, without_a_handle_is_refused_and_reported) { expect_refusal(GetParam().function(0, &message)); }

TEST_P(request, without_a_log_folder_is_refused_all_the_same) {
    assertions.set(support::fake_assertion_log::scenario::missing_folder);
    EXPECT_EQ(GetParam().function(0, &message), PM_ERR_INVALID_PARAM);
    EXPECT_EQ(output.take(), GetParam().printed_refusal);
    EXPECT_THAT(support::call_log::take(), IsEmpty());
}

TEST_P(request, frees_its_payload_and_returns_the_error_of_a_failed_send) {
    transport.will_send(-1, 113);
    EXPECT_EQ(make(), 113U);
    EXPECT_EQ(output.take(), GetParam().printed_send_failure);
    calls log = support::call_log::take();
    EXPECT_EQ(log.back(), asked_error);
    if (GetParam().payload_size == 0) return;
    log.pop_back();
    EXPECT_EQ(log.back(), "free(23)");
    EXPECT_EQ(log.front(), "malloc(23)");
}

TEST_P(request, passes_another_result_of_a_send_on) {
    transport.will_send(5);
    EXPECT_EQ(make(), 5U);
    EXPECT_THAT(support::call_log::take(), testing::Not(testing::Contains(asked_error)));
    transport.drop(transport.latest());
}

TEST_P(request, sends_nothing_without_memory) {
    if (GetParam().payload_size == 0) {
        transport.will_send(-1, 1);
        heap.fail_allocation(1);
        EXPECT_EQ(make(), 1U);
        EXPECT_THAT(support::call_log::take(), testing::Contains(testing::StartsWith("mts_send")));
        return;
    }
    heap.fail_allocation(1);
    EXPECT_EQ(make(), 1U);
    EXPECT_THAT(support::call_log::take(), ElementsAre("malloc(23) fails"));
    EXPECT_THAT(output.take(),
                MatchesRegex("\\(Error\\) Malloc Failure in infra/port_manager/lib/pm_api_common/port_info_request\\.cc"
                             "\\[[1-9][0-9]*\\] for size 23\n" +
                             std::string(GetParam().allocating_function) + ": malloc failure, size\\(23\\)\n"));
}

INSTANTIATE_TEST_SUITE_P(functions, request, testing::ValuesIn(requests),
                         [](const auto &each) { return std::string(each.param.name); });

TEST_P(send_only_request, leaves_its_request_to_the_caller) {
    transport.will_send();
    EXPECT_EQ(make(), 0U);
    EXPECT_EQ(mts_rr_token_get(&message), support::fake_transport::first_token);
    transport.drop(message);
}

TEST_P(send_only_request, frees_its_payload_right_after_the_send) {
    transport.will_send();
    make();
    const calls log = support::call_log::take();
    if (GetParam().payload_size != 0) {
        EXPECT_EQ(log.back(), "free(23)");
        EXPECT_TRUE(log.at(log.size() - 2).starts_with("mts_send")) << log.at(log.size() - 2);
    } else {
        EXPECT_TRUE(log.back().starts_with("mts_send")) << log.back();
    }
    transport.drop(message);
}

INSTANTIATE_TEST_SUITE_P(functions, send_only_request, testing::ValuesIn(chosen(false)),
                         [](const auto &each) { return std::string(each.param.name); });

TEST_P(blocking_request, without_a_response_is_refused_and_reported) {
    expect_refusal(GetParam().function(handle, nullptr));
}

TEST_P(blocking_request, without_handle_and_response_is_reported_once) {
    expect_refusal(GetParam().function(0, nullptr));
}

TEST_P(blocking_request, receives_the_answer_to_its_request_and_drops_the_request) {
    transport.will_send();
    transport.will_receive();
    transport.will_drop();
    EXPECT_EQ(make(), 0U);
    const calls log = support::call_log::take();
    EXPECT_EQ(calls(log.end() - 3, log.end()), (calls{asked_token, received, dropped}));
    transport.drop(message);
}

TEST_P(blocking_request, receives_nothing_after_a_failed_send) {
    transport.will_send(-1, 113);
    EXPECT_EQ(make(), 113U);
    output.take();
}

TEST_P(blocking_request, returns_the_error_of_a_failed_receive) {
    transport.will_send();
    transport.will_receive(-1, 110);
    transport.will_drop();
    EXPECT_EQ(make(), 110U);
    const calls log = support::call_log::take();
    EXPECT_EQ(calls(log.end() - 4, log.end()), (calls{asked_token, received, asked_error, dropped}));
}

TEST_P(blocking_request, returns_the_error_of_a_failed_drop_after_a_good_receive) {
    transport.will_send();
    transport.will_receive();
    transport.will_drop(-1, 9);
    EXPECT_EQ(make(), 9U);
    const calls log = support::call_log::take();
    EXPECT_EQ(calls(log.end() - 3, log.end()), (calls{received, dropped, asked_error}));
    transport.drop(message);
}

TEST_P(blocking_request, returns_the_error_of_the_drop_when_both_fail) {
    transport.will_send();
    transport.will_receive(-1, 110);
    transport.will_drop(-1, 9);
    EXPECT_EQ(make(), 9U);
    const calls log = support::call_log::take();
    EXPECT_EQ(calls(log.end() - 4, log.end()), (calls{received, asked_error, dropped, asked_error}));
}

TEST_P(blocking_request, receives_once_even_when_it_is_interrupted) {
    transport.will_send();
    transport.will_receive(-1, 4);
    transport.will_drop();
    EXPECT_EQ(make(), 4U);
}

TEST_P(blocking_request, takes_any_result_but_minus_1_for_a_success) {
    transport.will_send();
    transport.will_receive(3);
    transport.will_drop(2);
    EXPECT_EQ(make(), 0U);
    transport.drop(message);
}

INSTANTIATE_TEST_SUITE_P(functions, blocking_request, testing::ValuesIn(chosen(true)),
                         [](const auto &each) { return std::string(each.param.name); });

}  // namespace
