// SPDX-License-Identifier: Apache-2.0
// The listing of a module's interfaces and the configuration of interfaces, as clients ask for them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "config_requests.h"
#include "fake_outlets.h"
#include "names.h"
#include "platform/if_index.h"
#include "port_mgr/config_attribute.h"
#include "port_mgr/opcodes.h"
#include "port_mgr/status.h"
#include "services/port_service.h"

namespace {

using testing::ElementsAre;
using virtual_switch::switch_state;

// The interfaces of an answer with full records.
std::vector<std::string> names_in(const mts_reply &reply) {
    std::vector<std::string> names;
    for (size_t i = 0; i < reply.word(4); ++i) names.push_back(virtual_switch::name_of(reply.word(8 + 189 * i)));
    return names;
}

mts_reply list(uint32_t sap, const bytes &payload) {
    switch_state state = state_of(every_kind);
    return ask_service(state, sap, CMI_OPC_PM_GET_MODULE_INTF_LISTING, payload, 1);
}

TEST(module_listing, has_the_interfaces_of_a_slot_and_type) {
    EXPECT_THAT(names_in(list(43, {1, IF_TYPE_FC})), ElementsAre("fc1/1", "fc1/2", "fc1/3"));
    EXPECT_THAT(names_in(list(45, {2, IF_TYPE_ETHERNET})), ElementsAre("Ethernet2/1", "Ethernet2/1.5", "Ethernet2/1.6",
                                                                       "Ethernet2/2", "Ethernet2/3", "Ethernet2/4"));
    EXPECT_THAT(names_in(list(43, {3, IF_TYPE_ETHERNET_KIND})), ElementsAre("if13-3/1"));
    EXPECT_THAT(names_in(list(43, {3, IF_TYPE_FCIP})), ElementsAre("fcip1"));
    EXPECT_THAT(names_in(list(175, {5, IF_TYPE_ETHERNET_SFP})), ElementsAre("if26-5/1"));
}

TEST(module_listing, is_empty_without_interfaces_of_the_type) {
    for (const auto &[sap, type] : {std::pair<uint32_t, uint8_t>{43, IF_TYPE_SLOT_PORT},
                                    {45, IF_TYPE_ETHERNET},
                                    {43, IF_TYPE_PORT_CHANNEL},
                                    {175, IF_TYPE_PORT_CHANNEL},
                                    {179, IF_TYPE_MGMT},
                                    {43, 99}}) {
        const mts_reply reply = list(sap, {1, type});
        EXPECT_EQ(reply.word(0), 0u) << int{type};
        EXPECT_EQ(reply.word(4), 0u) << int{type};
    }
}

TEST(module_listing, refuses_modules_that_are_not_there) {
    for (const uint8_t module : bytes{0, 6, 7, 255}) {
        const mts_reply reply = list(43, {module, IF_TYPE_FC});
        EXPECT_EQ(reply.payload->size(), 4u);
        EXPECT_EQ(reply.word(0), PM_ERR_INVALID_RANGE) << int{module};
    }
}

TEST(module_listing, refuses_types_of_others) {
    EXPECT_EQ(list(45, {1, IF_TYPE_FC}).word(0), PM_ERR_REJECTED);
    EXPECT_EQ(list(43, {2, IF_TYPE_ETHERNET}).word(0), PM_ERR_REJECTED);
}

TEST(module_listing, refuses_requests_of_another_size) {
    for (const bytes &request : {bytes{}, bytes{1}, bytes{1, 1, 0}})
        EXPECT_EQ(list(43, request).word(0), PM_ERR_INVALID_PARAM) << request.size();
}

mts_reply get(switch_state &state, uint32_t sap, const char *name, uint32_t kind = 1) {
    bytes request{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1};
    for (int i = 0; i < 2; ++i)
        for (int shift = 24; shift >= 0; shift -= 8) request.push_back(static_cast<uint8_t>(index_of(name) >> shift));
    return ask_service(state, sap, CMI_OPC_PM_GET_PORT_CONFIG, request, kind);
}

TEST(configuration_query, has_the_bandwidth_as_configured) {
    constexpr size_t bandwidth = 8 + 143;
    switch_state state = state_of(every_kind);
    EXPECT_EQ(get(state, 43, "fc1/1").word(bandwidth), 0u);
    EXPECT_EQ(info_of(state, "fc1/1").bandwidth, 8000000u);
    ASSERT_EQ(set(state, "fc1/1", number_element(PM_ATTR_BANDWIDTH, 5)), 0u);
    ASSERT_EQ(set(state, "fc1/1", number_element(PM_ATTR_ADMIN_STATE, 2)), 0u);
    EXPECT_EQ(get(state, 43, "fc1/1").word(bandwidth), 5u);
    EXPECT_EQ(info_of(state, "fc1/1").bandwidth, 0u);
}

TEST(configuration_query, is_otherwise_the_query_for_ports) {
    switch_state state = state_of(std::string(every_kind) + "[[ports]]\nname = 'fc1/1'\nbandwidth = 5\nmtu = 777\n");
    const bytes request{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 0, 0, 0, 1, 0, 0, 0};
    const mts_reply ports = ask_service(state, 43, MTS_OPC_PM_GET_PORT_INFO, request);
    for (const uint32_t kind : {0u, 1u, 2u, 3u, 0xffffffffu})
        EXPECT_EQ(*get(state, 43, "fc1/1", kind).payload, *ports.payload) << kind;
    EXPECT_EQ(get(state, 45, "fc1/1").word(0), PM_ERR_REJECTED);
    EXPECT_EQ(get(state, 43, "fc1/9").word(0), PM_ERR_INVALID_RANGE);
    EXPECT_EQ(ask_service(state, 43, CMI_OPC_PM_GET_PORT_CONFIG, {}).word(0), PM_ERR_INVALID_PARAM);
}

// The owner of a member may be asked for its channel, and clients ask the Ethernet channel service for type 22.
TEST(configuration_query, for_channels_goes_to_any_service) {
    switch_state state = state_of(every_kind);
    for (const uint32_t sap : {43u, 45u, 175u})
        for (const char *name : {"port-channel1", "port-channel2", "if22-4", "port-channel2.7"})
            EXPECT_EQ(get(state, sap, name).word(4), 1u) << sap << " " << name;
}

// Configuration travels over CMI alone.
TEST(configuration_requests, over_messages_are_unknown) {
    switch_state state = state_of(every_kind);
    const bytes set_fc = set_request({{"fc1/1", "fc1/1"}}, element(PM_ATTR_ADMIN_STATE, 2, 1));
    for (const uint32_t opcode : {CMI_OPC_PM_SET_PORT_CONFIG, CMI_OPC_PM_GET_PORT_CONFIG, CMI_OPC_PM_CONFIG_SUB_INTF,
                                  CMI_OPC_PM_CONFIG_LOOPBACK, CMI_OPC_PM_GET_MODULE_INTF_LISTING}) {
        const mts_request_t request{0xfe000000,    43, opcode, 0, 3, static_cast<uint32_t>(set_fc.size()),
                                    set_fc.data(), {}};
        mts_reply reply;
        virtual_switch::port_service_context context{&state, {}};
        virtual_switch::port_service(&context, &request, &reply);
        EXPECT_THAT(*reply.payload, ElementsAre(0x40, 0x29, 0, 0)) << opcode;
        EXPECT_EQ(reply.failure, 0u);
    }
    EXPECT_EQ(info_of(state, "fc1/1").admin_state, 1);
}

}  // namespace
