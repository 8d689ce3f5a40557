// SPDX-License-Identifier: Apache-2.0
// Requests that no correct client sends: each is refused by a status alone, and the daemon serves on.
#include "platform/cmi.h"
#include "protocol/byte_order.h"
#include "virtual_switch_test.h"

namespace {

using bytes = std::vector<uint8_t>;

constexpr uint32_t saps[] = {43, 45, 175, 179};

const bytes invalid_param{0x40, 0x29, 0, 3};
const bytes failure{0x40, 0x29, 0, 0};

// A request in mode 0 for fc1/1, good as it is.
const bytes good{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 0, 0, 0, 1, 0, 0, 0};

bytes with(size_t offset, uint8_t value) {
    bytes changed = good;
    changed.at(offset) = value;
    return changed;
}

class malformed_requests : public virtual_switch_test {
  protected:
    void TearDown() override { EXPECT_EQ(client_.range("fc1/1", "fc1/4").records.size(), 4u); }

    virtual_switch_process daemon_{every_kind};
};

TEST_F(malformed_requests, too_short) {
    for (const uint32_t opcode : {MTS_OPC_PM_GET_PORT_INFO, MTS_OPC_PM_GET_PORT_INFO_BRIEF}) {
        EXPECT_GT(client_.ask(43, opcode, good).size(), 8u);
        for (size_t size = 0; size < good.size(); ++size)
            EXPECT_EQ(client_.ask(43, opcode, bytes(good.begin(), good.begin() + static_cast<ptrdiff_t>(size))),
                      invalid_param)
                << size;
    }
}

TEST_F(malformed_requests, counts_that_do_not_fit) {
    bytes too_long = good;
    too_long.push_back(0);
    for (const bytes &request : {too_long, with(14, 0), with(14, 2), with(11, 0x20), with(11, 0xff)})
        EXPECT_EQ(client_.ask(43, MTS_OPC_PM_GET_PORT_INFO, request), invalid_param);
}

TEST_F(malformed_requests, unknown_modes) {
    for (const uint8_t mode : bytes{1, 2, 255})
        EXPECT_EQ(client_.ask(43, MTS_OPC_PM_GET_PORT_INFO, with(0, mode)), invalid_param);
}

TEST_F(malformed_requests, next_ports_of_another_size) {
    for (const bytes &request : {bytes{}, bytes{0, 0, 0}, bytes{0, 0, 0, 0, 0}})
        EXPECT_EQ(client_.ask(43, MTS_OPC_PM_GET_NEXT_PORT_INFO, request), invalid_param);
}

TEST_F(malformed_requests, unknown_opcodes) {
    for (const uint32_t sap : saps) {
        EXPECT_EQ(client_.ask(sap, 1, good), failure) << sap;
        EXPECT_EQ(client_.ask(sap, 0xffffffff, {}), failure) << sap;
    }
}

TEST_F(malformed_requests, more_records_than_an_answer_holds) {
    constexpr uint16_t ranges = 30'000;
    bytes request(good.begin(), good.begin() + 15);
    pm::store_be16(&request[13], ranges);
    const bytes fc1_1_to_4{1, 0, 0, 0, 1, 0, 0x30, 0};
    for (size_t i = 0; i < ranges; ++i) request.insert(request.end(), fc1_1_to_4.begin(), fc1_1_to_4.end());
    EXPECT_EQ(client_.ask(43, MTS_OPC_PM_GET_PORT_INFO, request), failure);
}

uint32_t ask_for_member(mts_handle_t handle, uint32_t opcode, const bytes &query) {
    void *response = nullptr;
    auto length = static_cast<uint32_t>(query.size());
    const uint32_t status =
        cmi_req_resp(opcode, 2, query.data(), &response, &length, 0, 0, PM_SAP_CHANNEL_MEMBER, handle, 5);
    free(response);
    return status;
}

TEST_F(malformed_requests, members_of_no_channel) {
    EXPECT_EQ(ask_for_member(client_.handle(), CMI_OPC_GET_CHANNEL_MEMBER, {4, 0, 0x10, 0}), 0u);
    EXPECT_NE(ask_for_member(client_.handle(), CMI_OPC_GET_CHANNEL_MEMBER, {4, 0, 0x10}), 0u);
    EXPECT_NE(ask_for_member(client_.handle(), CMI_OPC_GET_CHANNEL_MEMBER, {4, 0, 0x50, 0}), 0u);
    EXPECT_NE(ask_for_member(client_.handle(), CMI_OPC_GET_CHANNEL_MEMBER, {0, 0, 0, 0}), 0u);
    EXPECT_NE(ask_for_member(client_.handle(), 625, {4, 0, 0x10, 0}), 0u);
}

}  // namespace
