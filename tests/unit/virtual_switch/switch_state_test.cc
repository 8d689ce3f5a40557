// SPDX-License-Identifier: Apache-2.0
// The configuration on top of a chassis, and the state that brings both together.
#include "chassis/switch_state.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "chassis/chassis_file.h"
#include "names.h"
#include "port_mgr/config_attribute.h"

namespace {

using testing::ElementsAre;
using virtual_switch::chassis_model;
using virtual_switch::configuration;
using virtual_switch::configured;
using virtual_switch::parse_chassis;
using virtual_switch::switch_state;

const std::string header = "[chassis]\nname = 'test'\ntype = 6\nslots = 2\n";
const std::string ethernet = "[[module]]\nslot = 1\nkind = 'ethernet'\nports = 2\n";
const std::string fc = "[[module]]\nslot = 2\nkind = 'fc'\nports = 2\n";
const std::string sub_interface = "[[sub_interface]]\nname = 'Ethernet1/1.5'\nmtu = 9000\n";
const std::string channel_of_ethernet = "[[port_channel]]\nname = 'port-channel1'\nmembers = 'Ethernet1/2'\n";
const std::string channel_of_fc = "[[port_channel]]\nname = 'port-channel1'\nmembers = 'fc2/1'\n";

bool has(const chassis_model &model, const char *name) { return model.find(index_of(name)) != nullptr; }

const pm_port_info_t &info(const chassis_model &model, const char *name) { return model.ports.at(index_of(name)).info; }

TEST(configuration, names_what_is_not_there_for_later) {
    configuration changes;
    changes.create(index_of("Ethernet1/1.7"));
    changes.create(index_of("port-channel1.7"));
    changes.settings[index_of("Ethernet1/1.7")][PM_ATTR_MTU] = 100u;
    changes.settings[index_of("port-channel1")][PM_ATTR_DUPLEX] = 1u;
    changes.settings[index_of("fc2/1")][PM_ATTR_MTU] = 200u;
    const chassis_model nothing = configured(parse_chassis(header), changes);
    EXPECT_TRUE(nothing.ports.empty());
    // A Fibre Channel one has neither sub-interfaces nor a duplex mode.
    const chassis_model with_fc = configured(parse_chassis(header + fc + channel_of_fc), changes);
    EXPECT_FALSE(has(with_fc, "port-channel1.7"));
    EXPECT_EQ(info(with_fc, "port-channel1").duplex, 0);
    EXPECT_EQ(info(with_fc, "fc2/1").mtu, 200u);
    const chassis_model with_ethernet = configured(parse_chassis(header + ethernet + channel_of_ethernet), changes);
    EXPECT_EQ(info(with_ethernet, "Ethernet1/1.7").mtu, 100u);
    EXPECT_TRUE(has(with_ethernet, "port-channel1.7"));
    EXPECT_EQ(info(with_ethernet, "port-channel1").duplex, 1);
}

TEST(configuration, deletes_and_creates_again) {
    const chassis_model chassis = parse_chassis(header + ethernet + sub_interface);
    const if_index_t of_file = index_of("Ethernet1/1.5");
    const if_index_t created = index_of("Ethernet1/1.6");
    configuration changes;
    changes.create(created);
    changes.settings[of_file][PM_ATTR_MTU] = 100u;
    changes.remove(of_file, chassis);
    changes.remove(created, chassis);
    EXPECT_THAT(changes.deleted, ElementsAre(of_file));
    EXPECT_TRUE(changes.created.empty());
    EXPECT_TRUE(changes.settings.empty());
    EXPECT_FALSE(has(configured(chassis, changes), "Ethernet1/1.5"));
    changes.create(of_file);
    EXPECT_EQ(info(configured(chassis, changes), "Ethernet1/1.5").mtu, 1500u);
    changes.remove(of_file, chassis);
    EXPECT_FALSE(has(configured(chassis, changes), "Ethernet1/1.5"));
}

// What a created interface is called in a chassis file later on is what the file says.
TEST(configuration, leaves_what_the_file_has_by_now) {
    configuration changes;
    changes.create(index_of("Ethernet1/1.5"));
    EXPECT_EQ(info(configured(parse_chassis(header + ethernet + sub_interface), changes), "Ethernet1/1.5").mtu, 9000u);
}

// Outlets that fail when told to, and count.
struct outlets {
    size_t published = 0;  // ports of the model published last
    int publications = 0;
    int kept = 0;
    bool refuse_publication = false;
    bool refuse_keeping = false;

    switch_state::outlets functions() {
        return {[this](const chassis_model &model) {
                    ++publications;
                    if (refuse_publication) throw std::runtime_error("no room");
                    published = model.ports.size();
                },
                [this](const configuration &) {
                    if (refuse_keeping) throw std::runtime_error("no disk");
                    ++kept;
                }};
    }
};

configuration with_loopback(const char *name) {
    configuration changes;
    changes.create(index_of(name));
    return changes;
}

TEST(switch_state, publishes_what_it_starts_with) {
    outlets to;
    const switch_state state(parse_chassis(header + ethernet), with_loopback("loopback1"), to.functions());
    EXPECT_TRUE(has(state.model(), "loopback1"));
    EXPECT_FALSE(has(state.chassis(), "loopback1"));
    EXPECT_EQ(to.published, 3u);
    EXPECT_EQ(to.kept, 0);
}

TEST(switch_state, publishes_and_keeps_changes) {
    outlets to;
    switch_state state(parse_chassis(header + ethernet), {}, to.functions());
    EXPECT_TRUE(state.change(with_loopback("loopback1")));
    EXPECT_TRUE(has(state.model(), "loopback1"));
    EXPECT_EQ(state.changes(), with_loopback("loopback1"));
    EXPECT_EQ(to.published, 3u);
    EXPECT_EQ(to.kept, 1);
    EXPECT_TRUE(state.change(with_loopback("loopback1")));
    EXPECT_EQ(to.kept, 1);
}

TEST(switch_state, changes_nothing_when_an_outlet_fails) {
    for (bool outlets::*refuse : {&outlets::refuse_publication, &outlets::refuse_keeping}) {
        outlets to;
        switch_state state(parse_chassis(header + ethernet), {}, to.functions());
        to.*refuse = true;
        testing::internal::CaptureStderr();
        EXPECT_FALSE(state.change(with_loopback("loopback1")));
        EXPECT_THAT(testing::internal::GetCapturedStderr(),
                    testing::MatchesRegex("pm-virtual-switch: not configured: no (room|disk)\n"));
        EXPECT_FALSE(has(state.model(), "loopback1"));
        EXPECT_EQ(state.changes(), configuration{});
        EXPECT_EQ(to.published, 2u);
        EXPECT_EQ(to.kept, 0);
        to.*refuse = false;
        EXPECT_TRUE(state.change(with_loopback("loopback1")));
    }
}

TEST(switch_state, keeps_its_configuration_across_a_reload) {
    outlets to;
    switch_state state(parse_chassis(header + ethernet + sub_interface), {}, to.functions());
    configuration changes = with_loopback("loopback1");
    changes.create(index_of("Ethernet1/2.8"));
    changes.remove(index_of("Ethernet1/1.5"), state.chassis());
    changes.settings[index_of("Ethernet1/1")][PM_ATTR_MTU] = 100u;
    ASSERT_TRUE(state.change(changes));
    state.reload(parse_chassis(header + fc));
    EXPECT_EQ(state.model().ports.size(), 3u);
    EXPECT_EQ(to.published, 3u);
    state.reload(parse_chassis(header + ethernet + sub_interface + fc));
    EXPECT_EQ(state.changes(), changes);
    EXPECT_EQ(info(state.model(), "Ethernet1/1").mtu, 100u);
    EXPECT_TRUE(has(state.model(), "Ethernet1/2.8"));
    EXPECT_FALSE(has(state.model(), "Ethernet1/1.5"));
    EXPECT_TRUE(has(state.model(), "fc2/1"));
    EXPECT_EQ(to.kept, 1);
    EXPECT_TRUE(state.change({}));
    EXPECT_TRUE(has(state.model(), "fc2/1"));
}

TEST(switch_state, keeps_the_chassis_that_it_had_when_another_cannot_be_published) {
    outlets to;
    switch_state state(parse_chassis(header + ethernet), {}, to.functions());
    to.refuse_publication = true;
    EXPECT_THROW(state.reload(parse_chassis(header + fc)), std::runtime_error);
    EXPECT_TRUE(has(state.model(), "Ethernet1/1"));
    EXPECT_TRUE(has(state.chassis(), "Ethernet1/1"));
}

}  // namespace
