// SPDX-License-Identifier: Apache-2.0
#include "chassis/chassis_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>

#include "names.h"
#include "protocol/byte_order.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using virtual_switch::chassis_model;
using virtual_switch::parse_chassis;
using virtual_switch::port_kind;

const std::string header = "[chassis]\nname = 'test'\ntype = 6\nslots = 3\n";
const std::string fc_module = "[[module]]\nslot = 1\nkind = 'fc'\nports = 4\n";
const std::string ethernet_module = "[[module]]\nslot = 2\nkind = 'ethernet'\nports = 2\n";

// The first port of a Fibre Channel module that has these settings.
pm_port_info_t fc_port_with(const std::string &settings) {
    return parse_chassis(header + fc_module + settings).find(index_of("fc1/1"))->info;
}

TEST(chassis_file, describes_the_chassis) {
    const chassis_model model = parse_chassis(header);
    EXPECT_EQ(model.name, "test");
    EXPECT_EQ(model.chassis_type, 6u);
    EXPECT_EQ(model.slot_count, 3);
    EXPECT_TRUE(model.ports.empty());
}

TEST(chassis_file, makes_the_ports_of_a_module) {
    const chassis_model model = parse_chassis(header + fc_module);
    EXPECT_EQ(model.ports.size(), 4u);
    EXPECT_EQ(model.find(index_of("fc1/4"))->kind, port_kind::fc);
    EXPECT_EQ(model.find(index_of("fc1/5")), nullptr);
    EXPECT_EQ(model.line_cards.at(0).card_type, 18);
}

TEST(chassis_file, makes_every_kind_of_module) {
    const struct {
        const char *kind;
        const char *first_port;
        port_kind expected;
    } cases[] = {{"fc", "fc1/1", port_kind::fc},
                 {"ethernet", "Ethernet1/1", port_kind::ethernet},
                 {"ips", "if13-1/1", port_kind::ips},
                 {"slot-port", "if11-1/1", port_kind::slot_port},
                 {"ethernet-sfp", "if26-1/1", port_kind::ethernet_sfp}};
    for (const auto &[kind, first_port, expected] : cases) {
        const auto model = parse_chassis(header + "[[module]]\nslot = 1\nports = 1\nkind = '" + kind + "'\n");
        const virtual_switch::port *const made = model.find(index_of(first_port));
        ASSERT_NE(made, nullptr) << kind;
        EXPECT_EQ(made->kind, expected);
    }
}

TEST(chassis_file, takes_the_card_type) {
    EXPECT_EQ(parse_chassis(header + fc_module + "card_type = 77").line_cards.at(0).card_type, 77);
}

TEST(chassis_file, applies_module_settings_to_every_port_and_overrides_to_some) {
    const chassis_model model = parse_chassis(header + fc_module +
                                              "port_vsan = 7\n"
                                              "[[ports]]\nname = 'fc1/2-3'\nport_vsan = 8\n"
                                              "[[ports]]\nname = 'fc1/3'\nport_vsan = 9\n");
    std::vector<uint16_t> vsans;
    for (const auto &[if_index, port] : model.ports) vsans.push_back(port.info.port_vsan);
    EXPECT_THAT(vsans, ElementsAre(7, 8, 9, 7));
}

TEST(chassis_file, reads_lists_of_ranges) {
    const chassis_model model =
        parse_chassis(header + fc_module + ethernet_module + "[[ports]]\nname = 'fc1/1, eth2/1-2 ,fc1/4'\nmtu = 999\n");
    std::vector<if_index_t> changed;
    for (const auto &[if_index, port] : model.ports) {
        if (port.info.mtu == 999) changed.push_back(if_index);
    }
    EXPECT_THAT(changed,
                ElementsAre(index_of("fc1/1"), index_of("fc1/4"), index_of("Ethernet2/1"), index_of("Ethernet2/2")));
}

TEST(chassis_file, sections_may_stand_in_any_order) {
    const chassis_model model = parse_chassis(
        "[[ports]]\nname = 'port-channel1'\nmtu = 999\n"
        "[[port_channel]]\nname = 'port-channel1'\nmembers = 'fc1/1'\n" +
        fc_module + header);
    EXPECT_EQ(model.find(index_of("port-channel1"))->info.mtu, 999u);
}

TEST(chassis_file, reads_every_form_of_value) {
    const pm_port_info_t info = fc_port_with(
        "description = 'a text'\n"
        "admin_mode = 'FX'\n"
        "admin_speed = 4000\n"
        "state_reason = 83\n"
        "ip_address = '10.1.2.3'\n"
        "fcid = 0x010203\n"
        "bb_credit = [1, 2, 3, 4, 5]\n"
        "snmp_trap = ['off']\n"
        "tlv_81 = 0xa1b2c3d4\n"
        "tlv_67 = 255\n");
    EXPECT_STREQ(info.description, "a text");
    EXPECT_EQ(info.admin_mode, 0x60u);
    EXPECT_EQ(info.admin_speed, 4000u);
    EXPECT_EQ(info.state_reason, 83);
    EXPECT_EQ(pm::load_be32(&info.ip_address), 0x0a010203u);
    EXPECT_EQ(pm::load_be32(&info.fcid), 0x010203u);
    EXPECT_EQ(info.bb_credit[0], 1u);
    EXPECT_EQ(info.bb_credit[4], 5u);
    EXPECT_EQ(info.snmp_trap[0], 2);
    EXPECT_EQ(info.snmp_trap[1], 1);
    EXPECT_EQ(pm::load_be32(&info.tlv_81), 0xa1b2c3d4u);
    EXPECT_EQ(info.tlv_67, 255);
}

TEST(chassis_file, reads_words_where_numbers_go_too) {
    EXPECT_EQ(fc_port_with("admin_speed = 'auto max 4000'").admin_speed, 2u);
    EXPECT_EQ(fc_port_with("state_reason = 'sfpErr'").state_reason, 99);
}

TEST(chassis_file, keeps_eighty_bytes_of_text) {
    const std::string longest(80, 'x');
    EXPECT_EQ(fc_port_with("description = '" + longest + "'").description, longest);
}

TEST(chassis_file, says_in_one_word_how_a_port_is) {
    const struct {
        const char *word;
        uint8_t admin_state;
        uint8_t oper_state;
        uint8_t reason;
        uint8_t transceiver;
    } cases[] = {{"up", 1, 1, 2, 1},     {"trunking", 1, 8, 2, 1},       {"testing", 1, 4, 10, 1},
                 {"down", 1, 2, 7, 1},   {"error-disabled", 1, 2, 5, 1}, {"shutdown", 2, 2, 12, 1},
                 {"no-sfp", 1, 2, 29, 0}};
    for (const auto &expected : cases) {
        const pm_port_info_t info = fc_port_with(std::string("state = '") + expected.word + "'");
        EXPECT_EQ(info.admin_state, expected.admin_state) << expected.word;
        EXPECT_EQ(info.oper_state, expected.oper_state) << expected.word;
        EXPECT_EQ(info.state_reason, expected.reason) << expected.word;
        EXPECT_EQ(info.fcot_present, expected.transceiver) << expected.word;
    }
}

TEST(chassis_file, binds_channels_and_members) {
    const chassis_model model = parse_chassis(header + fc_module + ethernet_module +
                                              "[[port_channel]]\nname = 'port-channel1'\nmembers = 'fc1/3, fc1/1'\n"
                                              "[[port_channel]]\nname = 'if22-2'\nmembers = 'Ethernet2/1-2'\n"
                                              "[[port_channel]]\nname = 'port-channel3'\n");
    EXPECT_THAT(model.members.at(index_of("port-channel1")), ElementsAre(index_of("fc1/3"), index_of("fc1/1")));
    EXPECT_EQ(model.find(index_of("fc1/3"))->info.parent_if_index, index_of("port-channel1"));
    EXPECT_EQ(model.find(index_of("port-channel1"))->kind, port_kind::fc_channel);
    EXPECT_EQ(model.find(index_of("if22-2"))->kind, port_kind::ethernet_channel);
    EXPECT_EQ(model.find(index_of("port-channel3"))->kind, port_kind::fc_channel);
    EXPECT_TRUE(model.members.at(index_of("port-channel3")).empty());
}

TEST(chassis_file, lets_tunnels_join_fibre_channel_ports) {
    const chassis_model model = parse_chassis(header + fc_module +
                                              "[[module]]\nslot = 3\nkind = 'ips'\nports = 2\n"
                                              "[[fcip]]\nname = 'fcip7'\nslot = 3\nport = 2\n"
                                              "[[port_channel]]\nname = 'port-channel1'\nmembers = 'fc1/1, fcip7'\n");
    EXPECT_EQ(model.members.at(index_of("port-channel1")).size(), 2u);
}

TEST(chassis_file, places_tunnels_on_a_port_of_their_module) {
    const struct {
        const char *card_type;
        uint8_t port_base;
    } cases[] = {{"41", 26}, {"43", 26}, {"22", 22}, {"28", 22}, {"44", 8}};
    for (const auto &[card_type, port_base] : cases) {
        const chassis_model model =
            parse_chassis(header + "[[module]]\nslot = 3\nkind = 'ips'\nports = 4\ncard_type = " + card_type +
                          "\n[[fcip]]\nname = 'fcip7'\nslot = 3\nport = 3\n");
        const virtual_switch::port *const tunnel = model.find(index_of("fcip7"));
        EXPECT_EQ(tunnel->place.node, 0x302u);
        EXPECT_EQ(tunnel->place.slot, 2);
        EXPECT_EQ(tunnel->place.port_base, port_base) << card_type;
    }
}

TEST(chassis_file, makes_sub_interfaces_and_interfaces_of_the_supervisor) {
    const chassis_model model = parse_chassis(header + ethernet_module +
                                              "[[interface]]\nname = 'mgmt0, loopback1-2, if254-9'\n"
                                              "[[sub_interface]]\nname = 'Ethernet2/1.100-102'\n");
    EXPECT_EQ(model.ports.size(), 9u);
    EXPECT_EQ(model.find(index_of("if254-9"))->kind, port_kind::other);
    EXPECT_EQ(model.find(index_of("mgmt0"))->place.node, 0xfe000000u);
    EXPECT_EQ(model.find(index_of("Ethernet2/1.102"))->kind, port_kind::sub_interface);
}

class chassis_file_on_disk : public testing::Test {
  protected:
    chassis_file_on_disk() { EXPECT_NE(mkdtemp(folder_.data()), nullptr); }
    ~chassis_file_on_disk() override { std::filesystem::remove_all(folder_); }

    // Writes the file and returns what loading it complains about.
    std::string complaint_about(const std::string &text) {
        std::ofstream(path()) << text;
        return complaint();
    }
    std::string complaint() {
        try {
            virtual_switch::load_chassis(path());
        } catch (const std::runtime_error &error) {
            return error.what();
        }
        return "";
    }
    [[nodiscard]] std::string path() const { return folder_ + "/c.toml"; }

  private:
    std::string folder_ = "/tmp/pm-vs-XXXXXX";
};

TEST_F(chassis_file_on_disk, is_loaded) {
    EXPECT_EQ(complaint_about(header + fc_module), "");
    EXPECT_EQ(virtual_switch::load_chassis(path()).ports.size(), 4u);
}

TEST_F(chassis_file_on_disk, is_named_with_the_line_of_a_mistake) {
    EXPECT_EQ(complaint_about(header + "[[module]]\nslot = 4\n"), path() + ":6: module.slot: 4 is not in 1 to 3");
}

TEST_F(chassis_file_on_disk, may_be_as_large_as_a_mebibyte) {
    std::string text = header + "#";
    text.resize(1024 * 1024, 'x');
    EXPECT_EQ(complaint_about(text), "");
    EXPECT_EQ(complaint_about(text + "x"), path() + ":1: file: is larger than 1 MiB");
}

TEST_F(chassis_file_on_disk, must_exist) { EXPECT_EQ(complaint(), path() + ":1: file: No such file or directory"); }

TEST_F(chassis_file_on_disk, must_not_be_a_folder) {
    std::filesystem::create_directory(path());
    EXPECT_EQ(complaint(), path() + ":1: file: is no regular file");
}

}  // namespace
