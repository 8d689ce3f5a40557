// SPDX-License-Identifier: Apache-2.0
#include "chassis/state_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <iterator>

#include "chassis/config_attributes.h"
#include "chassis/port_words.h"
#include "names.h"
#include "support/other_user.h"
#include "temporary_folder.h"

namespace {

using testing::ElementsAre;
using virtual_switch::configuration;
using virtual_switch::load_state;
using virtual_switch::parse_state;
using virtual_switch::save_state;
using virtual_switch::state_text;

constexpr const char *heading =
    "# What clients configured, on top of the chassis file. docs/state-file.md describes it.\n";

std::string complaint(const std::string &text) {
    try {
        parse_state(text);
    } catch (const std::runtime_error &error) {
        return error.what();
    }
    return "";
}

std::string complaint_about_file(const std::string &path) {
    try {
        load_state(path);
    } catch (const std::runtime_error &error) {
        return error.what();
    }
    return "";
}

TEST(state_file, is_written_for_people) {
    configuration changes;
    for (const char *name : {"loopback2", "loopback3", "loopback5", "Ethernet4/7.2", "Ethernet4/7.3", "Ethernet4/7.4",
                             "Ethernet4/8.5", "port-channel20.9"})
        changes.created.insert(index_of(name));
    for (const char *name : {"Ethernet4/7.100", "Ethernet4/7.101", "loopback1"}) changes.deleted.insert(index_of(name));
    changes.settings[index_of("fc1/5")] = {{PM_ATTR_ADMIN_STATE, 2u},
                                           {PM_ATTR_DESCRIPTION, "a \"b\" \\ \xc3\xa4\n"},
                                           {PM_ATTR_SPEED, 4000u},
                                           {PM_ATTR_PORT_MODE, 4u}};
    changes.settings[index_of("loopback2")] = {{PM_ATTR_MTU, 9000u}, {PM_ATTR_DESCRIPTION, "\xff z"}};
    EXPECT_EQ(state_text(changes), std::string(heading) + R"(
[[interface]]
name = "loopback2-3"

[[interface]]
name = "loopback5"

[[sub_interface]]
name = "Ethernet4/7.2-4"

[[sub_interface]]
name = "Ethernet4/8.5"

[[sub_interface]]
name = "port-channel20.9"

[[deleted]]
name = "Ethernet4/7.100-101"

[[deleted]]
name = "loopback1"

[[ports]]
name = "fc1/5"
admin_state = "down"
description = "a \"b\" \\ )"
                                                          "\xc3\xa4"
                                                          R"(\u000A"
admin_mode = "E"
admin_speed = 4000

[[ports]]
name = "loopback2"
description = [255, 32, 122]
mtu = 9000
)");
    EXPECT_EQ(parse_state(state_text(changes)), changes);
}

// Every value that a setting takes, as far as they can be counted.
std::vector<virtual_switch::setting_value> values_of(const virtual_switch::port_setting &setting) {
    if (setting.kind == virtual_switch::setting_kind::text) return {"", "x", std::string(80, '\x01')};
    std::vector<virtual_switch::setting_value> values;
    for (const auto &each : setting.words) values.emplace_back(each.value);
    if (setting.kind == virtual_switch::setting_kind::word) return values;
    values.emplace_back(setting.range.least);
    values.emplace_back(setting.range.most);
    return values;
}

TEST(state_file, brings_every_value_of_every_attribute_back) {
    for (const auto &attribute : virtual_switch::config_attributes) {
        for (const auto &value : values_of(*attribute.setting)) {
            configuration changes;
            changes.settings[index_of("fc1/1")][attribute.number] = value;
            const std::string text = state_text(changes);
            EXPECT_EQ(parse_state(text), changes) << text;
            EXPECT_EQ(state_text(parse_state(text)), text);
        }
    }
}

std::string utf8_of(uint32_t code) {
    const auto byte = [](uint32_t value) { return static_cast<char>(value); };
    if (code < 0x80) return {byte(code)};
    if (code < 0x800) return {byte(0xc0 | code >> 6), byte(0x80 | (code & 0x3f))};
    if (code < 0x10000) {
        return {byte(0xe0 | code >> 12), byte(0x80 | (code >> 6 & 0x3f)), byte(0x80 | (code & 0x3f))};
    }
    return {byte(0xf0 | code >> 18), byte(0x80 | (code >> 12 & 0x3f)), byte(0x80 | (code >> 6 & 0x3f)),
            byte(0x80 | (code & 0x3f))};
}

// Twenty characters at a time, since each takes a document.
TEST(state_file, brings_every_character_back) {
    for (uint32_t code = 1; code < 0x110000; code += code < 0x3000 ? 20 : 4000) {
        std::string text;
        for (uint32_t i = code; i < code + 20; ++i) text += utf8_of(i);  // also halves of pairs, as bytes
        configuration changes;
        changes.settings[index_of("fc1/1")][PM_ATTR_DESCRIPTION] = text;
        EXPECT_EQ(parse_state(state_text(changes)), changes) << std::hex << code;
    }
}

TEST(state_file, brings_bytes_that_are_no_text_back) {
    for (const std::string bytes : {"\x80", "\xc0\x80", "\xc3", "a\xe0\x80\x80", "\xed\xa0\x80", "\xf4\x90\x80\x80",
                                    "\xf8\x88\x80\x80\x80", "\xc3\x28", "\xf0\x9f\x98", "\xfe\xff"}) {
        configuration changes;
        changes.settings[index_of("fc1/1")][PM_ATTR_DESCRIPTION] = bytes;
        EXPECT_THAT(state_text(changes), testing::HasSubstr("description = ["));
        EXPECT_EQ(parse_state(state_text(changes)), changes);
    }
}

TEST(state_file, brings_long_runs_of_interfaces_back) {
    configuration changes;
    const if_index_t first = index_of("loopback0");
    for (if_index_t i = 0; i < 10000; ++i) changes.deleted.insert(first + i);
    EXPECT_EQ(parse_state(state_text(changes)), changes);
}

TEST(state_file, takes_what_people_write) {
    const configuration changes = parse_state(
        "[[ports]]\nadmin_mode = 'auto'\nmtu = 100\nname = 'fc1/1-2, mgmt0'\n"
        "[[ports]]\nname = 'fc1/2'\nmtu = 200\n[[ports]]\nname = 'fc1/9'\n"
        "[[interface]]\nname = 'lo7'\n");
    EXPECT_THAT(changes.created, ElementsAre(index_of("loopback7")));
    EXPECT_EQ(changes.settings.size(), 3u);
    EXPECT_EQ(changes.settings.at(index_of("mgmt0")).at(PM_ATTR_MTU), virtual_switch::setting_value(100u));
    EXPECT_EQ(changes.settings.at(index_of("fc1/2")).at(PM_ATTR_MTU), virtual_switch::setting_value(200u));
    EXPECT_EQ(changes.settings.at(index_of("fc1/2")).at(PM_ATTR_PORT_MODE), virtual_switch::setting_value(1u));
    EXPECT_EQ(parse_state(""), configuration{});
}

struct bad_state {
    const char *text;
    const char *complaint;
};

void PrintTo(const bad_state &bad, std::ostream *out) { *out << bad.complaint; }

class state_file_mistakes : public testing::TestWithParam<bad_state> {};

TEST_P(state_file_mistakes, are_reported) { EXPECT_EQ(complaint(GetParam().text), GetParam().complaint); }

const bad_state bad_states[] = {
    {"[[port]]", "1: port: unknown section; did you mean 'ports'?"},
    {"[[module]]", "1: module: unknown section"},
    {"[ports]", "1: ports: must be written [[ports]]"},
    {"\n[[ports]]\nmtu = 100", "2: ports.name: is missing"},
    {"[[ports]]\nname = 'fc1/1'\nnative_vlan = 7", "3: ports.native_vlan: unknown key"},
    {"[[ports]]\nname = 'fc1/1'\noper_mode = 'E'", "3: ports.oper_mode: unknown key"},
    {"[[ports]]\nname = 'fc1/1'\nmtu = 63", "3: ports.mtu: 63 is not in 64 to 65535"},
    {"[[ports]]\nname = 'fc1/1'\nadmin_state = 'shut'", "3: ports.admin_state: unknown word 'shut'"},
    {"[[ports]]\nname = 'fc1/1'\nrx_bb_credit = [1]", "3: ports.rx_bb_credit: must be a number, not an array"},
    {"[[ports]]\nname = 'fc1/1'\ndescription = 7", "3: ports.description: must be a text, not a number"},
    {"[[ports]]\nname = 'fc1/1'\ndescription = \"\\u0000\"", "3: ports.description: holds a NUL character"},
    {"[[ports]]\nname = 'fc1/1'\ndescription = [0]", "3: ports.description: 0 is not in 1 to 255"},
    {"[[ports]]\nname = 'fc1/1'\ndescription = [256]", "3: ports.description: 256 is not in 1 to 255"},
    {"[[ports]]\nname = 'fc1/1'\ndescription = '"
     "123456789 123456789 123456789 123456789 123456789 123456789 123456789 123456789 1'",
     "3: ports.description: is longer than 80 bytes"},
    {"[[ports]]\nname = 'none'\nmtu = 100", "2: ports.name: 'none' is no interface and no range of interfaces"},
    {"[[interface]]\nname = 'mgmt0'", "2: interface.name: 'mgmt0' is no loopback"},
    {"[[interface]]\nname = 'loopback1'\nmtu = 100", "3: interface.mtu: unknown key"},
    {"[[sub_interface]]\nname = 'Ethernet1/1'", "2: sub_interface.name: 'Ethernet1/1' is no sub-interface"},
    {"[[sub_interface]]\nname = 'Ethernet1/1.1'", "2: sub_interface.name: 'Ethernet1/1.1' has a reserved number"},
    {"[[sub_interface]]\nname = 'Ethernet1/1.4094'", "2: sub_interface.name: 'Ethernet1/1.4094' has a reserved number"},
    {"[[deleted]]\nname = 'fc1/1'", "2: deleted.name: 'fc1/1' is no sub-interface and no loopback"},
    {"[[interface]]\nname = 'loopback0-4094, loopback10000-14094, loopback20000-24094, loopback30000-34094, "
     "loopback40000-44094'",
     "2: interface.name: more than 16384 interfaces are created"},
};

INSTANTIATE_TEST_SUITE_P(state_file, state_file_mistakes, testing::ValuesIn(bad_states));

TEST(state_file, is_empty_when_it_is_not_there) {
    const temporary_folder folder;
    EXPECT_EQ(load_state(folder.file("state")), configuration{});
}

TEST(state_file, is_loaded_as_it_was_saved) {
    const temporary_folder folder;
    const std::string path = folder.file("state");
    configuration changes;
    changes.created.insert(index_of("loopback7"));
    save_state(path, changes);
    EXPECT_EQ(load_state(path), changes);
    EXPECT_EQ(folder.content_of("state"), state_text(changes));
    struct stat status {};
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode, S_IFREG | 0600u);
}

TEST(state_file, names_itself_in_complaints) {
    const temporary_folder folder;
    const std::string path = folder.file("state");
    std::ofstream(path) << "[[ports]]\nname = 'fc1/1'\nmtu = 1\n";
    EXPECT_EQ(complaint_about_file(path), path + ":3: ports.mtu: 1 is not in 64 to 65535");
}

TEST(state_file, must_be_a_file) {
    const temporary_folder folder;
    const std::string path = folder.file("state");
    ASSERT_EQ(symlink("elsewhere", path.c_str()), 0);
    EXPECT_EQ(complaint_about_file(path), path + ":1: file: is a symbolic link");
    ASSERT_EQ(unlink(path.c_str()), 0);
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(complaint_about_file(path), path + ":1: file: is no regular file");
    EXPECT_EQ(complaint_about_file(folder.path()), folder.path() + ":1: file: is no regular file");
}

TEST(state_file, must_not_be_writable_by_everybody) {
    const temporary_folder folder;
    const std::string path = folder.file("state");
    save_state(path, configuration{});
    for (const mode_t good : {0600u, 0640u, 0644u, 0660u, 0664u}) {
        ASSERT_EQ(chmod(path.c_str(), good), 0);
        EXPECT_EQ(load_state(path), configuration{}) << good;
    }
    for (const mode_t bad : {0602u, 0666u}) {
        ASSERT_EQ(chmod(path.c_str(), bad), 0);
        EXPECT_EQ(complaint_about_file(path), path + ":1: file: can be written by everybody");
    }
}

TEST(state_file, must_be_of_our_own_or_of_root) {
    if (!support::can_be_others()) GTEST_SKIP() << support::only_root;
    const temporary_folder folder;
    const std::string path = folder.file("state");
    save_state(path, configuration{});
    ASSERT_EQ(chmod(path.c_str(), 0644), 0);
    ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
    support::run_as({61001, 62001, {}}, [&] { EXPECT_EQ(load_state(path), configuration{}); });
    ASSERT_EQ(chown(path.c_str(), 61001, 62001), 0);
    support::run_as({61001, 62001, {}}, [&] { EXPECT_EQ(load_state(path), configuration{}); });
    EXPECT_EQ(complaint_about_file(path), path + ":1: file: belongs to another user");
}

TEST(state_file, has_a_largest_size) {
    const temporary_folder folder;
    const std::string path = folder.file("state");
    std::ofstream(path) << std::string(16 * 1024 * 1024 + 1, '\n');
    EXPECT_EQ(complaint_about_file(path), path + ":1: file: is larger than 16 MiB");
    configuration huge;
    for (if_index_t i = 0; i < 600'000; ++i) huge.settings[0x14000000 + i][PM_ATTR_MTU] = 100u;
    EXPECT_THROW(save_state(path, huge), std::runtime_error);
    EXPECT_EQ(complaint_about_file(path), path + ":1: file: is larger than 16 MiB");
}

TEST(state_document, has_an_example_that_loads) {
    std::ifstream file(std::string(SOURCE_FOLDER) + "/docs/state-file.md");
    const std::string document{std::istreambuf_iterator<char>(file), {}};
    const size_t begin = document.find("```toml\n") + 8;
    const configuration changes = parse_state(document.substr(begin, document.find("```\n", begin) - begin));
    EXPECT_EQ(changes.created.size(), 5u);
    EXPECT_THAT(changes.deleted, ElementsAre(index_of("Ethernet4/7.100")));
    EXPECT_EQ(changes.settings.size(), 2u);
    for (const auto &attribute : virtual_switch::config_attributes)
        EXPECT_THAT(document, testing::HasSubstr("| `" + std::string(attribute.setting->key) + "` |"));
}

}  // namespace
