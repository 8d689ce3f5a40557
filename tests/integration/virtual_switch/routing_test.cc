// SPDX-License-Identifier: Apache-2.0
// Requests reach the service that owns their interface; every other one refuses them.
#include "protocol/request_layout.h"
#include "virtual_switch_test.h"

namespace {

struct owned_interface {
    const char *name;
    uint32_t sap;
};

// One of every kind, and the SAP that owns it.
constexpr owned_interface interfaces[] = {
    {"fc1/3", 43},          {"Ethernet2/3", 45},      {"Ethernet2/4.9", 45}, {"port-channel1", 43},
    {"port-channel2", 175}, {"port-channel2.7", 175}, {"port-channel5", 43}, {"mgmt0", 179},
    {"fcip1", 43},          {"if11-4/2", 43},         {"if13-3/1", 43},      {"loopback1", 175},
    {"if22-3", 175},        {"if22-4", 43},           {"if26-5/1", 175},     {"if254-1", 43},
};
constexpr uint32_t saps[] = {43, 45, 175, 179};

class routing : public virtual_switch_test {
  protected:
    virtual_switch_process daemon_{every_kind};
};

TEST_F(routing, every_kind_is_answered_by_its_owner) {
    for (const auto &[name, sap] : interfaces) {
        EXPECT_EQ(pm_get_mts_sap(index_of(name)), sap) << name;
        EXPECT_THAT(names_of(client_.range(name, name).records), testing::ElementsAre(name));
    }
}

TEST_F(routing, no_one_else_answers) {
    for (const auto &[name, owner] : interfaces) {
        std::vector<uint8_t> payload(pm::port_info_request_header_size + pm::wire_range_size);
        pm::byte_writer writer(payload);
        pm::write_header(writer, {0, 0, 0, 0, 0, 1});
        writer.put_be32(index_of(name));
        writer.put_be32(index_of(name));
        for (const uint32_t sap : saps) {
            const std::vector<uint8_t> answer = client_.ask(sap, MTS_OPC_PM_GET_PORT_INFO, payload);
            if (sap == owner) {
                EXPECT_GT(answer.size(), 197u) << name;
            } else {
                EXPECT_THAT(answer, testing::ElementsAre(0x40, 0x29, 0, 9)) << name << " at " << sap;
            }
        }
    }
}

TEST_F(routing, the_next_port_is_known_to_every_owner) {
    for (const auto &[name, sap] : interfaces) {
        const auto answer = client_.next(index_of(name) - 1);
        ASSERT_EQ(answer.status, 0u) << name;
        EXPECT_EQ(name_of(answer.records.at(0).if_index), name);
    }
}

TEST_F(routing, the_port_after_a_channel_is_asked_of_a_member_s_owner) {
    for (const char *channel :
         {"port-channel1", "port-channel2", "port-channel2.7", "port-channel5", "port-channel9"}) {
        const auto answer = client_.next(index_of(channel));
        ASSERT_EQ(answer.status, 0u) << channel;
        EXPECT_GT(answer.records.at(0).if_index, index_of(channel));
    }
}

TEST_F(routing, channels_are_classified) {
    EXPECT_EQ(pm_port_channel_type(index_of("port-channel1")), 1u);
    EXPECT_EQ(pm_port_channel_type(index_of("port-channel2")), 2u);
    EXPECT_EQ(pm_port_channel_type(index_of("if22-3")), 2u);
    EXPECT_EQ(pm_port_channel_type(index_of("port-channel5")), 1u);
}

}  // namespace
