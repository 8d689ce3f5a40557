// SPDX-License-Identifier: Apache-2.0
// What clients change: it shows in the next query, and what is refused changes nothing.
#include <algorithm>
#include <fstream>
#include <iterator>

#include "configuration_client.h"
#include "port_mgr/status.h"
#include "support/captured_stdout.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr uint8_t up = 1;
constexpr uint8_t down = 2;
constexpr uint8_t administratively_down = 12;
constexpr uint8_t parent_down = 26;
constexpr uint8_t no_operational_members = 43;

const attribute_value shut_down = byte_value(PM_ATTR_ADMIN_STATE, down);
const attribute_value bring_up = byte_value(PM_ATTR_ADMIN_STATE, up);

class configuration : public virtual_switch_test {
  protected:
    virtual_switch_process daemon_{every_kind};
    configuration_client client_;
};

// Each attribute on a port that has it, and on one that has not

struct attribute_case {
    const char *what;
    const char *port;
    attribute_value value;
    uint32_t (*shown)(const pm_port_info_t &);
    uint32_t number;
    const char *other_kind;  // that has no such attribute, or null when all have it
    attribute_value bad;     // empty when every value is good
};

void PrintTo(const attribute_case &tested, std::ostream *to) { *to << tested.what; }

#define SHOWN(member) [](const pm_port_info_t &record) { return uint32_t{record.member}; }

const attribute_case attribute_cases[] = {
    {"admin_state", "fc1/3", shut_down, SHOWN(admin_state), 2, nullptr, byte_value(PM_ATTR_ADMIN_STATE, 3)},
    {"port_mode", "fc1/3", word_value(PM_ATTR_PORT_MODE, 0x4), SHOWN(admin_mode), 0x4, "loopback1",
     word_value(PM_ATTR_PORT_MODE, 3)},
    {"speed", "fc1/3", word_value(PM_ATTR_SPEED, 16000), SHOWN(admin_speed), 16000, "loopback1",
     word_value(PM_ATTR_SPEED, 400001)},
    {"trunk_mode", "fc1/3", byte_value(PM_ATTR_TRUNK_MODE, 3), SHOWN(admin_trunk_mode), 3, "mgmt0",
     byte_value(PM_ATTR_TRUNK_MODE, 4)},
    {"beacon_mode", "fc1/3", byte_value(PM_ATTR_BEACON_MODE, 1), SHOWN(beacon_mode), 1, "Ethernet2/4.9",
     byte_value(PM_ATTR_BEACON_MODE, 0)},
    {"rx_buf_size", "fc1/3", short_value(PM_ATTR_RX_BUF_SIZE, 1024), SHOWN(rx_buf_size), 1024, "Ethernet2/3", {}},
    {"rx_bb_credit", "fc1/3", word_value(PM_ATTR_RX_BB_CREDIT, 250), SHOWN(bb_credit[0]), 250, "Ethernet2/3", {}},
    {"rate_mode", "fc1/3", byte_value(PM_ATTR_RATE_MODE, 2), SHOWN(rate_mode), 2, "Ethernet2/3",
     byte_value(PM_ATTR_RATE_MODE, 3)},
    {"port_vsan", "fc1/3", short_value(PM_ATTR_PORT_VSAN, 4093), SHOWN(port_vsan), 4093, "Ethernet2/3",
     short_value(PM_ATTR_PORT_VSAN, 4094)},
    {"duplex", "Ethernet2/3", byte_value(PM_ATTR_DUPLEX, 1), SHOWN(duplex), 1, "fc1/3", byte_value(PM_ATTR_DUPLEX, 4)},
    {"auto_neg", "Ethernet2/3", word_value(PM_ATTR_AUTO_NEG, 2), SHOWN(auto_neg), 2, "fc1/3",
     word_value(PM_ATTR_AUTO_NEG, 3)},
    {"mtu", "Ethernet2/3", word_value(PM_ATTR_MTU, 9216), SHOWN(mtu), 9216, nullptr, word_value(PM_ATTR_MTU, 65536)},
    {"bandwidth", "Ethernet2/3", word_value(PM_ATTR_BANDWIDTH, 4321), SHOWN(bandwidth), 4321, nullptr, {}},
    {"down_on_link_failure", "fc1/3", byte_value(PM_ATTR_DOWN_ON_LINK_FAILURE, 3), SHOWN(down_on_link_failure), 3,
     "loopback1", byte_value(PM_ATTR_DOWN_ON_LINK_FAILURE, 1)},
};

#undef SHOWN

std::vector<attribute_case> cases_where(bool (*holds)(const attribute_case &)) {
    std::vector<attribute_case> cases;
    std::copy_if(std::begin(attribute_cases), std::end(attribute_cases), std::back_inserter(cases), holds);
    return cases;
}

std::string name_of_case(const testing::TestParamInfo<attribute_case> &instance) { return instance.param.what; }

class attribute : public configuration, public testing::WithParamInterface<attribute_case> {};
class attribute_with_bad_values : public attribute {};
class attribute_of_some_kinds : public attribute {};

INSTANTIATE_TEST_SUITE_P(each, attribute, testing::ValuesIn(attribute_cases), name_of_case);
INSTANTIATE_TEST_SUITE_P(each, attribute_with_bad_values,
                         testing::ValuesIn(cases_where([](const auto &each) { return !each.bad.bytes.empty(); })),
                         name_of_case);
INSTANTIATE_TEST_SUITE_P(each, attribute_of_some_kinds,
                         testing::ValuesIn(cases_where([](const auto &each) { return each.other_kind != nullptr; })),
                         name_of_case);

TEST_P(attribute, shows_in_the_next_query_and_in_the_configuration) {
    const attribute_case &tested = GetParam();
    ASSERT_NE(tested.shown(client_.record(tested.port)), tested.number);
    EXPECT_EQ(client_.set(tested.port, tested.value), (set_outcome{0, {{tested.port, 0}}}));
    EXPECT_EQ(tested.shown(client_.record(tested.port)), tested.number);
    const auto configured = client_.configuration({range_of(tested.port, tested.port)});
    ASSERT_EQ(configured.records.size(), 1u);
    EXPECT_EQ(tested.shown(configured.records[0]), tested.number);
}

TEST_P(attribute_with_bad_values, changes_nothing_for_one) {
    const attribute_case &tested = GetParam();
    const uint32_t before = tested.shown(client_.record(tested.port));
    EXPECT_EQ(client_.set(tested.port, tested.bad),
              (set_outcome{PM_ERR_INVALID_PARAM, {{tested.port, PM_ERR_INVALID_PARAM}}}));
    EXPECT_EQ(tested.shown(client_.record(tested.port)), before);
}

TEST_P(attribute_of_some_kinds, is_refused_by_the_others) {
    const attribute_case &tested = GetParam();
    const uint32_t before = tested.shown(client_.record(tested.other_kind));
    EXPECT_EQ(client_.set(tested.other_kind, tested.value),
              (set_outcome{PM_ERR_REJECTED, {{tested.other_kind, PM_ERR_REJECTED}}}));
    EXPECT_EQ(tested.shown(client_.record(tested.other_kind)), before);
}

TEST_F(configuration, sets_descriptions_of_at_most_80_characters) {
    const std::string longest(80, 'd');
    EXPECT_EQ(client_.set("mgmt0", description(longest)), (set_outcome{0, {{"mgmt0", 0}}}));
    EXPECT_STREQ(client_.record("mgmt0").description, longest.c_str());
    EXPECT_EQ(client_.set("mgmt0", description(longest + "!")).status, PM_ERR_INVALID_PARAM);
    EXPECT_STREQ(client_.record("mgmt0").description, longest.c_str());
    EXPECT_EQ(client_.set("mgmt0", description("")).status, 0u);
    EXPECT_STREQ(client_.record("mgmt0").description, "");
}

// Several interfaces at once

TEST_F(configuration, tells_of_each_interface_and_changes_those_that_can) {
    const set_outcome outcome =
        client_.set({range_of("fc1/3", "fc1/4"), range_of("Ethernet2/3", "Ethernet2/3"), range_of("fc5/1", "fc5/9")},
                    word_value(PM_ATTR_SPEED, 4000));
    EXPECT_EQ(outcome, (set_outcome{PM_ERR_REJECTED,
                                    {{"fc1/3", 0},
                                     {"fc1/4", 0},
                                     {"Ethernet2/3", PM_ERR_REJECTED},  // another service's
                                     {"fc5/1", PM_ERR_INVALID_RANGE}}}));
    EXPECT_EQ(client_.record("fc1/4").admin_speed, 4000u);
    EXPECT_EQ(client_.record("Ethernet2/3").admin_speed, 0u);
}

TEST_F(configuration, refuses_attributes_that_it_does_not_implement) {
    EXPECT_EQ(client_.set("fc1/3", byte_value(34, 1)), (set_outcome{PM_ERR_REJECTED, {{"fc1/3", PM_ERR_REJECTED}}}));
}

TEST_F(configuration, refuses_a_value_of_another_length) {
    attribute_value value = word_value(PM_ATTR_SPEED, 4000);
    value.bytes.resize(9);
    EXPECT_EQ(client_.set("fc1/3", value), (set_outcome{PM_ERR_TLV, {}}));
    EXPECT_EQ(client_.record("fc1/3").admin_speed, 0u);
}

// Operation follows

TEST_F(configuration, takes_a_port_down_and_brings_it_up_again) {
    ASSERT_EQ(client_.set("fc1/3", shut_down).status, 0u);
    EXPECT_EQ(client_.record("fc1/3").oper_state, down);
    EXPECT_EQ(client_.record("fc1/3").state_reason, administratively_down);
    ASSERT_EQ(client_.set("fc1/3", bring_up).status, 0u);
    EXPECT_EQ(client_.record("fc1/3").oper_state, up);
    EXPECT_NE(client_.record("fc1/3").state_reason, administratively_down);
}

TEST_F(configuration, takes_a_channel_down_with_its_last_member) {
    ASSERT_EQ(client_.record("port-channel1").oper_state, up);
    ASSERT_EQ(client_.set("fc1/1", shut_down).status, 0u);
    EXPECT_EQ(client_.record("port-channel1").oper_state, down);
    EXPECT_EQ(client_.record("port-channel1").state_reason, no_operational_members);
    ASSERT_EQ(client_.set("fc1/1", bring_up).status, 0u);
    EXPECT_EQ(client_.record("port-channel1").oper_state, up);
}

TEST_F(configuration, gives_a_channel_the_speed_of_its_members) {
    ASSERT_EQ(client_.set("fc1/1", word_value(PM_ATTR_SPEED, 2000)).status, 0u);
    EXPECT_EQ(client_.record("fc1/1").oper_speed, 2000u);
    EXPECT_EQ(client_.record("port-channel1").oper_speed, 2000u);
}

TEST_F(configuration, takes_sub_interfaces_down_with_their_channel) {
    ASSERT_EQ(client_.record("port-channel2.7").oper_state, up);
    ASSERT_EQ(client_.set("port-channel2", shut_down).status, 0u);
    EXPECT_EQ(client_.record("port-channel2").state_reason, administratively_down);
    EXPECT_EQ(client_.record("port-channel2.7").oper_state, down);
    EXPECT_EQ(client_.record("port-channel2.7").state_reason, parent_down);
}

TEST_F(configuration, lets_the_bandwidth_follow_from_the_speed_again) {
    const auto configured = [&] { return client_.configuration({range_of("fc1/3", "fc1/3")}).records.at(0).bandwidth; };
    const uint32_t derived = client_.record("fc1/3").bandwidth;
    EXPECT_NE(derived, 0u);
    EXPECT_EQ(configured(), 0u);
    ASSERT_EQ(client_.set("fc1/3", word_value(PM_ATTR_BANDWIDTH, 77)).status, 0u);
    EXPECT_EQ(client_.record("fc1/3").bandwidth, 77u);
    EXPECT_EQ(configured(), 77u);
    ASSERT_EQ(client_.set("fc1/3", word_value(PM_ATTR_BANDWIDTH, 0)).status, 0u);
    EXPECT_EQ(client_.record("fc1/3").bandwidth, derived);
}

// Sub-interfaces and loopbacks

TEST_F(configuration, creates_and_deletes_sub_interfaces) {
    EXPECT_EQ(client_.config_sub_interfaces(true, {range_of("Ethernet2/1.10", "Ethernet2/1.12")}), 0u);
    EXPECT_THAT(names_of(client_.range("Ethernet2/1.2", "Ethernet2/1.4093").records),
                ElementsAre("Ethernet2/1.10", "Ethernet2/1.11", "Ethernet2/1.12"));
    EXPECT_EQ(client_.config_sub_interfaces(false, {range_of("Ethernet2/1.11", "Ethernet2/1.11")}), 0u);
    EXPECT_THAT(names_of(client_.range("Ethernet2/1.2", "Ethernet2/1.4093").records),
                ElementsAre("Ethernet2/1.10", "Ethernet2/1.12"));
}

TEST_F(configuration, creates_sub_interfaces_of_several_main_interfaces_or_of_none) {
    EXPECT_EQ(client_.config_sub_interfaces(
                  true, {range_of("Ethernet2/1.10", "Ethernet2/1.10"), range_of("port-channel2.8", "port-channel2.9"),
                         range_of("port-channel2.20", "port-channel2.20")}),
              0u);
    EXPECT_TRUE(client_.exists("Ethernet2/1.10"));
    EXPECT_TRUE(client_.exists("port-channel2.20"));
    EXPECT_EQ(client_.config_sub_interfaces(
                  true, {range_of("Ethernet2/1.30", "Ethernet2/1.30"), range_of("Ethernet2/2.1", "Ethernet2/2.2")}),
              PM_ERR_INVALID_PARAM);
    EXPECT_FALSE(client_.exists("Ethernet2/1.30"));
    EXPECT_FALSE(client_.exists("Ethernet2/2.2"));
}

TEST_F(configuration, creates_no_sub_interfaces_where_there_can_be_none) {
    EXPECT_EQ(client_.config_sub_interfaces(true, {range_of("port-channel1.5", "port-channel1.5")}),
              PM_ERR_INVALID_RANGE);
    EXPECT_EQ(client_.config_sub_interfaces(true, {range_of("Ethernet4/1.5", "Ethernet4/1.5")}), PM_ERR_INVALID_RANGE);
    EXPECT_EQ(client_.config_sub_interfaces(false, {range_of("Ethernet2/1.5", "Ethernet2/1.5")}), PM_ERR_INVALID_RANGE);
}

TEST_F(configuration, gives_an_interface_the_sub_interfaces_of_an_agents_bitmap) {
    pm_snmp_sub_intf_t record{};
    record.main = index_of("Ethernet2/4");  // which has 9
    record.bitmap[1] = 0x01;                // 15
    record.bitmap[511] = 0x20;              // 4090
    EXPECT_EQ(pm_snmp_config_sub_interface(client_.handle(), &record, configuration_wait), 0u);
    EXPECT_THAT(names_of(client_.range("Ethernet2/4.2", "Ethernet2/4.4093").records),
                ElementsAre("Ethernet2/4.15", "Ethernet2/4.4090"));
}

TEST_F(configuration, configures_a_sub_interface_that_was_created) {
    ASSERT_EQ(client_.config_sub_interfaces(true, {range_of("port-channel2.8", "port-channel2.8")}), 0u);
    EXPECT_EQ(client_.set("port-channel2.8", description("uplink")).status, 0u);
    EXPECT_STREQ(client_.record("port-channel2.8").description, "uplink");
    EXPECT_EQ(client_.set("port-channel2.8", shut_down).status, 0u);
    EXPECT_EQ(client_.record("port-channel2.8").state_reason, administratively_down);
    support::captured_stdout printed;
    EXPECT_EQ(client_.set("port-channel2.8", word_value(PM_ATTR_PORT_MODE, 1)).status, PM_ERR_FAILURE);
    EXPECT_EQ(printed.take(), "Error configuring invalid parameter on ether-channel sub-interface\n");
}

TEST_F(configuration, creates_and_deletes_loopbacks) {
    EXPECT_EQ(client_.config_loopbacks(true, {range_of("loopback7", "loopback9")}), 0u);
    EXPECT_EQ(client_.record("loopback8").oper_state, up);
    EXPECT_EQ(client_.config_loopbacks(false, {range_of("loopback1", "loopback1"), range_of("loopback8", "loopback8")}),
              0u);
    EXPECT_FALSE(client_.exists("loopback1"));
    EXPECT_FALSE(client_.exists("loopback8"));
    EXPECT_TRUE(client_.exists("loopback9"));
    EXPECT_EQ(client_.config_loopbacks(false, {range_of("loopback8", "loopback8")}), PM_ERR_INVALID_RANGE);
    EXPECT_EQ(client_.config_loopbacks(true, {range_of("fc1/1", "fc1/2")}), PM_ERR_INVALID_RANGE);
}

// Modules

TEST_F(configuration, lists_the_interfaces_of_a_module) {
    EXPECT_THAT(names_of(client_.module(1, "fc1/1").records), ElementsAre("fc1/1", "fc1/2", "fc1/3", "fc1/4"));
    EXPECT_THAT(names_of(client_.module(2, "Ethernet1/1").records),
                ElementsAre("Ethernet2/1", "Ethernet2/2", "Ethernet2/3", "Ethernet2/4", "Ethernet2/4.9"));
    EXPECT_THAT(names_of(client_.module(5, "if26-1/1").records), ElementsAre("if26-5/1", "if26-5/2"));
    const auto none = client_.module(1, "Ethernet1/1");
    EXPECT_EQ(none.status, 0u);
    EXPECT_THAT(none.records, IsEmpty());
    EXPECT_EQ(client_.module(0, "fc1/1").status, PM_ERR_INVALID_RANGE);
    EXPECT_EQ(client_.module(6, "fc1/1").status, PM_ERR_INVALID_RANGE);
}

// A channel's configuration is had from either service

TEST_F(configuration, of_a_channel_is_told_by_the_owner_of_its_members) {
    for (const char *channel : {"port-channel1", "port-channel2", "if22-3", "if22-4"}) {
        const auto configured = client_.configuration({range_of(channel, channel)}, PM_CONFIG_GET_BY_MEMBER);
        EXPECT_EQ(configured.status, 0u) << channel;
        EXPECT_THAT(names_of(configured.records), ElementsAre(channel));
    }
}

// On every kind of chassis, whatever its routes, what can be set is set or nothing is said to have been done

class chassis_type : public virtual_switch_test, public testing::WithParamInterface<int> {};

INSTANTIATE_TEST_SUITE_P(each, chassis_type, testing::Values(4, 5, 6, 10, 11), testing::PrintToStringParamName());

TEST_P(chassis_type, takes_ethernet_attributes_of_every_kind_of_interface) {
    const std::string file = directory_.file("chassis.toml");
    std::ifstream original(every_kind);
    std::string text((std::istreambuf_iterator<char>(original)), {});
    text.replace(text.find("type = 6"), 8, "type = " + std::to_string(GetParam()));
    std::ofstream(file) << text;
    const virtual_switch_process daemon(file);
    const configuration_client client;
    for (const char *name :
         {"fc1/3", "Ethernet2/3", "if13-3/1", "if11-4/1", "if26-5/1", "mgmt0", "loopback1", "if254-1", "fcip1",
          "port-channel1", "port-channel2", "if22-3", "if22-4", "port-channel5"}) {
        EXPECT_EQ(client.set(name, description("told")), (set_outcome{0, {{name, 0}}}));
        EXPECT_STREQ(client.record(name).description, "told") << name;
        EXPECT_EQ(client.set(name, shut_down), (set_outcome{0, {{name, 0}}}));
        EXPECT_EQ(client.record(name).state_reason, administratively_down) << name;
    }
}

TEST_F(configuration, sends_nothing_about_attributes_that_only_go_first) {
    EXPECT_EQ(client_.set("port-channel1", word_value(51, 1)), (set_outcome{0, {}}));
}

}  // namespace
