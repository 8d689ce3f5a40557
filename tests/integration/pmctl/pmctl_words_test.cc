// SPDX-License-Identifier: Apache-2.0
// What people read about the director, to the letter, and what programs read, by its schemas.
#include "integration/pmctl/pmctl_program.h"
#include "support/json_schema.h"

namespace {

using nlohmann::json;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class pmctl_words : public pmctl_program {
  protected:
    static std::string shown(const std::vector<std::string> &words) {
        const auto result = pmctl(words);
        EXPECT_EQ(result.status, 0);
        EXPECT_THAT(result.messages, IsEmpty());
        return result.output;
    }
};

TEST_F(pmctl_words, tell_a_port_in_full) {
    const std::string output = shown({"show", "interface", "fc1/30"});
    EXPECT_THAT(output, StartsWith(R"(fc1/30
  General
    Interface                     fc1/30
    Description                   flapping host
    Owner                         -
    Port type                     external
    Physical layer                FC
    Port channel                  -
    Transceiver present           yes
  State
    Admin state                   up
    State                         down
    State reason                  Error disabled - bit error rate too high
    Service state                 in service
    Lane state                    down, down, down, down
  Mode
    Admin mode                    auto
    Oper mode                     auto
    Admin trunk mode              on
    Oper trunk mode               off
    Port VSAN                     10
    Native VLAN                   -
    Encapsulation                 normal
    Promiscuous                   -
  Link
    Admin speed                   8 Gbps
    Oper speed                    unknown
    Rate mode                     dedicated
    Duplex                        unknown
    Auto-negotiation              -
    Bandwidth (kbit/s)            0
    MTU (bytes)                   2112
    Receive flow control          off
    Send flow control             off
    Beacon mode                   off
)"));
    EXPECT_THAT(output, HasSubstr(R"(
  Buffers and credits
    BB credits                    16, 16, default, default, default
    Extended BB credits           default
    BB credit multiplier          default
    Performance buffers           default
    BB state change notification  off
    Receive buffer size (bytes)   2112
  Traps, tracking and errors
    Link-up trap                  on
    Link-down trap                on
    Delayed trap state            disabled
    Down on link failure          enabled
    Ignored errors                bit error off
    Tracking mode                 operationally-bound
    Link failures                 96
)"));
}

TEST_F(pmctl_words, tell_an_ethernet_port) {
    const auto lines = lines_of(shown({"show", "interface", "Ethernet4/1,Ethernet4/13-14"}));
    for (const char *line :
         {"    Admin mode                    trunk", "    Receive flow control          on",
          "    Send flow control             desired", "    Admin speed                   auto 10 or 100 Mbps",
          "    Oper speed                    100 Mbps", "    Duplex                        Half",
          "    Promiscuous                   on", "    Auto-negotiation              off"})
        EXPECT_THAT(lines, Contains(line));
}

TEST_F(pmctl_words, make_the_table_of_all_ports) {
    const auto lines = lines_of(shown({"show", "interface", "brief"}));
    EXPECT_EQ(lines[0],
              "Interface          Admin mode  Oper mode  State     Reason         Gbps  Port channel    VSAN");
    for (const char *line :
         {"fc1/1              E           TE         trunking  -              8     port-channel5   10",
          "fc1/30             auto        auto       down      errDisabled    --    -               10",
          "fc1/32             auto        auto       testing   init           --    -               10",
          "Ethernet4/13       trunk       trunk      up        -              0.1   -               -",
          "port-channel12     auto        auto       down      noOperMembers  --    -               1",
          "if13-5/1           IPS         IPS        up        -              1     -               -",
          "loopback1          auto        auto       up        -              1     -               -"})
        EXPECT_THAT(lines, Contains(line));
}

TEST_F(pmctl_words, stand_beside_the_numbers) {
    const json port = objects_in(shown({"show", "interface", "fc1/30", "--json"})).at(0);
    EXPECT_EQ(port["state_reason"], 79);
    EXPECT_EQ(port["state_reason_text"], "Error disabled - bit error rate too high");
    EXPECT_EQ(port["state_reason_keyword"], "errDisabled");
    EXPECT_EQ(port["oper_speed"], nullptr);
    EXPECT_EQ(port["oper_speed_text"], "unknown");
    EXPECT_EQ(port["bb_credit"], json::parse("[16, 16, 0, 0, 0]"));
    EXPECT_EQ(port["bb_credit_text"], json::parse(R"(["16", "16", "default", "default", "default"])"));
}

TEST_F(pmctl_words, are_described_by_the_schema) {
    const json_schema schema(SOURCE_FOLDER "/docs/schema/pmctl-show-interface.schema.json");
    for (const json &port : objects_in(shown({"show", "interface", "--json"})))
        schema.expect_described("interface", port);
    for (const json &port : objects_in(shown({"show", "interface", "brief", "--json"})))
        schema.expect_described("brief_interface", port);
}

TEST_F(pmctl_words, tell_what_all_interfaces_support) {
    const std::string names = shown({"show", "interface", "brief", "--json"});
    const std::string output = shown({"show", "interface", "capabilities", "--all", "--json"});
    EXPECT_EQ(names_in(output), names_in(names));
    const json_schema of_capabilities(SOURCE_FOLDER "/docs/schema/pmctl-show-interface-capabilities.schema.json");
    for (const json &interface : objects_in(output)) of_capabilities.expect_described("interface", interface);
}

class pmctl_words_alone : public pmctl_alone {};

TEST_F(pmctl_words_alone, tell_what_interfaces_support) {
    const auto result = pmctl({"show", "interface", "fc1/1-2", "Ethernet4/1", "po5", "capabilities"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output,
              R"(Interface      Port mode  Trunk mode  Speed  Duplex  Beacon  BB credit  Transceiver  Bundle  xgfc
fc1/1          yes        yes         yes    no      yes     yes        yes          no      no
fc1/2          yes        yes         yes    no      yes     yes        yes          no      no
Ethernet4/1    no         no          no     no      yes     yes        yes          no      no
port-channel5  yes        yes         yes    no      no      no         no           yes     no
)");
}

TEST_F(pmctl_words_alone, tell_the_reason_codes) {
    const auto result = pmctl({"show", "interface", "reasons"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, StartsWith("Code  Keyword              Message\n"
                                          "1     down                 Other\n"));
    EXPECT_THAT(lines_of(result.output), Contains("29    sfpAbsent            SFP not present"));
    const json_schema of_reasons(SOURCE_FOLDER "/docs/schema/pmctl-show-interface-reasons.schema.json");
    const auto codes = objects_in(pmctl({"show", "interface", "reasons", "--all", "--json"}).output, "reasons");
    for (const json &reason : codes) of_reasons.expect_described("reason", reason);
    EXPECT_EQ(codes.size(), 256u);
}

}  // namespace
