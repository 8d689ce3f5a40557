// SPDX-License-Identifier: Apache-2.0
// Every mistake that a chassis file can make, and the line that reports it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "chassis/chassis_file.h"

namespace {

// The first line of `text` is line 18.
const std::string good = R"([chassis]
name = "test"
type = 6
slots = 4
[[module]]
slot = 1
kind = "fc"
ports = 4
[[module]]
slot = 2
kind = "ethernet"
ports = 2
[[module]]
slot = 3
kind = "ips"
ports = 2
)";

std::string complaint(const std::string &text) {
    try {
        virtual_switch::parse_chassis(text);
    } catch (const std::runtime_error &error) {
        return error.what();
    }
    return "";
}

struct bad_file {
    const char *text;
    const char *complaint;
};

void PrintTo(const bad_file &bad, std::ostream *out) { *out << bad.complaint; }

class chassis_file_mistakes : public testing::TestWithParam<bad_file> {};

TEST_P(chassis_file_mistakes, are_reported) {
    EXPECT_EQ(complaint(good), "");
    EXPECT_EQ(complaint(good + GetParam().text), GetParam().complaint);
}

const bad_file bad_sections[] = {
    {"[[modul]]", "17: modul: unknown section; did you mean 'module'?"},
    {"[[quite_different]]", "17: quite_different: unknown section"},
    {"[module]", "17: TOML: Error while parsing table header: cannot redefine existing array 'module' as table"},
    {"[ports]\nname = 'fc1/1'", "17: ports: must be written [[ports]]"},
    {"ports = 7", "17: TOML: Error while parsing key-value pair: cannot redefine existing integer 'ports'"},
    {"[[ports]]", "17: ports.name: is missing"},
    {"[[ports]]\nnames = 'fc1/1'", "18: ports.names: unknown key; did you mean 'name'?"},
    {"[[ports]]\nname = 'fc1/1'\nadmin_sped = 1", "19: ports.admin_sped: unknown key; did you mean 'admin_speed'?"},
    {"[[ports]]\nname = 'fc1/1'\nxyzzy = 1", "19: ports.xyzzy: unknown key"},
};

const bad_file bad_values[] = {
    {"[[ports]]\nname = 7", "18: ports.name: must be a text, not a number"},
    {"[[ports]]\nname = 'fc1/1'\nmtu = '9'", "19: ports.mtu: must be a number, not a text"},
    {"[[ports]]\nname = 'fc1/1'\nmtu = 9.5", "19: ports.mtu: must be a number, not a number with a fraction"},
    {"[[ports]]\nname = 'fc1/1'\nmtu = true", "19: ports.mtu: must be a number, not true or false"},
    {"[[ports]]\nname = 'fc1/1'\nmtu = 2020-01-01", "19: ports.mtu: must be a number, not a date or time"},
    {"[[ports]]\nname = 'fc1/1'\nmtu = []", "19: ports.mtu: must be a number, not an array"},
    {"[[ports]]\nname = 'fc1/1'\nmtu = {}", "19: ports.mtu: must be a number, not a table"},
    {"[[ports]]\nname = 'fc1/1'\nmtu = 63", "19: ports.mtu: 63 is not in 64 to 65535"},
    {"[[ports]]\nname = 'fc1/1'\nport_vsan = 4094", "19: ports.port_vsan: 4094 is not in 1 to 4093"},
    {"[[ports]]\nname = 'fc1/1'\nport_vsan = -1", "19: ports.port_vsan: -1 is not in 1 to 4093"},
    {"[[ports]]\nname = 'fc1/1'\nbandwidth = 4294967296", "19: ports.bandwidth: 4294967296 is not in 0 to 4294967295"},
    {"[[ports]]\nname = 'fc1/1'\nfcid = 0x1000000", "19: ports.fcid: 16777216 is not in 0 to 16777215"},
    {"[[ports]]\nname = 'fc1/1'\nadmin_mode = 'e'", "19: ports.admin_mode: unknown word 'e'; did you mean 'E'?"},
    {"[[ports]]\nname = 'fc1/1'\nadmin_mode = 'nothing'", "19: ports.admin_mode: unknown word 'nothing'"},
    {"[[ports]]\nname = 'fc1/1'\nadmin_mode = 4", "19: ports.admin_mode: must be a text, not a number"},
    {"[[ports]]\nname = 'fc1/1'\nadmin_speed = 9", "19: ports.admin_speed: 9 is not in 10 to 400000"},
    {"[[ports]]\nname = 'fc1/1'\nadmin_speed = 'atuo'",
     "19: ports.admin_speed: unknown word 'atuo'; did you mean 'auto'?"},
    {"[[ports]]\nname = 'fc1/1'\nstate = 'Up'", "19: ports.state: unknown word 'Up'; did you mean 'up'?"},
    {"[[ports]]\nname = 'fc1/1'\nip_address = '10.0.0'", "19: ports.ip_address: '10.0.0' is no IPv4 address"},
    {"[[ports]]\nname = 'fc1/1'\nsnmp_trap = 'on'", "19: ports.snmp_trap: must be an array, not a text"},
    {"[[ports]]\nname = 'fc1/1'\nsnmp_trap = ['on',\n'of']",
     "20: ports.snmp_trap: unknown word 'of'; did you mean 'on'?"},
    {"[[ports]]\nname = 'fc1/1'\nbb_credit = [1,2,3,4,5,6]", "19: ports.bb_credit: has more than 5 elements"},
    {"[[ports]]\nname = 'fc1/1'\ndescription = \"a\\u0000b\"", "19: ports.description: holds a control character"},
    {"[[ports]]\nname = 'fc1/1'\nowner = \"a\\nb\"", "19: ports.owner: holds a control character"},
    {"[[ports]]\nname = 'fc1/1'\ndescription = '"
     "123456789 123456789 123456789 123456789 123456789 123456789 123456789 123456789 1'",
     "19: ports.description: is longer than 80 bytes"},
    {"[[ports]]\nname = 'fc1/1'\nnative_vlan = 1",
     "19: ports.native_vlan: fc1/1 is of kind 'fc', which has no such setting"},
    {"[[ports]]\nname = 'Ethernet2/1'\nfcip_peer = '1.2.3.4'",
     "19: ports.fcip_peer: Ethernet2/1 is of kind 'ethernet', which has no such setting"},
};

const bad_file bad_interfaces[] = {
    {"[[ports]]\nname = 'fc1/5'",
     "18: ports.name: 'fc1/5' does not exist: slot 1 has a module of kind 'fc' with 4 ports"},
    {"[[ports]]\nname = 'fc1/3-6'",
     "18: ports.name: 'fc1/5' does not exist: slot 1 has a module of kind 'fc' with 4 ports"},
    {"[[ports]]\nname = 'fc2/1'",
     "18: ports.name: 'fc2/1' does not exist: slot 2 has a module of kind 'ethernet' with 2 ports"},
    {"[[ports]]\nname = 'fc4/1'", "18: ports.name: 'fc4/1' does not exist: slot 4 has no module"},
    {"[[ports]]\nname = 'mgmt0'", "18: ports.name: 'mgmt0' does not exist"},
    {"[[ports]]\nname = ''", "18: ports.name: '' is no interface and no range of interfaces"},
    {"[[ports]]\nname = 'fc1/1,'", "18: ports.name: '' is no interface and no range of interfaces"},
    {"[[ports]]\nname = 'fc1/4-2'", "18: ports.name: 'fc1/4-2' is no interface and no range of interfaces"},
    {"[[ports]]\nname = 'fc1/1-99999999999'",
     "18: ports.name: 'fc1/1-99999999999' is no interface and no range of interfaces"},
    {"[[ports]]\nname = 'nothing'", "18: ports.name: 'nothing' is no interface and no range of interfaces"},
    {"[[interface]]\nname = 'fc1/1'",
     "18: interface.name: 'fc1/1' is of a kind that has a section of its own or a module"},
    {"[[interface]]\nname = 'mgmt0'\n[[interface]]\nname = 'mgmt0'", "20: interface.name: 'mgmt0' exists already"},
    {"[[sub_interface]]\nname = 'Ethernet2/1'", "18: sub_interface.name: 'Ethernet2/1' is no sub-interface"},
    {"[[sub_interface]]\nname = 'Ethernet2/1.1'", "18: sub_interface.name: 'Ethernet2/1.1' has a reserved number"},
    {"[[sub_interface]]\nname = 'Ethernet2/1.4090-4095'",
     "18: sub_interface.name: 'Ethernet2/1.4094' has a reserved number"},
    {"[[sub_interface]]\nname = 'Ethernet2/3.2'",
     "18: sub_interface.name: 'Ethernet2/3' does not exist: slot 2 has a module of kind 'ethernet' with 2 ports"},
    {"[[port_channel]]\nname = 'port-channel1'\nmembers = 'fc1/1'\n[[sub_interface]]\nname = 'port-channel1.2'",
     "21: sub_interface.name: 'port-channel1' is no Ethernet channel and has no sub-interfaces"},
    {"[[ports]]\nname = 'Ethernet2/1.7'", "18: ports.name: 'Ethernet2/1.7' does not exist"},
};

const bad_file bad_modules[] = {
    {"[[module]]\nslot = 1\nkind = 'fc'\nports = 1", "18: module.slot: slot 1 has a module already"},
    {"[[module]]\nslot = 5\nkind = 'fc'\nports = 1", "18: module.slot: 5 is not in 1 to 4"},
    {"[[module]]\nslot = 0\nkind = 'fc'\nports = 1", "18: module.slot: 0 is not in 1 to 4"},
    {"[[module]]\nslot = 4\nkind = 'fcc'\nports = 1", "19: module.kind: unknown word 'fcc'; did you mean 'fc'?"},
    {"[[module]]\nslot = 4\nkind = 'fc'\nports = 129", "20: module.ports: 129 is not in 1 to 128"},
    {"[[module]]\nslot = 4\nkind = 'ips'\nports = 33", "20: module.ports: 33 is not in 1 to 32"},
    {"[[module]]\nslot = 4\nkind = 'fc'", "17: module.ports: is missing"},
    {"[[fcip]]\nname = 'fcip1'\nslot = 1\nport = 1", "19: fcip.slot: slot 1 has no module of kind 'ips'"},
    {"[[fcip]]\nname = 'fcip1'\nslot = 4\nport = 1", "19: fcip.slot: slot 4 has no module of kind 'ips'"},
    {"[[fcip]]\nname = 'fcip1'\nslot = 3\nport = 3", "20: fcip.port: 3 is not in 1 to 2"},
    {"[[fcip]]\nname = 'fc1/1'\nslot = 3\nport = 1", "18: fcip.name: 'fc1/1' is no FCIP interface"},
};

const bad_file bad_channels[] = {
    {"[[port_channel]]\nname = 'fc1/1'", "18: port_channel.name: must be one port channel"},
    {"[[port_channel]]\nname = 'port-channel1-2'", "18: port_channel.name: must be one port channel"},
    {"[[port_channel]]\nname = 'port-channel1.2'", "18: port_channel.name: must be one port channel"},
    {"[[port_channel]]\nname = 'port-channel1'\nmembers = 'fc1/9'",
     "19: port_channel.members: 'fc1/9' does not exist: slot 1 has a module of kind 'fc' with 4 ports"},
    {"[[port_channel]]\nname = 'port-channel1'\nmembers = 'fc1/1, Ethernet2/1'",
     "19: port_channel.members: 'Ethernet2/1' is of the wrong kind for the channel: 'ethernet'"},
    {"[[port_channel]]\nname = 'port-channel1'\nmembers = 'if13-3/1'",
     "19: port_channel.members: 'if13-3/1' is of the wrong kind for the channel: 'ips'"},
    {"[[port_channel]]\nname = 'port-channel1'\nmembers = 'fc1/1, fc1/1'",
     "19: port_channel.members: 'fc1/1' is a member of 'port-channel1' already"},
    {"[[port_channel]]\nname = 'port-channel1'\nmembers = 'fc1/1'\n"
     "[[port_channel]]\nname = 'port-channel2'\nmembers = 'fc1/1'",
     "22: port_channel.members: 'fc1/1' is a member of 'port-channel1' already"},
    {"[[port_channel]]\nname = 'port-channel1'\n[[port_channel]]\nname = 'port-channel1'",
     "20: port_channel.name: 'port-channel1' exists already"},
    {"[[port_channel]]\nname = 'port-channel1'\nmembers = 'fc1/1-17'",
     "19: port_channel.members: has more than 16 members"},
};

const bad_file bad_counters[] = {
    {"[[counters]]\ncrc_errors = 1", "17: counters.name: is missing"},
    {"[[counters]]\nname = 'fc1/1'", "18: counters.name: 'fc1/1' is of kind 'fc', which keeps no counters"},
    {"[[interface]]\nname = 'mgmt0'\n[[counters]]\nname = 'Ethernet2/1, mgmt0'",
     "20: counters.name: 'mgmt0' is of kind 'mgmt', which keeps no counters"},
    {"[[sub_interface]]\nname = 'Ethernet2/1.5'\n[[counters]]\nname = 'Ethernet2/1.5'",
     "20: counters.name: 'Ethernet2/1.5' is of kind 'sub-interface', which keeps no counters"},
    {"[[port_channel]]\nname = 'port-channel1'\nmembers = 'Ethernet2/1'\n[[counters]]\nname = 'port-channel1'",
     "21: counters.name: 'port-channel1' is of kind 'Ethernet port-channel', which keeps no counters"},
    {"[[counters]]\nname = 'Ethernet2/3'",
     "18: counters.name: 'Ethernet2/3' does not exist: slot 2 has a module of kind 'ethernet' with 2 ports"},
    {"[[counters]]\nname = 'Ethernet2/1'\nrx_octets = 1", "19: counters.rx_octets: unknown key"},
    {"[[counters]]\nname = 'Ethernet2/1'\nseconds_since_clear = 1", "19: counters.seconds_since_clear: unknown key"},
    {"[[counters]]\nname = 'Ethernet2/1'\ncrc_error = 1",
     "19: counters.crc_error: unknown key; did you mean 'crc_errors'?"},
    {"[[counters]]\nname = 'Ethernet2/1'\ncrc_errors = -1", "19: counters.crc_errors: -1 is not in 0 to 4294967295"},
    {"[[counters]]\nname = 'Ethernet2/1'\ncrc_errors = 4294967296",
     "19: counters.crc_errors: 4294967296 is not in 0 to 4294967295"},
    {"[[counters]]\nname = 'Ethernet2/1'\nlink_resets = 'often'",
     "19: counters.link_resets: must be a number, not a text"},
    {"[[counters]]\nname = 'Ethernet2/1'\nunreachable = 'maybe'", "19: counters.unreachable: unknown word 'maybe'"},
    {"[[counters]]\nname = 'Ethernet2/1'\nunreachable = true",
     "19: counters.unreachable: must be a text, not true or false"},
    {"[[counters]]\nname = 'Ethernet2/1'\nmtu = 1500", "19: counters.mtu: unknown key"},
};

INSTANTIATE_TEST_SUITE_P(sections, chassis_file_mistakes, testing::ValuesIn(bad_sections));
INSTANTIATE_TEST_SUITE_P(values, chassis_file_mistakes, testing::ValuesIn(bad_values));
INSTANTIATE_TEST_SUITE_P(interfaces, chassis_file_mistakes, testing::ValuesIn(bad_interfaces));
INSTANTIATE_TEST_SUITE_P(modules, chassis_file_mistakes, testing::ValuesIn(bad_modules));
INSTANTIATE_TEST_SUITE_P(channels, chassis_file_mistakes, testing::ValuesIn(bad_channels));
INSTANTIATE_TEST_SUITE_P(counters, chassis_file_mistakes, testing::ValuesIn(bad_counters));

TEST(chassis_file, needs_a_chassis) {
    EXPECT_EQ(complaint(""), "1: chassis: is missing");
    EXPECT_EQ(complaint("[chassis]\ntype = 6\nslots = 1"), "1: chassis.name: is missing");
    EXPECT_EQ(complaint("[chassis]\nname = 'x'\ntype = 0\nslots = 1"), "3: chassis.type: 0 is not in 1 to 65535");
    EXPECT_EQ(complaint("[chassis]\nname = 'x'\ntype = 6\nslots = 33"), "4: chassis.slots: 33 is not in 1 to 32");
    EXPECT_EQ(complaint("chassis = 7"), "1: chassis: must be a table, not a number");
    EXPECT_EQ(complaint("[chassis]\nname = 'x'\ntype = 6\nslots = 1\nmtu = 64"), "5: chassis.mtu: unknown key");
}

TEST(chassis_file, must_be_toml) {
    EXPECT_THAT(complaint("[chassis]\nname = \n"), testing::StartsWith("2: TOML: "));
    EXPECT_THAT(complaint("[chassis]\nname = 'x'\nname = 'y'\n"), testing::StartsWith("3: TOML: "));
    EXPECT_THAT(complaint("\xff\xfe"), testing::StartsWith("1: TOML: "));
    for (const char *header : {"[[ = 1", "[=]", "[a.=]"})
        EXPECT_THAT(complaint(header), testing::StartsWith("1: TOML: ")) << header;
}

// These are in none of the reader's tables of blanks, though some of their neighbours are.
TEST(chassis_file, has_no_other_letters_outside_of_texts) {
    for (const char *letter : {"\xc2\xa1", "\xc3\xa9", "\xd0\xb7", "\xe2\xbb\xbf", "\xe3\x80\x81", "\xef\xbb\xbd"}) {
        EXPECT_THAT(complaint(letter), testing::StartsWith("1: TOML: ")) << letter;
        EXPECT_THAT(complaint(std::string("[chassis]\nname = 'x' ") + letter), testing::StartsWith("2: TOML: "))
            << letter;
    }
}

// A table for each part of a key would take more stack than there is.
TEST(chassis_file, has_no_keys_of_very_many_parts) {
    std::string parts;
    for (int i = 0; i < 100000; ++i) parts += ".a";
    for (const std::string &key : {"[a" + parts + "]", "[[a" + parts + "]]", "a" + parts + " = 1"})
        EXPECT_EQ(complaint("# ...\n" + key), "2: TOML: more than 1024 dots in one line");
    const std::string most_dots = "#" + std::string(1024, '.') + "\n";
    EXPECT_EQ(complaint(most_dots + most_dots), "1: chassis: is missing");
}

// Complaints are one line each, whatever the file holds.
TEST(chassis_file, complains_in_one_line) {
    for (const std::string text : {"[chassis]\nname = 7 8\n", "\"a\\nb\" = 1\n", "[chassis]\n\"x\\ny\" = 1\n"})
        EXPECT_EQ(complaint(text).find('\n'), std::string::npos) << complaint(text);
}

}  // namespace
