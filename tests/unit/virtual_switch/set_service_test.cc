// SPDX-License-Identifier: Apache-2.0
#include "services/set_service.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "chassis/config_attributes.h"
#include "config_requests.h"
#include "fake_outlets.h"
#include "names.h"
#include "port_mgr/config_attribute.h"
#include "port_mgr/opcodes.h"
#include "port_mgr/status.h"
#include "protocol/config_value_kinds.h"
#include "services/answer.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using virtual_switch::switch_state;

const bytes shut = element(PM_ATTR_ADMIN_STATE, 2, 1);
const bytes invalid_param{0x40, 0x29, 0, 3, 0, 0, 0, 0};
const bytes unreadable_element{0x40, 0x29, 0, 4, 0, 0, 0, 0};

mts_reply ask(switch_state &state, const bytes &payload, uint32_t sap = 43) {
    return ask_service(state, sap, CMI_OPC_PM_SET_PORT_CONFIG, payload);
}

TEST(set_service, answers_with_a_result_for_each_interface) {
    switch_state state = state_of(every_kind);
    const mts_reply reply = ask(state, set_request({{"fc1/2", "fc1/9"}, {"fc1/1", "fc1/1"}}, shut));
    EXPECT_THAT(*reply.payload, ElementsAre(0, 0, 0, 0, 0, 0, 0, 3,                                //
                                            1, 0, 0x10, 0, 0, 0, 0, 0, 1, 0, 0x20, 0, 0, 0, 0, 0,  //
                                            1, 0, 0, 0, 0, 0, 0, 0));
    for (const char *name : {"fc1/1", "fc1/2", "fc1/3"}) EXPECT_EQ(info_of(state, name).state_reason, 12) << name;
}

TEST(set_service, does_what_it_can_and_says_what_it_cannot) {
    switch_state state = state_of(every_kind);
    const mts_reply reply = ask(state, set_request({{"fc1/1", "fc1/1"},
                                                    {"fc9/1", "fc9/2"},
                                                    {"mgmt0", "mgmt0"},
                                                    {"fc1/3", "fc1/2"},
                                                    {"fc1/2", "Ethernet2/1"},
                                                    {"fc1/3", "fc1/3"}},
                                                   shut));
    EXPECT_EQ(reply.word(0), PM_ERR_INVALID_RANGE);
    ASSERT_EQ(reply.word(4), 6u);
    const std::pair<const char *, uint32_t> expected[] = {
        {"fc1/1", 0},
        {"fc9/1", PM_ERR_INVALID_RANGE},
        {"mgmt0", PM_ERR_REJECTED},
        {"fc1/3", PM_ERR_INVALID_RANGE},
        {"fc1/2", PM_ERR_INVALID_RANGE},
        {"fc1/3", 0},
    };
    for (size_t i = 0; i < std::size(expected); ++i) {
        EXPECT_EQ(reply.word(8 + 8 * i), index_of(expected[i].first)) << i;
        EXPECT_EQ(reply.word(12 + 8 * i), expected[i].second) << i;
    }
    EXPECT_EQ(info_of(state, "fc1/1").admin_state, 2);
    EXPECT_EQ(info_of(state, "fc1/2").admin_state, 1);
    EXPECT_EQ(info_of(state, "fc1/3").admin_state, 2);
    EXPECT_EQ(info_of(state, "mgmt0").admin_state, 1);
}

TEST(set_service, refuses_what_is_malformed_as_a_whole) {
    const bytes good = set_request({{"fc1/1", "fc1/1"}, {"fc1/2", "fc1/2"}}, shut);
    for (size_t size = 0; size < good.size(); ++size) {
        switch_state state = state_of(every_kind);
        EXPECT_EQ(*ask(state, {good.begin(), good.begin() + static_cast<ptrdiff_t>(size)}).payload, invalid_param);
        EXPECT_EQ(state.changes(), virtual_switch::configuration{});
    }
    switch_state state = state_of(every_kind);
    bytes longer = good;
    longer.push_back(0);
    EXPECT_EQ(*ask(state, longer).payload, invalid_param);
    EXPECT_EQ(*ask(state, set_request({}, shut)).payload, invalid_param);
    bytes most_ranges = good;
    most_ranges[100] = most_ranges[101] = 0xff;
    EXPECT_EQ(*ask(state, most_ranges).payload, invalid_param);
    EXPECT_EQ(state.changes(), virtual_switch::configuration{});
}

TEST(set_service, refuses_elements_that_it_cannot_read) {
    switch_state state = state_of(every_kind);
    for (const bytes &unreadable :
         {element(0, 1, 1), element(10, 1, 4), element(86, 1, 4), element(255, 1, 1),
          element(PM_ATTR_ADMIN_STATE, 1, 0), element(PM_ATTR_ADMIN_STATE, 1, 2), element(PM_ATTR_MTU, 1500, 2),
          element(PM_ATTR_DESCRIPTION, 0, 80), element(PM_ATTR_DESCRIPTION, 0, 82)})
        EXPECT_EQ(*ask(state, set_request({{"fc1/1", "fc1/1"}}, unreadable)).payload, unreadable_element)
            << int{unreadable[0]};
    EXPECT_EQ(state.changes(), virtual_switch::configuration{});
}

TEST(set_service, rejects_attributes_that_are_not_implemented) {
    switch_state state = state_of(every_kind);
    for (uint8_t attribute = 0; attribute < 90; ++attribute) {
        const pm::value_kind kind = pm::written_kind(attribute);
        if (kind == pm::value_kind::none || virtual_switch::find_attribute(attribute) != nullptr) continue;
        EXPECT_EQ(set(state, "fc1/1", element(attribute, 1, pm::width_of(kind))), PM_ERR_REJECTED) << int{attribute};
    }
    EXPECT_EQ(state.changes(), virtual_switch::configuration{});
}

TEST(set_service, sets_what_its_sap_owns) {
    const struct {
        const char *name;
        std::vector<uint32_t> saps;
    } cases[] = {{"fc1/1", {43}},
                 {"Ethernet2/1", {45}},
                 {"Ethernet2/1.5", {45}},
                 {"if13-3/1", {43}},
                 {"if11-4/1", {43}},
                 {"if26-5/1", {175}},
                 {"mgmt0", {179}},
                 {"loopback1", {175}},
                 {"if254-1", {43}},
                 {"fcip1", {43}},
                 {"port-channel1", {43, 175}},
                 {"port-channel2", {43, 175}},
                 {"if22-4", {43, 175}},
                 {"port-channel2.7", {43, 175}}};
    for (const auto &[name, saps] : cases) {
        for (const uint32_t sap : {43u, 45u, 175u, 179u}) {
            switch_state state = state_of(every_kind);
            const bool owned = std::find(saps.begin(), saps.end(), sap) != saps.end();
            EXPECT_EQ(ask(state, set_request({{name, name}}, shut), sap).word(12), owned ? 0 : PM_ERR_REJECTED)
                << name << " " << sap;
            EXPECT_EQ(info_of(state, name).admin_state, owned ? 2 : 1) << name << " " << sap;
        }
    }
}

TEST(set_service, refuses_more_results_than_an_answer_holds) {
    switch_state state = state_of(every_kind);
    EXPECT_EQ(configure_sub_interfaces(state, 3,
                                       {{"Ethernet2/1",
                                         [] {
                                             std::vector<uint32_t> numbers;
                                             for (uint32_t i = 2; i < 4094; ++i) numbers.push_back(i);
                                             return numbers;
                                         }()}}),
              0u);
    const size_t interfaces = 4093 + 3;  // Ethernet2/1 to 4
    const std::vector<named_range> too_many(virtual_switch::most_set_results / interfaces + 1,
                                            {"Ethernet2/1", "Ethernet2/4"});
    const mts_reply reply = ask(state, set_request(too_many, shut), 45);
    EXPECT_EQ(reply.word(0), PM_ERR_FAILURE);
    EXPECT_EQ(reply.payload->size(), 8u);
    EXPECT_EQ(info_of(state, "Ethernet2/2").admin_state, 1);
}

TEST(set_service, fails_for_what_it_would_set_when_nothing_can_be_kept) {
    switch_state state(virtual_switch::parse_chassis(every_kind), {},
                       {[](const auto &) {}, [](const auto &) { throw std::runtime_error("the disk is full"); }});
    testing::internal::CaptureStderr();
    const mts_reply reply = ask(state, set_request({{"fc1/1", "fc1/2"}, {"fc9/1", "fc9/1"}}, shut));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "pm-virtual-switch: not configured: the disk is full\n");
    EXPECT_EQ(reply.word(0), PM_ERR_FAILURE);
    ASSERT_EQ(reply.word(4), 3u);
    EXPECT_EQ(reply.word(12), PM_ERR_FAILURE);
    EXPECT_EQ(reply.word(20), PM_ERR_FAILURE);
    EXPECT_EQ(reply.word(28), PM_ERR_INVALID_RANGE);
    EXPECT_EQ(info_of(state, "fc1/1").admin_state, 1);
}

}  // namespace
