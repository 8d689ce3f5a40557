// SPDX-License-Identifier: Apache-2.0
#include <fstream>

#include "integration/pmctl/pmctl_runs.h"
#include "integration/virtual_switch/virtual_switch_test.h"

namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class bulk_config : public runtime_dir_test {
  protected:
    [[nodiscard]] run_result run(const std::string &lines, const std::string &program = EXAMPLES "bulk_config") const {
        std::ofstream(file_) << lines;
        return run_program({program, file_});
    }

    std::string file_ = directory_.file("lines");
};

class bulk_config_of_a_switch : public bulk_config {
  protected:
    [[nodiscard]] pm_port_info_t port(const char *name) const {
        const auto answer = client_.range(name, name);
        EXPECT_EQ(answer.records.size(), 1u) << name;
        return answer.records.empty() ? pm_port_info_t{} : answer.records[0];
    }

    virtual_switch_process switch_{director};
    client client_;
};

TEST_F(bulk_config_of_a_switch, sets_every_attribute) {
    const auto result =
        run("# a comment\n\n"
            "fc1/1-2 shutdown on\n  fc1/1\tdescription\tto the array, port 1\nfc1/1 speed 4000\nfc1/1 beacon on\n"
            "fc1/1 mtu 2000\nfc1/1 bandwidth 1000\nfc1/1 vsan 7\nEthernet4/7.300 shutdown off");
    EXPECT_EQ(result.messages, "Ethernet4/7.300: shutdown: no such interface or range (0x4029000a)\n");
    EXPECT_EQ(result.status, 1);
    const pm_port_info_t port_ = port("fc1/1");
    EXPECT_EQ(port_.admin_state, 2);
    EXPECT_STREQ(port_.description, "to the array, port 1");
    EXPECT_EQ(port_.admin_speed, 4000u);
    EXPECT_EQ(port_.beacon_mode, 1);
    EXPECT_EQ(port_.mtu, 2000u);
    EXPECT_EQ(port_.port_vsan, 7);
    EXPECT_EQ(port("fc1/2").admin_state, 2);
    EXPECT_EQ(port("fc1/3").admin_state, 1);
}

TEST_F(bulk_config_of_a_switch, names_each_interface_that_refuses) {
    const auto result = run("fc1/5-6 speed 3\nEthernet4/1 vsan 5\nfc1/5 shutdown on\n");
    EXPECT_EQ(result.messages,
              "fc1/5: speed: invalid parameter, or malformed answer (0x40290003)\nfc1/6: speed: invalid parameter, or "
              "malformed answer (0x40290003)\n"
              "Ethernet4/1: vsan: request rejected (0x40290009)\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(port("fc1/5").admin_state, 2);
}

TEST_F(bulk_config_of_a_switch, reads_standard_input) {
    const auto result = shell("echo 'fc1/9 shutdown on' | " EXAMPLES "bulk_config");
    EXPECT_EQ(result.messages, "");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(port("fc1/9").admin_state, 2);
}

TEST_F(bulk_config_of_a_switch, asks_as_seldom_as_it_can) {
    const auto result =
        run("fc1/9 mtu 2000\nfc1/9 description a\nEthernet4/1 mtu 2000\nfc1/10 mtu 2000\nfc1/9 description b\n"
            "fc1/10 description a\nEthernet4/2-3 mtu 2000\n",
            COUNTED_BULK_CONFIG);
    EXPECT_EQ(result.messages, "");
    EXPECT_EQ(result.output, "request\nrequest\nrequest\nrequest\nrequest\n");
    EXPECT_STREQ(port("fc1/9").description, "b");
    EXPECT_STREQ(port("fc1/10").description, "a");
    EXPECT_EQ(port("Ethernet4/3").mtu, 2000u);
}

TEST_F(bulk_config_of_a_switch, sends_nothing_when_a_line_is_wrong) {
    const auto result = run("fc1/9 shutdown on\nfc1/10 shutdown maybe\n");
    EXPECT_EQ(result.messages, "bulk_config: " + file_ + ":2: not a value of this attribute\n");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(port("fc1/9").admin_state, 1);
}

TEST_F(bulk_config, counts_what_no_service_was_asked_as_refused) {
    const virtual_switch_process fixed(fixed_switch);
    const auto result = run("port-channel2 vsan 5\n", COUNTED_BULK_CONFIG);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.messages, "port-channel2: vsan: request rejected (0x40290009)\n");
    EXPECT_EQ(result.status, 1);
}

TEST_F(bulk_config, tells_what_is_wrong_with_a_line) {
    const std::string too_long(600, 'x');
    const auto result =
        run("fc1/1\nfcx mtu 1\nfc1/1-x mtu 1\nfc1/1 what 1\nfc1/1 mtu 1x\nfc1/1 vsan 65536\nfc1/1 mtu\n"
            "fc1/1 mtu -1\nfc1/1 description " +
            std::string(81, 'x') + "\n" + too_long);
    const std::string file = "bulk_config: " + file_;
    EXPECT_EQ(result.messages,
              file + ":1: not INTERFACES ATTRIBUTE VALUE\n" + file + ":2: not an interface or a range of interfaces\n" +
                  file + ":3: not an interface or a range of interfaces\n" + file + ":4: not an attribute\n" + file +
                  ":5: not a value of this attribute\n" + file + ":6: not a value of this attribute\n" + file +
                  ":7: not a value of this attribute\n" + file + ":8: not a value of this attribute\n" + file +
                  ":9: not a value of this attribute\n" + file + ":10: too long\n");
    EXPECT_EQ(result.status, 2);
}

TEST_F(bulk_config, tells_that_there_is_no_switch) {
    const auto result = run("fc1/1-4 mtu 2000\nfc1/7 mtu 2000\n");
    EXPECT_EQ(result.messages, "fc1/1 to fc1/4: mtu: No route to host (0x71)\nfc1/7: mtu: No route to host (0x71)\n");
    EXPECT_EQ(result.status, 1);
}

TEST_F(bulk_config, tells_that_there_is_no_file) {
    const auto result = run_program({EXAMPLES "bulk_config", file_});
    EXPECT_EQ(result.messages, "bulk_config: " + file_ + ": No such file or directory\n");
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(run_program({EXAMPLES "bulk_config", file_, file_}).messages, HasSubstr("usage: "));
}

}  // namespace
