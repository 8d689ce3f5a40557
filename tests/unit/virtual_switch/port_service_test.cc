// SPDX-License-Identifier: Apache-2.0
#include "services/port_service.h"

#include <gtest/gtest.h>

#include "fake_outlets.h"
#include "fake_reply.h"
#include "port_mgr/status.h"

namespace {

mts_reply ask(uint32_t opcode, const std::vector<uint8_t> &payload, uint32_t is_cmi = 0) {
    virtual_switch::switch_state state =
        state_of("[chassis]\nname = 'test'\ntype = 6\nslots = 1\n[[module]]\nslot = 1\nkind = 'fc'\nports = 3\n");
    const mts_request_t request{0xfe000000,     43, opcode, is_cmi, 0, static_cast<uint32_t>(payload.size()),
                                payload.data(), {}};
    mts_reply reply;
    virtual_switch::port_service_context context{&state, {}};
    virtual_switch::port_service(&context, &request, &reply);
    return reply;
}

const std::vector<uint8_t> all_ports{1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};

TEST(port_service, answers_in_full) {
    const mts_reply reply = ask(MTS_OPC_PM_GET_PORT_INFO, all_ports);
    EXPECT_EQ(reply.word(0), 0u);
    EXPECT_EQ(reply.word(4), 3u);
    EXPECT_GT(reply.payload->size(), 8u + 3 * 189);
}

TEST(port_service, answers_in_brief) {
    const mts_reply reply = ask(MTS_OPC_PM_GET_PORT_INFO_BRIEF, all_ports);
    EXPECT_EQ(reply.word(4), 3u);
    EXPECT_EQ(reply.payload->size(), 8u + 3 * 51);
}

TEST(port_service, answers_with_the_next_port) {
    const mts_reply reply = ask(MTS_OPC_PM_GET_NEXT_PORT_INFO, {1, 0, 0, 0});
    EXPECT_EQ(reply.word(4), 1u);
    EXPECT_EQ(reply.word(8), 0x01001000u);
}

TEST(port_service, refuses_with_a_status_alone) {
    const mts_reply refused = ask(MTS_OPC_PM_GET_PORT_INFO, {});
    EXPECT_EQ(refused.payload->size(), 4u);
    EXPECT_EQ(refused.word(0), PM_ERR_INVALID_PARAM);
    const mts_reply unknown = ask(1, all_ports);
    EXPECT_EQ(unknown.payload->size(), 4u);
    EXPECT_EQ(unknown.word(0), PM_ERR_FAILURE);
}

}  // namespace
