// SPDX-License-Identifier: Apache-2.0
#include "services/loopback_service.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "config_requests.h"
#include "fake_outlets.h"
#include "names.h"
#include "port_mgr/config_attribute.h"
#include "port_mgr/loopback_config.h"
#include "port_mgr/opcodes.h"
#include "port_mgr/status.h"

namespace {

using virtual_switch::configuration;
using virtual_switch::switch_state;

constexpr uint32_t to_create = PM_LOOPBACK_CREATE;
constexpr uint32_t to_delete = PM_LOOPBACK_DELETE;

mts_reply ask(switch_state &state, const bytes &payload, uint32_t kind = to_create, uint32_t sap = 175) {
    return ask_service(state, sap, CMI_OPC_PM_CONFIG_LOOPBACK, payload, kind);
}

TEST(loopback_service, answers_without_payload_or_fails) {
    switch_state state = state_of(every_kind);
    const mts_reply good = ask(state, loopback_request({{"loopback2", "loopback2"}}));
    EXPECT_EQ(good.failure, 0u);
    EXPECT_TRUE(good.payload.has_value() && good.payload->empty());
    const mts_reply bad = ask(state, loopback_request({{"mgmt0", "mgmt0"}}));
    EXPECT_EQ(bad.failure, PM_ERR_INVALID_RANGE);
    EXPECT_FALSE(bad.payload.has_value());
}

TEST(loopback_service, creates) {
    switch_state state = state_of(every_kind);
    EXPECT_EQ(
        configure_loopbacks(state, to_create, {{"loopback0", "loopback2"}, {"loopback16777215", "loopback16777215"}}),
        0u);
    for (const char *name : {"loopback0", "loopback1", "loopback2", "loopback16777215"})
        EXPECT_EQ(info_of(state, name).oper_state, 1) << name;
    EXPECT_EQ(state.changes().created.size(), 3u);
    EXPECT_EQ(state.model().find(index_of("loopback2"))->place.node, 0xfe000000u);
}

TEST(loopback_service, deletes) {
    switch_state state = state_of(every_kind);
    ASSERT_EQ(configure_loopbacks(state, to_create, {{"loopback5", "loopback6"}}), 0u);
    ASSERT_EQ(set(state, "loopback5", number_element(PM_ATTR_MTU, 9000)), 0u);
    EXPECT_EQ(configure_loopbacks(state, to_delete, {{"loopback0", "loopback5"}, {"loopback0", "loopback5"}}), 0u);
    EXPECT_FALSE(exists(state, "loopback1"));
    EXPECT_FALSE(exists(state, "loopback5"));
    EXPECT_TRUE(exists(state, "loopback6"));
    EXPECT_TRUE(state.changes().settings.empty());
    EXPECT_EQ(configure_loopbacks(state, to_delete, {{"loopback0", "loopback5"}}), PM_ERR_INVALID_RANGE);
    EXPECT_EQ(configure_loopbacks(state, to_delete, {{"loopback0", "loopback16777215"}}), 0u);
    EXPECT_FALSE(exists(state, "loopback6"));
}

TEST(loopback_service, refuses_what_is_no_range_of_loopbacks) {
    switch_state state = state_of(every_kind);
    const named_range bad[] = {{"mgmt0", "mgmt0"},
                               {"loopback3", "loopback2"},
                               {"mgmt0", "loopback2"},
                               {"loopback2", "if254-1"},
                               {"fc1/1", "fc1/1"}};
    for (const uint32_t kind : {to_create, to_delete}) {
        for (const named_range &range : bad) {
            EXPECT_EQ(configure_loopbacks(state, kind, {{"loopback1", "loopback2"}, range}), PM_ERR_INVALID_RANGE)
                << range.first;
            EXPECT_EQ(state.changes(), configuration{});
        }
    }
}

TEST(loopback_service, refuses_malformed_requests) {
    switch_state state = state_of(every_kind);
    const bytes good = loopback_request({{"loopback2", "loopback2"}, {"loopback3", "loopback3"}});
    for (size_t size = 0; size < good.size(); ++size)
        EXPECT_EQ(ask(state, {good.begin(), good.begin() + static_cast<ptrdiff_t>(size)}).failure, PM_ERR_INVALID_PARAM)
            << size;
    bytes longer = good;
    longer.push_back(0);
    EXPECT_EQ(ask(state, longer).failure, PM_ERR_INVALID_PARAM);
    // 8 times this many wraps round to the size of two in 32 bits.
    bytes wrapping = good;
    wrapping[0] = 0x20;
    EXPECT_EQ(ask(state, wrapping).failure, PM_ERR_INVALID_PARAM);
    EXPECT_EQ(ask(state, loopback_request({})).failure, PM_ERR_INVALID_PARAM);
    for (const uint32_t kind : {0u, 1u, 2u, 5u})
        EXPECT_EQ(ask(state, good, kind).failure, PM_ERR_INVALID_PARAM) << kind;
    EXPECT_EQ(state.changes(), configuration{});
}

TEST(loopback_service, is_on_the_sap_of_ethernet_channels) {
    switch_state state = state_of(every_kind);
    for (const uint32_t sap : {43u, 45u, 179u})
        EXPECT_EQ(ask(state, loopback_request({{"loopback2", "loopback2"}}), to_create, sap).failure, PM_ERR_REJECTED);
    EXPECT_FALSE(exists(state, "loopback2"));
}

TEST(loopback_service, has_a_limit) {
    switch_state state = state_of(every_kind);
    EXPECT_EQ(configure_loopbacks(state, to_create, {{"loopback0", "loopback16777215"}}), PM_ERR_REJECTED);
    EXPECT_EQ(configure_loopbacks(state, to_create, {{"loopback2", "loopback1026"}}), PM_ERR_REJECTED);
    EXPECT_EQ(state.changes(), configuration{});
    EXPECT_EQ(configure_loopbacks(state, to_create, {{"loopback2", "loopback1025"}}), 0u);
    EXPECT_EQ(configure_loopbacks(state, to_create, {{"loopback2000", "loopback2000"}}), PM_ERR_REJECTED);
    EXPECT_EQ(configure_loopbacks(state, to_create, {{"loopback2", "loopback2"}}), 0u);
}

}  // namespace
