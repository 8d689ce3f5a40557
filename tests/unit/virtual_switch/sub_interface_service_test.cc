// SPDX-License-Identifier: Apache-2.0
#include "services/sub_interface_service.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>

#include "config_requests.h"
#include "fake_outlets.h"
#include "names.h"
#include "port_mgr/config_attribute.h"
#include "port_mgr/opcodes.h"
#include "port_mgr/status.h"
#include "port_mgr/sub_interface_config.h"

namespace {

using testing::ElementsAre;
using virtual_switch::configuration;
using virtual_switch::switch_state;

constexpr uint32_t to_create = PM_SUB_INTF_CREATE;
constexpr uint32_t to_delete = PM_SUB_INTF_DELETE;
constexpr uint32_t to_replace = PM_SUB_INTF_REPLACE;

mts_reply ask(switch_state &state, const bytes &payload, uint32_t sap = 175) {
    return ask_service(state, sap, CMI_OPC_PM_CONFIG_SUB_INTF, payload);
}

std::vector<std::string> sub_interfaces(const switch_state &state) {
    std::vector<std::string> names;
    for (const auto &[if_index, at] : state.model().ports)
        if (at.kind == virtual_switch::port_kind::sub_interface) names.push_back(virtual_switch::name_of(if_index));
    return names;
}

std::vector<uint32_t> numbers_from(uint32_t first, uint32_t last) {
    std::vector<uint32_t> numbers(last - first + 1);
    std::iota(numbers.begin(), numbers.end(), first);
    return numbers;
}

TEST(sub_interface_service, answers_a_word_and_the_status) {
    switch_state state = state_of(every_kind);
    EXPECT_THAT(*ask(state, sub_interface_request(to_create, {{"Ethernet2/2", {2}}})).payload,
                ElementsAre(0, 0, 0, 0, 0, 0, 0, 0));
    EXPECT_THAT(*ask(state, {}).payload, ElementsAre(0, 0, 0, 0, 0x40, 0x29, 0, 3));
}

TEST(sub_interface_service, creates) {
    switch_state state = state_of(every_kind);
    EXPECT_EQ(configure_sub_interfaces(
                  state, to_create,
                  {{"Ethernet2/2", {2, 4093}}, {"port-channel2", {9}}, {"if26-5/1", {3}}, {"Ethernet2/2", {2, 7}}}),
              0u);
    EXPECT_THAT(sub_interfaces(state),
                ElementsAre("Ethernet2/1.5", "Ethernet2/1.6", "Ethernet2/2.2", "Ethernet2/2.7", "Ethernet2/2.4093",
                            "port-channel2.7", "port-channel2.9", "if26-5/1.3"));
    EXPECT_EQ(info_of(state, "Ethernet2/2.2").oper_speed, 10000u);
    EXPECT_EQ(info_of(state, "port-channel2.9").bandwidth, 20000000u);
    EXPECT_EQ(info_of(state, "Ethernet2/2.2").mtu, 1500u);
}

TEST(sub_interface_service, leaves_what_exists) {
    switch_state state = state_of(std::string(every_kind) + "[[ports]]\nname = 'Ethernet2/1.5'\nmtu = 9000\n");
    EXPECT_EQ(configure_sub_interfaces(state, to_create, {{"Ethernet2/1", {5, 7}}}), 0u);
    EXPECT_EQ(info_of(state, "Ethernet2/1.5").mtu, 9000u);
    EXPECT_THAT(state.changes().created, ElementsAre(index_of("Ethernet2/1.7")));
}

TEST(sub_interface_service, deletes_what_exists) {
    switch_state state = state_of(every_kind);
    ASSERT_EQ(configure_sub_interfaces(state, to_create, {{"Ethernet2/2", {2}}}), 0u);
    EXPECT_EQ(configure_sub_interfaces(state, to_delete, {{"Ethernet2/1", {6, 1000}}, {"Ethernet2/2", {2}}}), 0u);
    EXPECT_THAT(sub_interfaces(state), ElementsAre("Ethernet2/1.5", "port-channel2.7"));
    EXPECT_TRUE(state.changes().created.empty());
    const configuration before = state.changes();
    EXPECT_EQ(configure_sub_interfaces(state, to_delete, {{"Ethernet2/1", {6}}, {"Ethernet2/2", {0, 4095}}}),
              PM_ERR_INVALID_RANGE);
    EXPECT_EQ(state.changes(), before);
}

TEST(sub_interface_service, deletes_when_one_of_several_interfaces_has_something) {
    switch_state state = state_of(every_kind);
    EXPECT_EQ(configure_sub_interfaces(state, to_delete, {{"Ethernet2/1", {5, 6}}, {"Ethernet2/2", {5}}}), 0u);
    EXPECT_THAT(sub_interfaces(state), ElementsAre("port-channel2.7"));
}

TEST(sub_interface_service, starts_anew_after_a_deletion) {
    switch_state state = state_of(std::string(every_kind) + "[[ports]]\nname = 'Ethernet2/1.5'\nmtu = 9000\n");
    ASSERT_EQ(set(state, "Ethernet2/1.5", text_element(PM_ATTR_DESCRIPTION, "gone")), 0u);
    ASSERT_EQ(configure_sub_interfaces(state, to_delete, {{"Ethernet2/1", {5}}}), 0u);
    EXPECT_FALSE(exists(state, "Ethernet2/1.5"));
    ASSERT_EQ(configure_sub_interfaces(state, to_create, {{"Ethernet2/1", {5}}}), 0u);
    EXPECT_EQ(info_of(state, "Ethernet2/1.5").mtu, 1500u);
    EXPECT_STREQ(info_of(state, "Ethernet2/1.5").description, "");
}

TEST(sub_interface_service, replaces_those_of_the_interfaces_named) {
    switch_state state = state_of(every_kind);
    EXPECT_EQ(configure_sub_interfaces(state, to_replace, {{"Ethernet2/1", {6, 8}}}), 0u);
    EXPECT_THAT(sub_interfaces(state), ElementsAre("Ethernet2/1.6", "Ethernet2/1.8", "port-channel2.7"));
    EXPECT_EQ(configure_sub_interfaces(state, to_replace, {{"Ethernet2/1", {}}}), 0u);
    EXPECT_THAT(sub_interfaces(state), ElementsAre("port-channel2.7"));
}

TEST(sub_interface_service, is_all_or_nothing) {
    switch_state state = state_of(every_kind);
    const struct {
        uint32_t operation;
        numbers_of bad;
        uint32_t status;
    } cases[] = {{to_create, {"Ethernet2/2", {0}}, PM_ERR_INVALID_PARAM},
                 {to_create, {"Ethernet2/2", {1}}, PM_ERR_INVALID_PARAM},
                 {to_create, {"Ethernet2/2", {4094}}, PM_ERR_INVALID_PARAM},
                 {to_create, {"Ethernet2/2", {4095}}, PM_ERR_INVALID_PARAM},
                 {to_replace, {"Ethernet2/2", {4095}}, PM_ERR_INVALID_PARAM},
                 {to_create, {"Ethernet2/9", {2}}, PM_ERR_INVALID_RANGE},
                 {to_create, {"Ethernet2/2.2", {2}}, PM_ERR_INVALID_RANGE},
                 {to_create, {"port-channel1", {2}}, PM_ERR_INVALID_RANGE},
                 {to_create, {"port-channel9", {2}}, PM_ERR_INVALID_RANGE},
                 {to_create, {"if22-4", {2}}, PM_ERR_INVALID_RANGE},
                 {to_create, {"fc1/1", {2}}, PM_ERR_INVALID_RANGE},
                 {to_create, {"mgmt0", {2}}, PM_ERR_INVALID_RANGE},
                 {to_delete, {"Ethernet2/9", {2}}, PM_ERR_INVALID_RANGE},
                 {to_replace, {"fcip1", {2}}, PM_ERR_INVALID_RANGE}};
    for (const auto &[operation, bad, status] : cases) {
        EXPECT_EQ(configure_sub_interfaces(state, operation, {{"Ethernet2/1", {5, 9}}, bad}), status) << bad.main;
        EXPECT_EQ(state.changes(), configuration{}) << bad.main;
    }
}

TEST(sub_interface_service, refuses_malformed_requests) {
    const bytes good = sub_interface_request(to_create, {{"Ethernet2/2", {2}}, {"Ethernet2/3", {2}}});
    switch_state state = state_of(every_kind);
    const auto refuses = [&](const bytes &payload) {
        return ask(state, payload).word(4) == PM_ERR_INVALID_PARAM && state.changes() == configuration{};
    };
    const auto with = [&](size_t offset, uint8_t value) {
        bytes changed = good;
        changed.at(offset) = value;
        return changed;
    };
    for (size_t size = 0; size < good.size(); ++size)
        EXPECT_TRUE(refuses({good.begin(), good.begin() + static_cast<ptrdiff_t>(size)})) << size;
    bytes longer = good;
    longer.push_back(0);
    EXPECT_TRUE(refuses(longer));
    EXPECT_TRUE(refuses(sub_interface_request(to_create, {})));
    EXPECT_TRUE(refuses(sub_interface_request(0, {{"Ethernet2/2", {2}}})));
    EXPECT_TRUE(refuses(sub_interface_request(4, {{"Ethernet2/2", {2}}})));
    EXPECT_TRUE(refuses(with(11, 1)));
    EXPECT_TRUE(refuses(with(11, 3)));
    EXPECT_TRUE(refuses(with(8, 0xff)));
    // 536 times this many wraps round to the size of two in 32 bits.
    EXPECT_TRUE(refuses(with(8, 0x20)));
    EXPECT_TRUE(refuses(with(12 + 536 + 20, 1)));
    EXPECT_TRUE(refuses(with(12 + 20 + 1, 1)));
}

TEST(sub_interface_service, is_on_the_sap_of_ethernet_channels) {
    switch_state state = state_of(every_kind);
    const bytes request = sub_interface_request(to_create, {{"Ethernet2/2", {2}}});
    for (const uint32_t sap : {43u, 45u, 179u}) EXPECT_EQ(ask(state, request, sap).word(4), PM_ERR_REJECTED) << sap;
    EXPECT_FALSE(exists(state, "Ethernet2/2.2"));
}

TEST(sub_interface_service, has_a_limit) {
    switch_state state = state_of(every_kind);
    const std::vector<uint32_t> all = numbers_from(2, 4093);
    EXPECT_EQ(
        configure_sub_interfaces(state, to_create,
                                 {{"Ethernet2/2", all}, {"Ethernet2/3", all}, {"Ethernet2/4", all}, {"if26-5/1", all}}),
        0u);
    const configuration before = state.changes();
    EXPECT_EQ(before.created.size(), 4u * 4092);
    EXPECT_EQ(configure_sub_interfaces(state, to_create, {{"Ethernet2/1", numbers_from(100, 116)}}), PM_ERR_REJECTED);
    EXPECT_EQ(state.changes(), before);
    EXPECT_EQ(configure_sub_interfaces(state, to_create, {{"Ethernet2/1", numbers_from(100, 115)}}), 0u);
    const bytes all_ports{1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(ask_service(state, 43, MTS_OPC_PM_GET_PORT_INFO, all_ports).word(4), state.model().ports.size());
}

TEST(sub_interface_service, fails_when_nothing_can_be_kept) {
    switch_state state(virtual_switch::parse_chassis(every_kind), {},
                       {[](const auto &) {}, [](const auto &) { throw std::runtime_error("the disk is full"); }});
    testing::internal::CaptureStderr();
    EXPECT_EQ(configure_sub_interfaces(state, to_create, {{"Ethernet2/2", {2}}}), PM_ERR_FAILURE);
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
    EXPECT_FALSE(exists(state, "Ethernet2/2.2"));
}

}  // namespace
