// SPDX-License-Identifier: Apache-2.0
// Changes made by the client, read back by it, and a switch restored from its own running configuration.
#include <fstream>
#include <optional>
#include <regex>

#include "integration/pmctl/pmctl_program.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

run_result run_words(const std::string &words) { return shell(PMCTL " " + words); }

class pmctl_config : public pmctl_program {
  protected:
    // Runs a command that must succeed in silence.
    static void config(const std::string &words) {
        const run_result run = run_words("config " + words);
        EXPECT_EQ(run.status, 0) << words;
        EXPECT_EQ(run.output + run.messages, "") << words;
    }

    static std::vector<std::string> running_config(const std::string &names) {
        return lines_of(run_words("show running-config " + names).output);
    }
};

TEST_F(pmctl_config, shows_what_was_set) {
    config("interface fc1/7 shutdown");
    config("interface fc1/7 description 'to the array, \"left\" \\ side'");
    config("interface fc1/7 speed 4000");
    EXPECT_THAT(running_config("fc1/7"), Contains("  shutdown"));
    EXPECT_THAT(running_config("fc1/7"), Contains("  description \"to the array, \\\"left\\\" \\\\ side\""));
    EXPECT_THAT(running_config("fc1/7"), Contains("  speed 4000"));
    const auto port = objects_in(run_words("show interface fc1/7 --json").output).at(0);
    EXPECT_EQ(port.at("state_reason"), 12);
    config("interface fc1/7 no shutdown");
    config("interface fc1/7 no description");
    EXPECT_THAT(running_config("fc1/7"), Contains("  no shutdown"));
    EXPECT_THAT(running_config("fc1/7"), Contains("  no description"));
}

TEST_F(pmctl_config, sets_ranges_of_several_kinds_at_once) {
    config("interface fc1/1-4, Ethernet4/1-2 port-channel5, mgmt0 description everywhere");
    for (const char *name : {"fc1/1", "fc1/4", "Ethernet4/2", "port-channel5", "mgmt0"}) {
        EXPECT_THAT(running_config(name), Contains("  description \"everywhere\"")) << name;
    }
    EXPECT_THAT(running_config("fc1/5"), Not(Contains("  description \"everywhere\"")));
}

TEST_F(pmctl_config, names_the_interfaces_that_refused) {
    const run_result run = run_words("config interface fc1/1, mgmt0, Ethernet4/1 switchport trunk mode auto");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, "");
    const std::vector<std::string> messages = lines_of(run.messages);
    ASSERT_EQ(messages.size(), 1u) << run.messages;
    EXPECT_THAT(messages[0], testing::StartsWith("pmctl: mgmt0: "));
    EXPECT_THAT(running_config("fc1/1"), Contains("  switchport trunk mode auto"));
    EXPECT_THAT(running_config("Ethernet4/1"), Contains("  switchport trunk mode auto"));
}

TEST_F(pmctl_config, refuses_a_value_that_is_none_and_sends_nothing) {
    for (const char *words : {"interface fc1/1 speed fast", "interface fc1/1 switchport mode Q", "interface fc1/1 mtu",
                              "interface fc1/1 colour red", "interface shutdown", "interface fc1/1"}) {
        const run_result run = run_words(std::string("config ") + words);
        EXPECT_EQ(run.status, 2) << words;
        EXPECT_THAT(lines_of(run.messages), Not(IsEmpty())) << words;
    }
}

TEST_F(pmctl_config, creates_and_deletes_sub_interfaces_and_loopbacks) {
    config("subinterface create Ethernet4/2.200-203");
    config("loopback create loopback20-21");
    EXPECT_THAT(running_config("Ethernet4/2.203"), Contains("subinterface create Ethernet4/2.203"));
    config("subinterface delete Ethernet4/2.201");
    config("loopback delete loopback20");
    EXPECT_EQ(run_words("show interface Ethernet4/2.201").status, 1);
    EXPECT_EQ(run_words("show interface loopback20").status, 1);
    EXPECT_EQ(run_words("show interface loopback21").status, 0);
    EXPECT_EQ(run_words("config subinterface delete Ethernet4/2.201").status, 1);
    EXPECT_EQ(run_words("config subinterface create Ethernet4/2.1").status, 1);
    EXPECT_EQ(run_words("config loopback delete loopback20").status, 1);
}

TEST_F(pmctl_config, lists_the_interfaces_of_a_module) {
    const run_result run = run_words("show module 1 interfaces --json");
    EXPECT_EQ(run.status, 0) << run.messages;
    EXPECT_THAT(names_in(run.output), Contains("fc1/1"));
    EXPECT_THAT(names_in(run.output), Not(Contains("Ethernet4/1")));
    EXPECT_THAT(run_words("show module 4 interfaces").output, HasSubstr("Ethernet4/1"));
    EXPECT_EQ(run_words("show module 99 interfaces").status, 1);
}

// Files of command lines

class pmctl_config_file : public pmctl_config {
  protected:
    // What the client makes of lines on its standard input.
    run_result config_lines(const std::string &lines) const {
        const std::string file = directory_.file("lines");
        std::ofstream(file) << lines;
        return shell(PMCTL " config - <" + file);
    }
};

TEST_F(pmctl_config_file, carries_out_its_lines) {
    const run_result run = config_lines(
        "! uplinks\n"
        "interface fc1/1-2, fc1/5\n"
        "  speed 2000\n"
        "\tdescription \"up \\x22 link\"\n"
        "\n"
        "subinterface create Ethernet4/2.300\n"
        "interface Ethernet4/2.300\r\n"
        "# last\n"
        "shutdown");
    EXPECT_EQ(run.status, 0) << run.messages;
    EXPECT_EQ(run.output + run.messages, "");
    EXPECT_THAT(running_config("fc1/5"), Contains("  description \"up \\\" link\""));
    EXPECT_THAT(running_config("fc1/5"), Contains("  speed 2000"));
    EXPECT_THAT(running_config("Ethernet4/2.300"), Contains("  shutdown"));
}

TEST_F(pmctl_config_file, with_mistakes_changes_nothing_and_names_them_all) {
    const run_result run = config_lines("interface fc1/1\n speed 2000\n speed warp\ninterface fcx\n mtu 1\nnonsense\n");
    EXPECT_EQ(run.status, 2);
    for (const char *place : {"standard input:3: ", "standard input:4: ", "standard input:6: "})
        EXPECT_THAT(run.messages, HasSubstr(place));
    EXPECT_THAT(running_config("fc1/1"), Not(Contains("  speed 2000")));
}

TEST_F(pmctl_config_file, goes_on_after_a_refusal) {
    const run_result run = config_lines("interface fc9/1\n speed 2000\ninterface mgmt0\n description on\n");
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.messages, HasSubstr("fc9/1"));
    EXPECT_THAT(running_config("mgmt0"), Contains("  description \"on\""));
}

// Restoring

struct restored_chassis {
    const char *name;
    const char *ethernet;  // one of its Ethernet modules
};

void PrintTo(const restored_chassis &chassis, std::ostream *to) { *to << chassis.name; }

class pmctl_restore : public pmctl_alone, public testing::WithParamInterface<restored_chassis> {
  protected:
    static std::string dump() {
        const run_result run = run_words("show running-config");
        EXPECT_EQ(run.status, 0) << run.messages;
        return run.output;
    }

    // Runs lines that must all succeed.
    void restore(const std::string &lines) const {
        const std::string file = directory_.file("lines");
        std::ofstream(file) << lines;
        const run_result run = shell(PMCTL " config - <" + file);
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.messages, "");
    }

    std::string chassis_ = SOURCE_FOLDER "/examples/chassis/" + std::string(GetParam().name) + ".toml";
};

INSTANTIATE_TEST_SUITE_P(of, pmctl_restore,
                         testing::Values(restored_chassis{"director", "Ethernet4"},
                                         restored_chassis{"fixed", "Ethernet2"}),
                         [](const auto &instance) { return instance.param.name; });

// Something else for everything that can be set
constexpr const char *changes = R"(
interface fc1/1-8
  shutdown
  description "a \"quoted\" \\ text with a tab\x09 and more"
  switchport mode E
  switchport trunk mode off
  speed 16000
  rate-mode shared
  beacon on
  receive-buffer-size 1111
  receive-bb-credit 99
  port-vsan 4000
  mtu 2000
  bandwidth 123456
  down-on-link-failure on
interface fc1/9
  speed auto max 4000
  receive-bb-credit default
interface mgmt0
  description "management"
  mtu 576
  auto-negotiation off
  duplex half
loopback create loopback100-101
interface loopback101
  shutdown
  description "made"
interface MODULE/1
  duplex auto
  auto-negotiation off
  mtu 9000
  bandwidth 77
  speed 1000
subinterface create MODULE/3.400-402
interface MODULE/3.401
  description "four hundred and one"
  bandwidth 5
)";

TEST_P(pmctl_restore, takes_a_wiped_switch_back_to_its_running_configuration) {
    std::optional<virtual_switch_process> daemon(std::in_place, chassis_);
    const std::string original = dump();
    restore(std::regex_replace(changes, std::regex("MODULE"), GetParam().ethernet));
    const std::string changed = dump();
    EXPECT_NE(changed, original);

    daemon.reset();
    daemon.emplace(chassis_);
    EXPECT_EQ(dump(), original) << "the switch is wiped";
    restore(changed);
    EXPECT_EQ(dump(), changed);
    restore(changed);
    EXPECT_EQ(dump(), changed) << "once more changes nothing";
}

}  // namespace
