// SPDX-License-Identifier: Apache-2.0
// Which clients the port services let configure, and how they refuse the others.
#include "services/config_access.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <span>
#include <stdexcept>

#include "config_requests.h"
#include "fake_outlets.h"
#include "port_mgr/config_attribute.h"
#include "port_mgr/loopback_config.h"
#include "port_mgr/opcodes.h"
#include "port_mgr/status.h"
#include "port_mgr/sub_interface_config.h"
#include "services/port_service.h"

namespace {

using virtual_switch::config_access;
using virtual_switch::find_group;
using virtual_switch::user_group;

const user_group admins{62000, "admins"};
const uint32_t another_user = geteuid() + 1;

mts_client_t client_of(uint32_t uid, std::span<const uint32_t> groups) {
    return {uid, static_cast<uint32_t>(groups.size()), groups.data()};
}

TEST(config_access, is_for_the_own_user_root_and_the_group) {
    const std::array<uint32_t, 3> with{1, 2, 62000};
    const std::array<uint32_t, 2> without{1, 61999};
    for (const config_access &access : {config_access(admins), config_access()}) {
        EXPECT_TRUE(access.allows(client_of(geteuid(), without)));
        EXPECT_TRUE(access.allows(client_of(0, without)));
        EXPECT_FALSE(access.allows(client_of(another_user, without)));
        EXPECT_FALSE(access.allows(client_of(62000, without))) << "the number of a user is none of a group";
    }
    EXPECT_TRUE(config_access(admins).allows(client_of(another_user, with)));
    EXPECT_TRUE(config_access(admins).allows(client_of(another_user, std::span(with).last(1))));
    EXPECT_FALSE(config_access().allows(client_of(another_user, with)));
}

TEST(config_access, finds_groups_by_name_and_by_number) {
    EXPECT_EQ(find_group("root").id, 0u);
    EXPECT_EQ(find_group("0").name, "root");
    EXPECT_EQ(find_group("4294967294").id, 4294967294u);
    EXPECT_EQ(find_group("62000").name, "62000");
    for (const char *unknown : {"no such group", "4294967295", "4294967296", "-1", "1 ", "0x1"}) {
        EXPECT_THROW(find_group(unknown), std::runtime_error) << unknown;
    }
}

class refused_configuration : public testing::Test {
  protected:
    // What a client of no group is told, and what the log says.
    mts_reply ask(uint32_t opcode, const bytes &payload, uint32_t kind) {
        const std::array<uint32_t, 1> groups{1};
        const mts_request_t request{
            0xfe000000,     PM_SAP_ETHERNET_CHANNEL,        opcode, 1, kind, static_cast<uint32_t>(payload.size()),
            payload.data(), client_of(another_user, groups)};
        mts_reply reply;
        testing::internal::CaptureStderr();
        virtual_switch::port_service(&context_, &request, &reply);
        log_ = testing::internal::GetCapturedStderr();
        return reply;
    }

    [[nodiscard]] std::string line(const std::string &what) const {
        return "pm-virtual-switch: configuration refused: " + what + ": user " + std::to_string(another_user) +
               " is not in group admins\n";
    }

    virtual_switch::switch_state state_ = state_of(every_kind);
    virtual_switch::port_service_context context_{&state_, config_access(admins)};
    std::string log_;
};

TEST_F(refused_configuration, of_attributes_has_no_results) {
    const bytes request = set_request({{"port-channel1", "port-channel1"}}, element(PM_ATTR_ADMIN_STATE, 2, 1));
    const mts_reply reply = ask(CMI_OPC_PM_SET_PORT_CONFIG, request, 3);
    ASSERT_TRUE(reply.payload);
    EXPECT_EQ(*reply.payload, (bytes{0x40, 0x29, 0, 9, 0, 0, 0, 0}));
    EXPECT_EQ(log_, line("attributes of ports"));
    EXPECT_EQ(state_.changes(), virtual_switch::configuration{});
}

TEST_F(refused_configuration, of_sub_interfaces_has_the_status_in_its_place) {
    const mts_reply reply =
        ask(CMI_OPC_PM_CONFIG_SUB_INTF, sub_interface_request(PM_SUB_INTF_CREATE, {{"Ethernet2/1", {77}}}), 3);
    ASSERT_TRUE(reply.payload);
    EXPECT_EQ(*reply.payload, (bytes{0, 0, 0, 0, 0x40, 0x29, 0, 9}));
    EXPECT_EQ(log_, line("sub-interfaces"));
    EXPECT_EQ(state_.changes(), virtual_switch::configuration{});
}

TEST_F(refused_configuration, of_loopbacks_fails_the_exchange) {
    const mts_reply reply =
        ask(CMI_OPC_PM_CONFIG_LOOPBACK, loopback_request({{"loopback9", "loopback9"}}), PM_LOOPBACK_CREATE);
    EXPECT_FALSE(reply.payload);
    EXPECT_EQ(reply.failure, PM_ERR_REJECTED);
    EXPECT_EQ(log_, line("loopbacks"));
    EXPECT_EQ(state_.changes(), virtual_switch::configuration{});
}

TEST_F(refused_configuration, leaves_the_queries) {
    for (const uint32_t opcode : {MTS_OPC_PM_GET_PORT_INFO, CMI_OPC_PM_GET_PORT_CONFIG}) {
        const mts_reply reply = ask(opcode, {1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, 3);
        ASSERT_TRUE(reply.payload);
        EXPECT_EQ(reply.word(0), 0u) << opcode;
        EXPECT_EQ(log_, "");
    }
}

std::string said_of(auto action) {
    testing::internal::CaptureStderr();
    action();
    return testing::internal::GetCapturedStderr();
}

TEST(refusal_log, says_the_first_of_a_period_and_counts_the_others) {
    using log = virtual_switch::refusal_log;
    const std::string line = "pm-virtual-switch: configuration refused: x\n";
    log refusals;
    const log::clock::time_point start{};
    const auto add = [&](log::clock::time_point now) { return said_of([&] { refusals.add("x", now); }); };
    for (unsigned i = 0; i < log::most_in_period; ++i) EXPECT_EQ(add(start), line);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(add(start + log::period - std::chrono::nanoseconds(1)), "");
    EXPECT_EQ(add(start + log::period), "pm-virtual-switch: configuration refused: 3 more times\n" + line);
    EXPECT_EQ(add(start + 2 * log::period), line);
}

}  // namespace
