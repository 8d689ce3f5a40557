// SPDX-License-Identifier: Apache-2.0
#include "services/channel_member_service.h"

#include <gtest/gtest.h>

#include "fake_outlets.h"
#include "fake_reply.h"
#include "names.h"
#include "port_mgr/opcodes.h"
#include "port_mgr/status.h"
#include "protocol/byte_order.h"

namespace {

mts_reply ask(uint32_t opcode, const std::vector<uint8_t> &payload) {
    virtual_switch::switch_state state = state_of(
        "[chassis]\nname = 'test'\ntype = 6\nslots = 1\n[[module]]\nslot = 1\nkind = 'fc'\nports = 3\n"
        "[[port_channel]]\nname = 'port-channel1'\nmembers = 'fc1/2-3'\n[[port_channel]]\nname = 'port-channel2'\n");
    const mts_request_t request{0xfe000000,     34, opcode, 1, 2, static_cast<uint32_t>(payload.size()),
                                payload.data(), {}};
    mts_reply reply;
    virtual_switch::channel_member_service(&state, &request, &reply);
    return reply;
}

// A query is longer than what of it is read.
mts_reply ask_for(const char *channel) {
    std::vector<uint8_t> query(528);
    pm::store_be32(query.data(), index_of(channel));
    return ask(CMI_OPC_GET_CHANNEL_MEMBER, query);
}

TEST(channel_member_service, names_the_first_member) {
    const mts_reply reply = ask_for("port-channel1");
    EXPECT_EQ(reply.failure, 0u);
    EXPECT_EQ(reply.payload->size(), 4u);
    EXPECT_EQ(reply.word(0), index_of("fc1/2"));
}

TEST(channel_member_service, fails_without_a_member) {
    for (const char *channel : {"port-channel2", "port-channel3", "fc1/1"}) {
        const mts_reply reply = ask_for(channel);
        EXPECT_EQ(reply.failure, PM_ERR_INVALID_RANGE) << channel;
        EXPECT_FALSE(reply.payload.has_value());
    }
}

TEST(channel_member_service, fails_for_other_requests) {
    EXPECT_EQ(ask(CMI_OPC_GET_CHANNEL_MEMBER, {4, 0, 0}).failure, PM_ERR_INVALID_PARAM);
    EXPECT_EQ(ask(625, {4, 0, 0x10, 0}).failure, PM_ERR_FAILURE);
}

}  // namespace
