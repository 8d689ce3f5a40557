// SPDX-License-Identifier: Apache-2.0
#include "services/listing_service.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_outlets.h"
#include "fake_reply.h"
#include "names.h"
#include "port_mgr/opcodes.h"
#include "port_mgr/status.h"
#include "services/port_service.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char *chassis = R"([chassis]
name = 'test'
type = 6
slots = 5
[[module]]
slot = 1
kind = 'fc'
ports = 3
[[module]]
slot = 2
kind = 'ethernet'
ports = 3
[[module]]
slot = 3
kind = 'ips'
ports = 2
[[module]]
slot = 4
kind = 'slot-port'
ports = 2
[[module]]
slot = 5
kind = 'ethernet-sfp'
ports = 2
[[interface]]
name = 'mgmt0, loopback7, loopback1, if254-1'
[[fcip]]
name = 'fcip7, fcip3'
slot = 3
port = 1
[[port_channel]]
name = 'port-channel2'
members = 'Ethernet2/2'
[[port_channel]]
name = 'port-channel1'
members = 'fc1/3'
[[port_channel]]
name = 'if22-4'
members = 'Ethernet2/3'
[[sub_interface]]
name = 'Ethernet2/1.6, Ethernet2/1.5, port-channel2.7, if22-4.8, if26-5/1.9'
)";

mts_reply ask(uint32_t sap, uint32_t opcode, const std::vector<uint8_t> &payload) {
    virtual_switch::switch_state state = state_of(chassis);
    const mts_request_t request{0xfe000000,     sap, opcode, 0, 0, static_cast<uint32_t>(payload.size()),
                                payload.data(), {}};
    mts_reply reply;
    virtual_switch::port_service_context context{&state, {}};
    virtual_switch::port_service(&context, &request, &reply);
    return reply;
}

// The names in a good answer, or the status of a refusal.
std::vector<std::string> names_in(const mts_reply &reply) {
    if (reply.word(0) != 0) {
        EXPECT_EQ(reply.payload->size(), 4u);
        return {"status " + std::to_string(reply.word(0))};
    }
    std::vector<std::string> names;
    for (size_t offset = 8; offset < reply.payload->size(); offset += 4)
        names.push_back(virtual_switch::name_of(reply.word(offset)));
    EXPECT_EQ(names.size(), reply.word(4));
    return names;
}

std::string status(uint32_t number) { return "status " + std::to_string(number); }

std::vector<std::string> list(uint8_t type, uint32_t sap) {
    return names_in(ask(sap, MTS_OPC_PM_GET_IF_INDEX_LISTING, {type}));
}

TEST(listing_service, answers_with_indexes_in_network_order) {
    const mts_reply reply = ask(179, MTS_OPC_PM_GET_IF_INDEX_LISTING, {5});
    EXPECT_THAT(*reply.payload, ElementsAre(0, 0, 0, 0, 0, 0, 0, 1, 5, 0, 0, 0));
}

TEST(listing_service, lists_every_type_in_order_of_indexes) {
    EXPECT_THAT(list(1, 43), ElementsAre("fc1/1", "fc1/2", "fc1/3"));
    EXPECT_THAT(list(2, 45),
                ElementsAre("Ethernet2/1", "Ethernet2/1.5", "Ethernet2/1.6", "Ethernet2/2", "Ethernet2/3"));
    EXPECT_THAT(list(4, 43), ElementsAre("port-channel1", "port-channel2", "port-channel2.7"));
    EXPECT_THAT(list(5, 179), ElementsAre("mgmt0"));
    EXPECT_THAT(list(10, 43), ElementsAre("fcip3", "fcip7"));
    EXPECT_THAT(list(11, 43), ElementsAre("if11-4/1", "if11-4/2"));
    EXPECT_THAT(list(13, 43), ElementsAre("if13-3/1", "if13-3/2"));
    EXPECT_THAT(list(20, 175), ElementsAre("loopback1", "loopback7"));
    EXPECT_THAT(list(22, 43), ElementsAre("if22-4", "if22-4.8"));
    EXPECT_THAT(list(26, 175), ElementsAre("if26-5/1", "if26-5/1.9", "if26-5/2"));
    EXPECT_THAT(list(254, 43), ElementsAre("if254-1"));
}

TEST(listing_service, lists_nothing_of_a_type_that_nobody_has) {
    for (const uint8_t type : {uint8_t{0}, uint8_t{3}, uint8_t{99}, uint8_t{255}})
        EXPECT_THAT(list(type, 43), IsEmpty()) << int{type};
    EXPECT_EQ(ask(43, MTS_OPC_PM_GET_IF_INDEX_LISTING, {3}).payload->size(), 8u);
}

TEST(listing_service, refuses_types_of_other_services) {
    const std::map<uint8_t, uint32_t> owners{{1, 43},  {2, 45},  {4, 43},   {5, 179},  {10, 43}, {11, 43},
                                             {13, 43}, {22, 43}, {20, 175}, {26, 175}, {254, 43}};
    for (const auto &[type, owner] : owners) {
        for (const uint32_t sap : {43u, 45u, 175u, 179u}) {
            if (sap == owner) continue;
            EXPECT_THAT(list(type, sap), ElementsAre(status(PM_ERR_REJECTED))) << int{type} << " at " << sap;
        }
    }
}

TEST(listing_service, refuses_malformed_requests) {
    EXPECT_THAT(names_in(ask(43, MTS_OPC_PM_GET_IF_INDEX_LISTING, {})), ElementsAre(status(PM_ERR_INVALID_PARAM)));
    EXPECT_THAT(names_in(ask(43, MTS_OPC_PM_GET_IF_INDEX_LISTING, {1, 0})), ElementsAre(status(PM_ERR_INVALID_PARAM)));
}

// A request with a block that holds a text, a NUL and bytes that mean nothing.
std::vector<uint8_t> startup_request(uint8_t type, const std::string &text) {
    std::vector<uint8_t> payload(501, 0xee);
    payload[0] = type;
    std::copy(text.begin(), text.end(), payload.begin() + 1);
    payload.at(1 + text.size()) = 0;
    return payload;
}

std::vector<std::string> list_startup(uint8_t type, const std::string &text, uint32_t sap = 43) {
    return names_in(ask(sap, MTS_OPC_PM_GET_STARTUP_IF_INDEX_LISTING, startup_request(type, text)));
}

TEST(startup_listing, answers_with_indexes_in_network_order) {
    const mts_reply reply =
        ask(43, MTS_OPC_PM_GET_STARTUP_IF_INDEX_LISTING, startup_request(4, "port-channel3,port-channel2.9"));
    EXPECT_THAT(*reply.payload, ElementsAre(0, 0, 0, 0, 0, 0, 0, 2, 4, 0, 0x30, 0, 4, 0, 0x20, 9));
}

TEST(startup_listing, takes_what_is_named_in_its_order) {
    EXPECT_THAT(list_startup(1, "fc1/3, fc1/1-2"), ElementsAre("fc1/3", "fc1/1", "fc1/2"));
    EXPECT_THAT(list_startup(2, "Ethernet2/1.6,Ethernet2/1,Ethernet2/1.8-10", 45),
                ElementsAre("Ethernet2/1.6", "Ethernet2/1", "Ethernet2/1.8", "Ethernet2/1.9", "Ethernet2/1.10"));
}

TEST(startup_listing, takes_what_does_not_exist) {
    EXPECT_THAT(list_startup(1, "fc9/7"), ElementsAre("fc9/7"));
    EXPECT_THAT(list_startup(20, "loopback99", 175), ElementsAre("loopback99"));
    EXPECT_THAT(list_startup(22, "if22-9"), ElementsAre("if22-9"));
}

TEST(startup_listing, names_everything_once) {
    EXPECT_THAT(list_startup(1, "fc1/2, fc1/1-3, fc1/2, fc1/3-4"), ElementsAre("fc1/2", "fc1/1", "fc1/3", "fc1/4"));
}

TEST(startup_listing, leaves_out_other_types) {
    const std::string mixed = "mgmt0, fc1/1, Ethernet2/1, fcip2, port-channel5, loopback1, if26-5/1, fc1/2";
    EXPECT_THAT(list_startup(1, mixed), ElementsAre("fc1/1", "fc1/2"));
    EXPECT_THAT(list_startup(2, mixed, 45), ElementsAre("Ethernet2/1"));
    EXPECT_THAT(list_startup(5, mixed, 179), ElementsAre("mgmt0"));
    EXPECT_THAT(list_startup(20, mixed, 175), ElementsAre("loopback1"));
    EXPECT_THAT(list_startup(26, mixed, 175), ElementsAre("if26-5/1"));
    EXPECT_THAT(list_startup(10, mixed), ElementsAre("fcip2"));
    EXPECT_THAT(list_startup(13, mixed), IsEmpty());
}

TEST(startup_listing, takes_an_empty_text) { EXPECT_THAT(list_startup(1, ""), IsEmpty()); }

TEST(startup_listing, takes_the_longest_text) {
    std::string longest = "fc1/1";
    while (longest.size() < 255) longest += longest.size() + 6 <= 255 ? ",fc1/2" : " ";
    ASSERT_EQ(longest.size(), 255u);
    EXPECT_THAT(list_startup(1, longest), ElementsAre("fc1/1", "fc1/2"));
    std::vector<uint8_t> without_end = startup_request(1, longest);
    without_end[256] = ' ';
    EXPECT_THAT(names_in(ask(43, MTS_OPC_PM_GET_STARTUP_IF_INDEX_LISTING, without_end)),
                ElementsAre(status(PM_ERR_INVALID_PARAM)));
}

// The byte behind the block is a NUL, but not one of the block's.
TEST(startup_listing, looks_for_the_end_within_the_block) {
    std::vector<uint8_t> payload = startup_request(1, "fc1/1");
    std::fill(payload.begin() + 6, payload.begin() + 257, uint8_t{' '});
    payload[257] = 0;
    EXPECT_THAT(names_in(ask(43, MTS_OPC_PM_GET_STARTUP_IF_INDEX_LISTING, payload)),
                ElementsAre(status(PM_ERR_INVALID_PARAM)));
    payload[256] = 0;
    EXPECT_THAT(names_in(ask(43, MTS_OPC_PM_GET_STARTUP_IF_INDEX_LISTING, payload)), ElementsAre("fc1/1"));
}

TEST(startup_listing, refuses_bad_text) {
    for (const char *text :
         {",", " ", "fc1/1,", "fc1/1,,fc1/2", "fc1/2-1", "fc0/1", "nothing", "fc1/1\n", "fc1/1;fc1/2", "fc1/1-5000"})
        EXPECT_THAT(list_startup(1, text), ElementsAre(status(PM_ERR_INVALID_PARAM))) << text;
    EXPECT_THAT(list_startup(1, "mgmt0, nothing"), ElementsAre(status(PM_ERR_INVALID_PARAM)));
}

TEST(startup_listing, refuses_types_of_other_services) {
    EXPECT_THAT(list_startup(1, "fc1/1", 45), ElementsAre(status(PM_ERR_REJECTED)));
    EXPECT_THAT(list_startup(2, "Ethernet2/1", 43), ElementsAre(status(PM_ERR_REJECTED)));
    EXPECT_THAT(list_startup(5, "mgmt0", 175), ElementsAre(status(PM_ERR_REJECTED)));
    EXPECT_THAT(list_startup(4, "port-channel2", 175), ElementsAre(status(PM_ERR_REJECTED)));
    EXPECT_THAT(list_startup(4, "port-channel2", 43), ElementsAre("port-channel2"));
}

TEST(startup_listing, refuses_requests_of_another_size) {
    const std::vector<uint8_t> good = startup_request(1, "fc1/1");
    for (const size_t size : {size_t{0}, size_t{1}, size_t{257}, size_t{500}}) {
        const std::vector<uint8_t> shorter(good.begin(), good.begin() + static_cast<ptrdiff_t>(size));
        EXPECT_THAT(names_in(ask(43, MTS_OPC_PM_GET_STARTUP_IF_INDEX_LISTING, shorter)),
                    ElementsAre(status(PM_ERR_INVALID_PARAM)))
            << size;
    }
    std::vector<uint8_t> longer = good;
    longer.push_back(0);
    EXPECT_THAT(names_in(ask(43, MTS_OPC_PM_GET_STARTUP_IF_INDEX_LISTING, longer)),
                ElementsAre(status(PM_ERR_INVALID_PARAM)));
}

}  // namespace
