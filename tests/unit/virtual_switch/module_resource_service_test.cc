// SPDX-License-Identifier: Apache-2.0
#include "services/module_resource_service.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_outlets.h"
#include "fake_reply.h"
#include "names.h"
#include "port_mgr/opcodes.h"
#include "port_mgr/status.h"
#include "protocol/byte_order.h"
#include "services/line_card.h"

namespace {

using testing::ElementsAre;
using virtual_switch::line_card_context;
using virtual_switch::switch_state;

constexpr const char *chassis = R"([chassis]
name = 'test'
type = 6
slots = 6
[[module]]
slot = 1
kind = 'fc'
ports = 4
admin_speed = 4000
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
slot = 6
kind = 'ethernet-sfp'
ports = 2
[[interface]]
name = 'mgmt0, loopback1'
[[fcip]]
name = 'fcip1'
slot = 3
port = 1
[[port_channel]]
name = 'port-channel2'
members = 'Ethernet2/2'
[[sub_interface]]
name = 'Ethernet2/1.5-6, Ethernet2/3.7, port-channel2.7, if26-6/2.9'
[[ports]]
name = 'fc1/1-2'
bb_credit = [500, 7]
[[ports]]
name = 'fc1/2-3'
state = 'down'
[[ports]]
name = 'fc1/3'
rx_bb_credit = 0
[[ports]]
name = 'fc1/4'
admin_speed = 16000
[[ports]]
name = 'Ethernet2/3'
state = 'shutdown'
)";

using named_range = std::pair<const char *, const char *>;

std::vector<uint8_t> request_for(uint16_t module, const std::vector<named_range> &ranges) {
    std::vector<uint8_t> payload(4 + 8 * ranges.size());
    pm::store_be16(&payload[0], module);
    pm::store_be16(&payload[2], static_cast<uint16_t>(ranges.size()));
    for (size_t i = 0; i < ranges.size(); ++i) {
        pm::store_be32(&payload[4 + 8 * i], index_of(ranges[i].first));
        pm::store_be32(&payload[8 + 8 * i], index_of(ranges[i].second));
    }
    return payload;
}

// A service with its context; slot 0 stands for the supervisor.
mts_reply ask(uint8_t slot, const std::vector<uint8_t> &payload, uint32_t opcode = 3147) {
    static switch_state state = state_of(chassis);
    const mts_request_t request{0, 902, opcode, 0, 0, static_cast<uint32_t>(payload.size()), payload.data(), {}};
    line_card_context card{&state, static_cast<uint8_t>(slot - 1)};
    mts_reply reply;
    if (slot == 0)
        virtual_switch::supervisor_resource_service(&state, &request, &reply);
    else
        virtual_switch::line_card_resource_service(&card, &request, &reply);
    return reply;
}

// The records as "module.resource: used of total", or the status of a refusal.
std::vector<std::string> texts_in(const mts_reply &reply) {
    if (reply.word(0) != 0) {
        EXPECT_EQ(reply.payload->size(), 4u);
        return {"status " + std::to_string(reply.word(0))};
    }
    std::vector<std::string> texts;
    for (size_t at = 8; at < reply.payload->size(); at += 12) {
        texts.push_back(std::to_string(reply.word(at) >> 16) + "." + std::to_string(reply.word(at) & 0xffff) + ": " +
                        std::to_string(reply.word(at + 8)) + " of " + std::to_string(reply.word(at + 4)));
    }
    EXPECT_EQ(texts.size(), reply.word(4));
    return texts;
}

std::vector<std::string> resources(uint8_t slot, uint16_t module, const std::vector<named_range> &ranges = {}) {
    return texts_in(ask(slot, request_for(module, ranges)));
}

std::string status(uint32_t number) { return "status " + std::to_string(number); }

TEST(module_resources, travel_in_network_order) {
    const mts_reply reply = ask(0, request_for(4, {}));
    EXPECT_THAT(*reply.payload, ElementsAre(0, 0, 0, 0, 0, 0, 0, 2,              //
                                            0, 4, 0, 1, 0, 0, 0, 2, 0, 0, 0, 2,  //
                                            0, 4, 0, 3, 0, 0, 7, 0xd0, 0, 0, 7, 0xd0));
}

// 500 credits, 500 that are not in use, 16 by default, 16; 4000 Mbit/s in use of 8000 that there could be, and 16000.
TEST(module_resources, are_those_of_each_kind_of_module) {
    EXPECT_THAT(resources(0, 1), ElementsAre("1.1: 2 of 4", "1.2: 516 of 1032", "1.3: 20000 of 40000"));
    EXPECT_THAT(resources(0, 2), ElementsAre("2.1: 2 of 3", "2.3: 20000 of 30000", "2.4: 3 of 12276"));
    EXPECT_THAT(resources(0, 3), ElementsAre("3.1: 2 of 2", "3.3: 2000 of 2000"));
    EXPECT_THAT(resources(0, 4), ElementsAre("4.1: 2 of 2", "4.3: 2000 of 2000"));
    EXPECT_THAT(resources(0, 6), ElementsAre("6.1: 2 of 2", "6.3: 20000 of 20000", "6.4: 1 of 8184"));
}

TEST(module_resources, are_those_of_all_modules_for_module_0) {
    EXPECT_THAT(resources(0, 0), ElementsAre("1.1: 2 of 4", "1.2: 516 of 1032", "1.3: 20000 of 40000",  //
                                             "2.1: 2 of 3", "2.3: 20000 of 30000", "2.4: 3 of 12276",   //
                                             "3.1: 2 of 2", "3.3: 2000 of 2000",                        //
                                             "4.1: 2 of 2", "4.3: 2000 of 2000",                        //
                                             "6.1: 2 of 2", "6.3: 20000 of 20000", "6.4: 1 of 8184"));
}

TEST(module_resources, are_the_card_s_own_at_a_line_card) {
    const std::vector<std::string> own{"3.1: 2 of 2", "3.3: 2000 of 2000"};
    EXPECT_EQ(resources(3, 3), own);
    EXPECT_EQ(resources(3, 0), own);
    EXPECT_THAT(resources(3, 2), ElementsAre(status(PM_ERR_INVALID_RANGE)));
}

TEST(module_resources, of_unknown_modules_are_refused) {
    constexpr uint16_t unknown[] = {5, 7, 257, 65535};
    for (const uint16_t module : unknown)
        EXPECT_THAT(resources(0, module), ElementsAre(status(PM_ERR_INVALID_RANGE))) << module;
    EXPECT_THAT(resources(1, 257), ElementsAre(status(PM_ERR_INVALID_RANGE)));
}

TEST(module_resources, count_the_use_of_ranges) {
    EXPECT_THAT(resources(0, 1, {{"fc1/1", "fc1/3"}}),
                ElementsAre("1.1: 1 of 4", "1.2: 500 of 1032", "1.3: 4000 of 40000"));
    EXPECT_THAT(resources(0, 1, {{"fc1/4", "fc1/4"}, {"fc1/1", "fc1/1"}}),
                ElementsAre("1.1: 2 of 4", "1.2: 516 of 1032", "1.3: 20000 of 40000"));
    // A sub-interface lies between its port and the next.
    EXPECT_THAT(resources(0, 2, {{"Ethernet2/1.6", "Ethernet2/2"}}),
                ElementsAre("2.1: 1 of 3", "2.3: 10000 of 30000", "2.4: 1 of 12276"));
}

TEST(module_resources, count_what_several_ranges_name_once) {
    EXPECT_THAT(
        resources(0, 2,
                  {{"Ethernet2/1", "Ethernet2/2"}, {"Ethernet2/1", "Ethernet2/1"}, {"Ethernet2/1", "Ethernet2/1.5"}}),
        ElementsAre("2.1: 2 of 3", "2.3: 20000 of 30000", "2.4: 2 of 12276"));
    EXPECT_THAT(resources(0, 1, {{"fc1/1", "fc1/4"}, {"fc1/2", "fc1/2"}, {"fc1/3", "fc1/9"}}),
                ElementsAre("1.1: 2 of 4", "1.2: 516 of 1032", "1.3: 20000 of 40000"));
}

TEST(module_resources, are_unused_by_ranges_of_others) {
    const std::vector<std::string> unused{"3.1: 0 of 2", "3.3: 0 of 2000"};
    EXPECT_EQ(resources(0, 3, {{"fc1/1", "fc1/4"}}), unused);
    EXPECT_EQ(resources(0, 3, {{"if13-3/2", "if13-3/1"}}), unused);
    EXPECT_EQ(resources(0, 3, {{"fc1/1", "if26-6/2"}}), unused);
    EXPECT_EQ(resources(0, 3, {{"fcip1", "fcip1"}, {"if13-3/3", "if13-9/1"}}), unused);
}

TEST(module_resources, have_sums_that_stay_at_the_largest_number) {
    switch_state state = state_of(
        "[chassis]\nname = 'test'\ntype = 6\nslots = 1\n[[module]]\nslot = 1\nkind = 'fc'\nports = 2\n"
        "rx_bb_credit = 0x80000000\n");
    const std::vector<uint8_t> payload = request_for(1, {{"fc1/1", "fc1/1"}});
    const mts_request_t request{0, 902, 3147, 0, 0, static_cast<uint32_t>(payload.size()), payload.data(), {}};
    mts_reply reply;
    virtual_switch::supervisor_resource_service(&state, &request, &reply);
    EXPECT_EQ(texts_in(reply).at(1), "1.2: 2147483648 of 4294967295");
}

TEST(module_resources, are_not_told_to_malformed_requests) {
    const std::vector<uint8_t> good = request_for(1, {{"fc1/1", "fc1/1"}, {"fc1/2", "fc1/2"}});
    for (const uint8_t slot : {uint8_t{0}, uint8_t{1}}) {
        for (size_t size = 0; size < good.size(); ++size)
            EXPECT_THAT(texts_in(ask(slot, {good.begin(), good.begin() + static_cast<ptrdiff_t>(size)})),
                        ElementsAre(status(PM_ERR_INVALID_PARAM)))
                << size;
        std::vector<uint8_t> longer = good;
        longer.push_back(0);
        EXPECT_THAT(texts_in(ask(slot, longer)), ElementsAre(status(PM_ERR_INVALID_PARAM)));
        EXPECT_THAT(texts_in(ask(slot, good, 3148)), ElementsAre(status(PM_ERR_FAILURE)));
        EXPECT_EQ(texts_in(ask(slot, good)).size(), 3u);
    }
}

}  // namespace
