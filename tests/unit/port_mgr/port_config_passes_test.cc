// SPDX-License-Identifier: Apache-2.0
// Sets that the Ethernet channel service takes before the owner of the interface, and what comes of each exchange.
#include "port_config_route_fixture.h"

namespace {

using support::payload;
using testing::ElementsAre;
using unit::answer;
using unit::blocks_and_exchanges;
using unit::refusal;
using unit::set_answer;
using unit::set_route_test;

// ---- the first of two exchanges alone

class first_pass : public set_route_test {
  protected:
    first_pass() { describe({4, 10, false, false}, 10); }

    void expect_one_pass() { EXPECT_THAT(exchanges(), ElementsAre(sent_to(175, 4))); }
};

TEST_F(first_pass, sends_the_copy_and_frees_it_before_the_request) {
    transport.will_answer_query(0, set_answer(0, {index}));
    EXPECT_EQ(set(arguments(4)), 0U);
    EXPECT_THAT(blocks_and_exchanges(support::call_log::take()),
                ElementsAre("malloc(121)", "malloc(121)", sent_to(175, 4), "malloc(8)", "free(answer)", "free(121)",
                            "free(121)"));
    expect_entries({index});
}

TEST_F(first_pass, passes_its_status_on) {
    transport.will_answer_query(0, set_answer(PM_ERR_REJECTED, {index}));
    EXPECT_EQ(set(arguments(4)), PM_ERR_REJECTED);
    expect_one_pass();
    expect_entries({index});
}

TEST_F(first_pass, passes_a_failed_exchange_on) {
    transport.will_answer_query(113, {});
    EXPECT_EQ(set(arguments(4)), 113U);
    expect_one_pass();
    expect_no_entries();
}

TEST_F(first_pass, frees_the_answer_of_a_failed_exchange_unread) {
    transport.will_answer_query(113, set_answer(0, {index}));
    EXPECT_EQ(set(arguments(4)), 113U);
    expect_one_pass();
    EXPECT_EQ(heap.live_blocks(), 0);
    expect_no_entries();
}

TEST_F(first_pass, refuses_an_answer_that_is_empty_or_malformed) {
    transport.will_answer_query(0, {});
    EXPECT_EQ(set(arguments(4)), PM_ERR_NO_PAYLOAD);
    transport.will_answer_query(0, answer(0, 1).fill(7, 0));
    EXPECT_EQ(set(arguments(4)), PM_ERR_INVALID_PARAM);
    transport.will_answer_query(0, answer(9, 1).fill(7, 0));
    EXPECT_EQ(set(arguments(4)), 9U);
    transport.will_answer_query(0, payload().be32(9));
    EXPECT_EQ(set(arguments(4)), 9U);
    expect_no_entries();
    EXPECT_EQ(heap.live_blocks(), 0);
}

TEST_F(first_pass, without_memory_for_its_entries_frees_everything) {
    heap.fail_allocation(3);
    transport.will_answer_query(0, set_answer(0, {index}));
    EXPECT_EQ(set(arguments(4)), 1U);
    EXPECT_THAT(output.take(), testing::MatchesRegex(unit::report_start + std::string("8\n")));
    EXPECT_EQ(out.count, 1U);
    EXPECT_EQ(out.records, nullptr);
}

TEST_F(first_pass, of_what_is_refused_afterwards_leaves_its_entries) {
    for (const uint32_t attribute : {2U, 4U, 44U}) {
        describe({4, 11, true, false}, 11);
        transport.will_answer_query(0, set_answer(5, {index, 8}));
        EXPECT_EQ(set(arguments(attribute)), PM_ERR_FAILURE);
        EXPECT_EQ(output.take(), refusal);
        EXPECT_THAT(exchanges(), ElementsAre(sent_to(175, attribute)));
        expect_entries({index, 8});
        release();
    }
}

TEST_F(first_pass, without_memory_for_its_copy_is_not_made) {
    heap.fail_allocation(2);
    EXPECT_EQ(set(arguments(4)), 1U);
    EXPECT_THAT(exchanges(), testing::IsEmpty());
    output.take();
}

// ---- a chassis type that changes while a set is under way

class changing_chassis : public set_route_test {
  protected:
    changing_chassis() { describe({4, 1, false, false}, 1); }

    // For a channel the type is looked at twice before the first exchange, once for its owner, and once behind that.
    void chassis_is(const std::vector<uint32_t> &types) {
        for (const uint32_t type : types) interfaces.chassis_looks.push_back({0, type});
    }

    // From here on, the Ethernet channel service no longer owns the channel when the request itself is to be sent.
    void chassis_changes_after_the_first_pass() { chassis_is({10, 10, 1, 1}); }

    void expect_two_passes() { EXPECT_THAT(exchanges(), ElementsAre(sent_to(175, 4), sent_to(43, 4))); }
};

TEST_F(changing_chassis, makes_two_exchanges_and_frees_the_entries_of_the_first) {
    chassis_changes_after_the_first_pass();
    transport.will_answer_query(0, set_answer(5, {index, 8}));
    transport.will_answer_query(0, set_answer(0, {9}));
    EXPECT_EQ(set(arguments(4)), 0U);
    EXPECT_THAT(blocks_and_exchanges(support::call_log::take()),
                ElementsAre("malloc(121)", "malloc(121)", sent_to(175, 4), "malloc(16)", "free(answer)", "free(121)",
                            "free(16)", sent_to(43, 4), "malloc(8)", "free(answer)", "free(121)"));
    expect_entries({9});
}

TEST_F(changing_chassis, sends_a_block_of_its_own_each_time) {
    chassis_changes_after_the_first_pass();
    transport.will_answer_query(0, set_answer(0, {}));
    transport.will_answer_query(0, set_answer(0, {}));
    EXPECT_EQ(set(arguments(4)), 0U);
    ASSERT_EQ(transport.query_places().size(), 2U);
    EXPECT_NE(transport.query_places()[0], transport.query_places()[1]);
}

TEST_F(changing_chassis, has_the_status_of_the_second_exchange) {
    chassis_changes_after_the_first_pass();
    transport.will_answer_query(0, set_answer(0, {index, 8}));
    transport.will_answer_query(0, set_answer(6, {9}));
    EXPECT_EQ(set(arguments(4)), 6U);
    expect_two_passes();
    expect_entries({9});
}

TEST_F(changing_chassis, makes_the_second_exchange_also_when_the_first_failed) {
    chassis_changes_after_the_first_pass();
    transport.will_answer_query(113, {});
    transport.will_answer_query(0, set_answer(0, {9}));
    EXPECT_EQ(set(arguments(4)), 0U);
    expect_two_passes();
    expect_entries({9});
}

TEST_F(changing_chassis, returns_the_failure_of_the_second_exchange_when_both_failed) {
    chassis_changes_after_the_first_pass();
    transport.will_answer_query(113, {});
    transport.will_answer_query(110, {});
    EXPECT_EQ(set(arguments(4)), 110U);
    expect_two_passes();
    expect_no_entries();
}

TEST_F(changing_chassis, leaves_a_dead_array_behind_when_only_the_second_exchange_fails) {
    chassis_changes_after_the_first_pass();
    transport.will_answer_query(0, set_answer(0, {index, 8}));
    transport.will_answer_query(110, {});
    EXPECT_EQ(set(arguments(4)), 110U);
    expect_two_passes();
    EXPECT_EQ(out.count, 2U);
    EXPECT_NE(out.records, nullptr);
    EXPECT_FALSE(heap.is_live(out.records));
    EXPECT_EQ(heap.live_blocks(), 0);
    out = {};
}

TEST_F(changing_chassis, leaves_no_dead_array_behind_when_the_second_answer_is_empty_or_malformed) {
    const std::pair<std::optional<support::bytes>, uint32_t> answers[] = {
        {std::nullopt, PM_ERR_NO_PAYLOAD},
        {answer(0, 1).fill(7, 0), PM_ERR_INVALID_PARAM},
        {answer(9, 1).fill(7, 0), 9U},
        {support::bytes(3, 0), PM_ERR_INVALID_PARAM}};
    for (const auto &[content, status] : answers) {
        chassis_changes_after_the_first_pass();
        transport.will_answer_query(0, set_answer(0, {index, 8}));
        transport.will_answer_query(0, content);
        EXPECT_EQ(set(arguments(4)), status);
        expect_two_passes();
        EXPECT_EQ(out.records, nullptr) << status;
        EXPECT_EQ(heap.live_blocks(), 0);
        out = {};
    }
}

TEST_F(changing_chassis, makes_one_exchange_when_both_would_be_with_the_same_service) {
    chassis_is({10, 10, 1, 1});
    transport.will_answer_query(0, set_answer(5, {index}));
    EXPECT_EQ(set(arguments(17)), 5U);
    EXPECT_THAT(exchanges(), ElementsAre(sent_to(175, 17)));
    expect_entries({index});
}

TEST_F(changing_chassis, makes_one_exchange_for_attributes_of_ethernet_channels) {
    for (const uint32_t attribute : {51U, 52U}) {
        chassis_is({10, 10, 1, 1});
        transport.will_answer_query(0, set_answer(5, {index}));
        EXPECT_EQ(set(arguments(attribute)), 5U);
        EXPECT_THAT(exchanges(), ElementsAre(sent_to(175, attribute)));
        expect_entries({index});
        release();
    }
}

TEST_F(changing_chassis, makes_no_first_exchange_when_the_second_look_shows_types_4_or_5) {
    for (const uint32_t type : {4U, 5U}) {
        chassis_is({10, type, 1, 1});
        EXPECT_EQ(set_answered(arguments(4)), 0U);
        EXPECT_THAT(exchanges(), ElementsAre(sent_to(43, 4)));
        release();
        chassis_is({11, type, 1, 11});
        EXPECT_EQ(set(arguments(4)), 0U);
        EXPECT_THAT(exchanges(), testing::IsEmpty());
        expect_no_entries();
    }
}

TEST_F(changing_chassis, makes_no_exchange_when_only_the_last_look_shows_types_10_or_11) {
    // Without the first exchange there is no second look before the owner's.
    for (const uint32_t type : {10U, 11U}) {
        chassis_is({1, 1, type});
        EXPECT_EQ(set(arguments(4)), 0U);
        EXPECT_THAT(exchanges(), testing::IsEmpty());
        expect_no_entries();
    }
}

// An interface of type 26 goes to another service than the first one's when its type is lost on the way.
class changing_type : public set_route_test {
  protected:
    changing_type() {
        index = 0x1a001000;
        describe({26, 1, false, false}, 1);
        interfaces.type_looks = {{0, 26}, {-1, std::nullopt}};
    }
};

TEST_F(changing_type, makes_two_exchanges) {
    transport.will_answer_query(0, set_answer(5, {index, 8}));
    transport.will_answer_query(0, set_answer(6, {9}));
    EXPECT_EQ(set(arguments(3)), 6U);
    EXPECT_THAT(exchanges(), ElementsAre(sent_to(175, 3), sent_to(43, 3)));
    EXPECT_EQ(output.take(), "pm_get_mts_sap: if_index_get_type failed\n");
    expect_entries({9});
}

TEST_F(changing_type, makes_one_exchange_on_chassis_of_types_10_and_11) {
    interfaces.chassis_type = 11;
    transport.will_answer_query(0, set_answer(5, {index, 8}));
    EXPECT_EQ(set(arguments(3)), 5U);
    EXPECT_THAT(exchanges(), ElementsAre(sent_to(175, 3)));
    EXPECT_EQ(output.take(), "pm_get_mts_sap: if_index_get_type failed\n");
    expect_entries({index, 8});
}

TEST_F(set_route_test, of_type_5_stays_with_its_service_when_the_type_is_lost_on_the_way) {
    index = 0x05000000;
    interfaces.type_looks = {{0, 5}, {-1, std::nullopt}};
    EXPECT_EQ(set_answered(arguments(3)), 0U);
    EXPECT_THAT(exchanges(), ElementsAre(sent_to(179, 3)));
    EXPECT_EQ(output.take(), "pm_get_mts_sap: if_index_get_type failed\n");
}

}  // namespace
