// SPDX-License-Identifier: Apache-2.0
// Which services a set of an attribute is sent to.
#include "port_config_route_fixture.h"

namespace {

using testing::ElementsAre;
using testing::Not;
using testing::StartsWith;
using unit::blocks_and_exchanges;
using unit::calls;
using unit::refusal;
using unit::set_answer;
using unit::set_route_test;
using unit::set_target;
using unit::unreadable;
using unit::unreadable_10;

constexpr uint32_t without_type = 256;

// ---- every interface type, chassis type and attribute

class every_route : public set_route_test, public testing::WithParamInterface<uint32_t> {
  protected:
    every_route() {
        // The encoder's reports are another test's.
        assertions.set(support::fake_assertion_log::scenario::missing_folder);
        if (GetParam() == without_type) {
            index = 0x02345678;
            interfaces.without_type = {index};
        } else {
            index = GetParam() << 24 | 0x345678;
        }
    }

    void TearDown() override {
        assertions.take_calls();
        set_route_test::TearDown();
    }

    // What is printed about an attribute is collected here.
    std::string expected_output;

    void expect_route(const set_target &target, uint32_t attribute) {
        const unit::set_route route = unit::expected_route(target, attribute);
        calls expected;
        for (const uint32_t sap : route.services) {
            transport.will_answer_query(0, set_answer(sap, {index, sap}));
            expected.push_back(sent_to(sap, attribute));
        }
        if (GetParam() == without_type) expected_output += "pm_get_mts_sap: if_index_get_type failed\n";
        if (route.is_refused) expected_output += refusal;
        const uint32_t answered = route.services.empty() ? 0 : route.services.back();
        EXPECT_EQ(set(arguments(attribute)), route.is_refused ? PM_ERR_FAILURE : answered);
        EXPECT_EQ(exchanges(), expected);
        if (route.services.empty()) {
            expect_no_entries();
        } else {
            expect_entries({index, answered});
        }
    }

    void expect_nowhere(uint32_t attribute) {
        expected_output += "pm_encode_tlv: Type not handled - " + std::to_string(attribute) +
                           "\npm_cmi_set_port_config: err(1076428804) in pm_encode_tlv\n";
        EXPECT_EQ(set(arguments(attribute)), PM_ERR_TLV);
        EXPECT_EQ(exchanges(), calls{});
        expect_no_entries();
    }

    void expect_routes(const set_target &target) {
        for (uint32_t attribute = 0; attribute < 256 && !HasFailure(); ++attribute) {
            SCOPED_TRACE(testing::Message()
                         << "interface type " << GetParam() << ", chassis " << target.chassis_type << ", attribute "
                         << attribute << (target.is_sub_interface ? ", sub-interface" : "")
                         << (target.is_ethernet ? ", Ethernet" : ""));
            if (unit::is_written(attribute)) {
                expect_route(target, attribute);
            } else {
                expect_nowhere(attribute);
            }
            release();
        }
        if (!HasFailure()) {
            EXPECT_EQ(output.take(), expected_output);
        }
        expected_output.clear();
    }
};

TEST_P(every_route, leads_to_the_services_that_take_the_attribute) {
    for (const uint32_t chassis :
         {0U, 1U, 2U, 3U, 4U, 5U, 6U, 7U, 8U, 9U, 10U, 11U, 12U, 260U, 266U, unreadable, unreadable_10}) {
        for (const bool is_sub_interface : {false, true}) {
            for (const bool is_ethernet : {false, true}) {
                const set_target target{GetParam() % without_type, chassis % unreadable, is_sub_interface, is_ethernet};
                describe(target, chassis);
                expect_routes(target);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(types, every_route,
                         testing::Values(0, 1, 2, 3, 4, 5, 6, 10, 11, 13, 20, 21, 22, 23, 25, 26, 27, 132, 254, 255,
                                         without_type),
                         [](const auto &each) {
                             return each.param == without_type ? "without_type" : "type_" + std::to_string(each.param);
                         });

// ---- a few of them in words

TEST_F(set_route_test, of_trunking_on_a_channel_is_to_the_port_manager_whoever_owns_the_channel) {
    describe({4, 1, false, true}, 1);
    EXPECT_EQ(pm_get_mts_sap(index), 175U);
    EXPECT_EQ(set_answered(arguments(4)), 0U);
    EXPECT_THAT(exchanges(), ElementsAre(sent_to(43, 4)));
}

TEST_F(set_route_test, of_the_mode_of_a_sub_interface_is_refused) {
    index = 0x16001000;
    describe({22, 1, true, false}, 1);
    EXPECT_EQ(set(arguments(2)), PM_ERR_FAILURE);
    EXPECT_EQ(output.take(), refusal);
    EXPECT_THAT(blocks_and_exchanges(support::call_log::take()),
                ElementsAre("malloc(124)", "malloc(124)", "free(124)", "free(124)"));
    EXPECT_EQ(set_answered(arguments(17)), 0U);
    EXPECT_THAT(exchanges(), ElementsAre(sent_to(175, 17)));
}

TEST_F(set_route_test, of_attributes_that_only_ethernet_channels_have_is_nowhere) {
    for (const uint32_t attribute : {51U, 52U}) {
        EXPECT_EQ(set(arguments(attribute)), 0U);
        EXPECT_THAT(support::call_log::take(), Not(testing::Contains(StartsWith("cmi_req_resp"))));
        expect_no_entries();
    }
}

TEST_F(set_route_test, takes_the_first_index_of_the_first_range) {
    const pm_if_index_range_t ranges[] = {{0x05000000, 0x02000000}, {0x02000000, 0x02000000}};
    transport.will_answer_query(0, set_answer(0, {}));
    EXPECT_EQ(pm_cmi_set_port_config(unit::handle, nullptr, nullptr, 2, ranges, 1, 1, "x", &out.count, &out.records, 1),
              0U);
    EXPECT_THAT(exchanges(), ElementsAre(testing::EndsWith(", 179, 0x55667788, 1)")));
}

}  // namespace
