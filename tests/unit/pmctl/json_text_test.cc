// SPDX-License-Identifier: Apache-2.0
// The JSON of fixed records, to the letter and against its documents.
#include "output/json_text.h"

#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "fixed_records.h"
#include "output/port_members.h"
#include "support/json_schema.h"

namespace {

using nlohmann::json;

std::string full_json(const std::vector<pm_port_info_t> &ports) {
    return pmctl::json_text("interfaces", pmctl::port_groups(), pmctl::records_of(std::span(ports)));
}

std::string brief_json(const std::vector<pm_port_info_brief_t> &ports) {
    return pmctl::json_text("interfaces", pmctl::brief_groups(), pmctl::records_of(std::span(ports)));
}

std::string document(const char *name) {
    std::ifstream file(std::string(DOCUMENTS) + "/" + name);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

TEST(json_text, holds_each_member_under_its_key) {
    EXPECT_EQ(full_json({full_port()}), R"json({
  "interfaces": [
    {
      "if_index": 16789504,
      "name": "fc1/4",
      "description": "uplink to core",
      "owner": "zone server",
      "port_type": 101,
      "port_type_text": "Unknown(101)",
      "phy_layer": 102,
      "phy_layer_text": "Unknown",
      "parent_if_index": 67158016,
      "parent_name": "port-channel12",
      "fcot_present": 103,
      "fcot_present_text": "yes",
      "admin_state": 104,
      "admin_state_text": "unknown",
      "oper_state": 105,
      "oper_state_text": "unknown",
      "state_reason": 106,
      "state_reason_text": "Port down because prohibit mask in place for E/TE port",
      "state_reason_keyword": "ficonProhibit",
      "service_state": 107,
      "service_state_text": "Unknown(107)",
      "lane_state": [
        108,
        109,
        110,
        111
      ],
      "lane_state_text": [
        "unknown",
        "unknown",
        "unknown",
        "unknown"
      ],
      "admin_mode": 201001,
      "admin_mode_text": "Unknown(201001)",
      "oper_mode": 201002,
      "oper_mode_text": "Unknown(201002)",
      "admin_trunk_mode": 112,
      "admin_trunk_mode_text": "Unknown(112)",
      "oper_trunk_mode": 113,
      "oper_trunk_mode_text": "Unknown(113)",
      "port_vsan": 2003,
      "native_vlan": 2004,
      "encap": 114,
      "encap_text": "unknown",
      "promiscuous": 201005,
      "promiscuous_text": "Unknown(201005)",
      "admin_speed": 201006,
      "admin_speed_text": "201 Gbps",
      "oper_speed": 201007,
      "oper_speed_text": "201 Gbps",
      "rate_mode": 115,
      "rate_mode_text": "Unknown(115)",
      "duplex": 116,
      "duplex_text": "unknown",
      "auto_neg": 201008,
      "auto_neg_text": "Unknown(201008)",
      "bandwidth": 4201009000,
      "mtu": 201010,
      "flowctrl_receive": 2011,
      "flowctrl_receive_text": "off",
      "flowctrl_send": 2012,
      "flowctrl_send_text": "off",
      "beacon_mode": 117,
      "beacon_mode_text": "Unknown(117)",
      "fcid": "0x0A0BCD",
      "ip_address": "192.0.2.1",
      "ip_mask": "255.255.255.0",
      "bb_credit": [
        301,
        302,
        303,
        304,
        305
      ],
      "bb_credit_text": [
        "301",
        "302",
        "303",
        "304",
        "305"
      ],
      "ec_bb_credit": 306,
      "ec_bb_credit_text": "306",
      "bb_credit_multiplier": 307,
      "bb_credit_multiplier_text": "307",
      "bb_credit_performance_buf": 308,
      "bb_credit_performance_buf_text": "308",
      "bb_scn": 118,
      "bb_scn_text": "Unknown(118)",
      "rx_buf_size": 2013,
      "rx_buf_size_text": "2013",
      "snmp_trap_link_up": 119,
      "snmp_trap_link_up_text": "Unknown(119)",
      "snmp_trap_link_down": 120,
      "snmp_trap_link_down_text": "Unknown(120)",
      "delayed_trap_state": 401,
      "delayed_trap_state_text": "unknown",
      "down_on_link_failure": 402,
      "down_on_link_failure_text": "Unknown(402)",
      "ignore_param": 121,
      "ignore_param_text": "Unknown(121)",
      "track_mode": 403,
      "track_mode_text": "",
      "link_failures": 501,
      "sync_losses": 502,
      "signal_losses": 503,
      "invalid_words": 504,
      "bad_crcs": 505,
      "fcip_peer_address": "198.51.100.7",
      "fcip_tcp_port": 3225,
      "fcip_tlv_86": 601,
      "fcip_tlv_87": 602,
      "fcip_tlv_88": 605,
      "fcip_tlv_89": 604,
      "fcip_tlv_90": 603,
      "fcip_tlv_91": 606,
      "tlv_67": 122,
      "tlv_68": 123,
      "tlv_78": 124,
      "tlv_81": 701,
      "tlv_82": 702,
      "tlv_93": 703,
      "tlv_94": 704,
      "tlv_95": 705,
      "tlv_106": 706,
      "tlv_107": 707,
      "tlv_108": 708
    }
  ]
}
)json");
}

TEST(json_text, holds_each_brief_member_under_its_key) {
    EXPECT_EQ(brief_json({full_brief_port()}), R"json({
  "interfaces": [
    {
      "if_index": 16789504,
      "name": "fc1/4",
      "admin_mode": 201001,
      "admin_mode_text": "Unknown(201001)",
      "oper_mode": 201002,
      "oper_mode_text": "Unknown(201002)",
      "oper_state": 105,
      "oper_state_text": "unknown",
      "state_reason": 106,
      "state_reason_text": "Port down because prohibit mask in place for E/TE port",
      "state_reason_keyword": "ficonProhibit",
      "oper_speed": 201007,
      "oper_speed_text": "201 Gbps",
      "parent_if_index": 67158016,
      "parent_name": "port-channel12",
      "port_vsan": 2003,
      "admin_trunk_mode": 112,
      "admin_trunk_mode_text": "Unknown(112)",
      "oper_trunk_mode": 113,
      "oper_trunk_mode_text": "Unknown(113)",
      "service_state": 107,
      "service_state_text": "Unknown(107)",
      "mtu": 201010,
      "bandwidth": 4201009000,
      "fcid": "0x0A0BCD",
      "ip_address": "192.0.2.1"
    }
  ]
}
)json");
}

json words_in(const json &port) {
    json words = json::object();
    for (const auto &[key, value] : port.items())
        if (key.ends_with("_text") || key.ends_with("_keyword")) words[key] = value;
    return words;
}

TEST(json_text, has_words_beside_the_numbers) {
    EXPECT_EQ(words_in(json::parse(full_json({worded_port()}))["interfaces"][0]), json::parse(R"json({
  "port_type_text": "internal",
  "phy_layer_text": "FC virtual",
  "fcot_present_text": "yes",
  "admin_state_text": "up",
  "oper_state_text": "trunking",
  "state_reason_text": "Link failure: loss of signal",
  "state_reason_keyword": "notConnected",
  "service_state_text": "out of service",
  "lane_state_text": ["up", "down", "testing", "all"],
  "admin_mode_text": "E",
  "oper_mode_text": "TE",
  "admin_trunk_mode_text": "auto",
  "oper_trunk_mode_text": "on",
  "encap_text": "eisl",
  "promiscuous_text": "on",
  "admin_speed_text": "auto max 4 Gbps",
  "oper_speed_text": "100 Mbps",
  "rate_mode_text": "shared",
  "duplex_text": "Half",
  "auto_neg_text": "off",
  "flowctrl_receive_text": "on",
  "flowctrl_send_text": "desired",
  "beacon_mode_text": "on",
  "bb_credit_text": ["default", "5 (mode E)", "16 (mode Fx)", "7", "8"],
  "ec_bb_credit_text": "default",
  "bb_credit_multiplier_text": "default",
  "bb_credit_performance_buf_text": "145",
  "bb_scn_text": "off",
  "rx_buf_size_text": "2013",
  "snmp_trap_link_up_text": "on",
  "snmp_trap_link_down_text": "off",
  "delayed_trap_state_text": "FX",
  "down_on_link_failure_text": "enabled",
  "ignore_param_text": "bit error on",
  "track_mode_text": "force_shut"
})json"));
    EXPECT_EQ(words_in(json::parse(brief_json({worded_brief_port()}))["interfaces"][0]), json::parse(R"json({
  "admin_mode_text": "E",
  "oper_mode_text": "TE",
  "oper_state_text": "down",
  "state_reason_text": "Link failure: loss of signal",
  "state_reason_keyword": "notConnected",
  "oper_speed_text": "100 Mbps",
  "admin_trunk_mode_text": "auto",
  "oper_trunk_mode_text": "on",
  "service_state_text": "out of service"
})json"));
}

TEST(json_text, has_words_for_what_a_port_does_not_have) {
    EXPECT_EQ(json::parse(full_json({bare_port()}))["interfaces"][0]["oper_speed_text"], "unknown");
}

TEST(json_text, takes_fields_of_any_kind) {
    const std::vector<pmctl::json_fields> objects{{{"code", 7u}, {"known", true}, {"name", "seven"}}, {}};
    EXPECT_EQ(pmctl::json_text("things", objects), R"({
  "things": [
    {
      "code": 7,
      "known": true,
      "name": "seven"
    },
    {}
  ]
}
)");
}

TEST(json_text, has_the_same_shape_for_any_number_of_ports) {
    EXPECT_EQ(json::parse(full_json({})), json::parse(R"({"interfaces": []})"));
    const json two = json::parse(full_json({full_port(), bare_port()}));
    EXPECT_EQ(two["interfaces"].size(), 2u);
    EXPECT_EQ(two["interfaces"][1]["name"], "mgmt0");
}

TEST(json_text, has_null_for_what_a_port_does_not_have) {
    std::set<std::string> nulls;
    const json port = json::parse(full_json({bare_port()}))["interfaces"][0];
    for (const auto &[key, value] : port.items())
        if (value.is_null()) nulls.insert(key);
    EXPECT_EQ(nulls, (std::set<std::string>{"parent_if_index", "parent_name", "port_vsan", "native_vlan", "oper_speed",
                                            "fcid", "ip_address", "ip_mask", "fcip_peer_address", "fcip_tcp_port"}));
}

TEST(json_text, carries_any_text) {
    pm_port_info_t port = full_port();
    strcpy(port.description, "a \"quoted\" \\ line\n\x01 caf\xc3\xa9 \xff");
    const std::string text = full_json({port});
    EXPECT_NE(text.find(R"("a \"quoted\" \\ line\n\u0001 )"
                        "caf\xc3\xa9 \xef\xbf\xbd\""),
              std::string::npos)
        << text;
    memset(port.owner, 'x', sizeof port.owner);
    EXPECT_EQ(json::parse(full_json({port}))["interfaces"][0]["owner"], std::string(sizeof port.owner, 'x'));
}

class json_documents : public testing::Test {
  protected:
    const json_schema schema{DOCUMENTS "/schema/pmctl-show-interface.schema.json"};
};

TEST_F(json_documents, describe_every_key_of_a_port) {
    schema.expect_described("interface", json::parse(full_json({full_port()}))["interfaces"][0]);
    schema.expect_described("interface", json::parse(full_json({bare_port()}))["interfaces"][0]);
}

TEST_F(json_documents, describe_every_key_of_a_brief_port) {
    schema.expect_described("brief_interface", json::parse(brief_json({full_brief_port()}))["interfaces"][0]);
    schema.expect_described("brief_interface", json::parse(brief_json({bare_brief_port()}))["interfaces"][0]);
}

TEST_F(json_documents, have_every_key_in_the_manual) {
    const std::string manual = document("pmctl.md");
    for (const auto &[key, property] : schema.definition("interface").at("properties").items())
        EXPECT_NE(manual.find("| `" + key + "` |"), std::string::npos) << key;
}

}  // namespace
