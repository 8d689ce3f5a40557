// SPDX-License-Identifier: Apache-2.0
// What the dissector shows of messages, against what the client shows of the switch.
#include <gmock/gmock.h>

#include <fstream>
#include <map>

#include "dissector_fixture.h"
#include "integration/pmctl/pmctl_runs.h"
#include "integration/virtual_switch/virtual_switch_test.h"

namespace dissector_test {
namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST_F(dissector, knows_every_message) {
    for (const uint32_t opcode :
         {MTS_OPC_PM_GET_PORT_INFO, MTS_OPC_PM_GET_NEXT_PORT_INFO, MTS_OPC_PM_GET_IF_INDEX_LISTING,
          MTS_OPC_GET_SFP_DIAG_INFO, MTS_OPC_PM_GET_CLEAR_ETH_STATS, MTS_OPC_PM_GET_PORT_INFO_BRIEF,
          MTS_OPC_PM_GET_MODULE_RESOURCES, MTS_OPC_PM_GET_STARTUP_IF_INDEX_LISTING, CMI_OPC_GET_CHANNEL_MEMBER,
          CMI_OPC_PM_SET_PORT_CONFIG, CMI_OPC_PM_GET_PORT_CONFIG, CMI_OPC_PM_GET_FCOT_INFO, CMI_OPC_PM_CONFIG_SUB_INTF,
          CMI_OPC_PM_GET_MODULE_INTF_LISTING, CMI_OPC_PM_CONFIG_LOOPBACK}) {
        EXPECT_FALSE(requests(opcode).empty()) << opcode;
        EXPECT_EQ(requests(opcode).size(), answers(opcode).size()) << opcode;
    }
}

TEST_F(dissector, leaves_nothing_of_them_over) {
    for (const json &packet : packets()) {
        EXPECT_THAT(values_of(packet, "port_mgr.rest"), IsEmpty()) << packet.dump(1);
        EXPECT_THAT(values_of(packet, "port_mgr.malformed"), IsEmpty()) << packet.dump(1);
        EXPECT_THAT(values_of(packet, "port_mgr.element.value"), IsEmpty()) << packet.dump(1);
        EXPECT_THAT(values_of(packet, "port_mgr.config.value"), IsEmpty()) << packet.dump(1);
        const bool is_known = value_of(packet, "port_mgr.opcode") != std::to_string(unknown_opcode);
        EXPECT_EQ(values_of(packet, "port_mgr.payload").empty(), is_known) << packet.dump(1);
    }
}

// Every number and text of the client's own output is there under the same name. Of arrays, a port may send a part.
void expect_same(const json &packet, const json &port) {
    const std::set<std::string> shown_otherwise{"if_index", "parent_if_index", "fcid", "tlv_81"};
    size_t compared = 0;
    for (const auto &[key, value] : port.items()) {
        const auto decoded = values_of(packet, "port_mgr.port_info." + key);
        if (decoded.empty() || value.is_null() || shown_otherwise.contains(key)) continue;
        std::vector<std::string> expected;
        for (const json &element : value.is_array() ? value : json::array({value}))
            expected.push_back(element.is_string() ? element.get<std::string>() : element.dump());
        expected.resize(std::min(expected.size(), decoded.size()));
        EXPECT_EQ(decoded, expected) << key;
        ++compared;
    }
    EXPECT_GE(compared, 28u);
}

TEST_F(dissector, shows_ports_as_the_client_does) {
    expect_same(first_with(answers(MTS_OPC_PM_GET_PORT_INFO), "port_mgr.interface", "fc1/30"), recorded().port);
    expect_same(first_with(answers(MTS_OPC_PM_GET_PORT_INFO), "port_mgr.interface", "fcip1"), recorded().tunnel);
}

TEST_F(dissector, shows_indexes_by_number_and_name) {
    const json packet = answers(MTS_OPC_PM_GET_PORT_INFO_BRIEF).at(0);
    const auto interfaces = values_of(packet, "port_mgr.interface");
    for (const char *const name : {"fc1/1", "fc1/48", "Ethernet4/1", "port-channel5", "mgmt0", "fcip1"})
        EXPECT_THAT(interfaces, Contains(name));
    const auto indexes = values_of(packet, "port_mgr.port_info_brief.if_index");
    ASSERT_EQ(std::to_string(indexes.size()), value_of(packet, "port_mgr.record_count.count"));
    std::set<std::string> names(interfaces.begin(), interfaces.end());
    for (const std::string &index : indexes)
        EXPECT_TRUE(names.contains(name_of(static_cast<if_index_t>(std::stoul(index, nullptr, 16))))) << index;
}

TEST_F(dissector, shows_transceivers_and_their_readings) {
    const json page = first_with(answers(CMI_OPC_PM_GET_FCOT_INFO), "port_mgr.interface", "fc1/30");
    EXPECT_EQ(value_of(page, "port_mgr.fcot_info.serial_id.serial_number"), recorded().transceiver.at("serial_number"));
    EXPECT_EQ(value_of(page, "port_mgr.fcot_info.serial_id.vendor_name"), recorded().transceiver.at("vendor"));
    const json card = answers(MTS_OPC_GET_SFP_DIAG_INFO).at(0);
    const double temperature = std::stod(value_of(card, "port_mgr.sfp_diag_info.temperature.value")) / 256;
    EXPECT_NEAR(temperature, recorded().details.at("temperature").get<double>(), 0.01);
    EXPECT_EQ(value_of(card, "port_mgr.sfp_diag_info.temperature.low_alarm"), "-1280");
    EXPECT_NE(value_of(card, "port_mgr.sfp_diag_extra.age"), "0");
}

TEST_F(dissector, shows_counters_and_resources) {
    const json stats = answers(MTS_OPC_PM_GET_CLEAR_ETH_STATS).at(0);
    const json &counters = recorded().counters;
    EXPECT_EQ(value_of(stats, "port_mgr.eth_stats.traffic.rx.octets"), counters.at("rx_bytes").dump());
    EXPECT_EQ(value_of(stats, "port_mgr.eth_stats.traffic.rx_multicast.frames"),
              counters.at("rx_multicast_frames").dump());
    EXPECT_EQ(value_of(stats, "port_mgr.eth_stats.seconds_since_clear"), counters.at("seconds_since_clear").dump());
    EXPECT_EQ(value_of(stats, "port_mgr.eth_stats.rx_pause_frames"), counters.at("rx_pause_frames").dump());
    EXPECT_EQ(value_of(stats, "port_mgr.eth_stats.link_resets"), counters.at("link_resets").dump());
    const json resources = answers(MTS_OPC_PM_GET_MODULE_RESOURCES).at(0);
    EXPECT_EQ(values_of(resources, "port_mgr.module_resource.total").at(0), recorded().resource.at("total").dump());
    EXPECT_EQ(values_of(resources, "port_mgr.module_resource.used").at(0), recorded().resource.at("used").dump());
}

TEST_F(dissector, shows_what_is_configured) {
    const json shutdown = first_with(requests(CMI_OPC_PM_SET_PORT_CONFIG), "port_mgr.config.admin_state", "2");
    EXPECT_THAT(values_of(shutdown, "port_mgr.interface"), ElementsAre("fc1/1", "fc1/1", "fc1/2", "fc1/2"));
    EXPECT_EQ(value_of(shutdown, "port_mgr.set_request.second_text"), "pmctl");
    const json described =
        first_with(requests(CMI_OPC_PM_SET_PORT_CONFIG), "port_mgr.config.description", "first floor");
    EXPECT_EQ(value_of(described, "port_mgr.config.attribute"), std::to_string(PM_ATTR_DESCRIPTION));
    const json results = first_with(answers(CMI_OPC_PM_SET_PORT_CONFIG), "port_mgr.interface", "fc1/1");
    EXPECT_THAT(values_of(results, "port_mgr.set_port_result.status"), ElementsAre("0x00000000", "0x00000000"));
    const json created = requests(CMI_OPC_PM_CONFIG_SUB_INTF).at(0);
    EXPECT_EQ(value_of(created, "port_mgr.interface"), "Ethernet4/1");
    EXPECT_EQ(value_of(created, "port_mgr.sub_intf_entry.sub_interfaces.size"), "512");
    EXPECT_THAT(values_of(requests(CMI_OPC_PM_CONFIG_LOOPBACK).at(0), "port_mgr.interface"),
                ElementsAre("loopback9", "loopback9"));
    EXPECT_EQ(value_of(requests(CMI_OPC_GET_CHANNEL_MEMBER).at(0), "port_mgr.interface"), "port-channel5");
    EXPECT_EQ(value_of(requests(MTS_OPC_PM_GET_STARTUP_IF_INDEX_LISTING).at(0),
                       "port_mgr.startup_listing_request.startup_block"),
              "fc1/1-3,fc9/1");
}

TEST_F(dissector, tells_a_refusal) {
    const std::string summaries =
        tshark(recorded().path, {"-Y", "port_mgr.refused", "-T", "fields", "-e", "_ws.col.Info"});
    EXPECT_THAT(summaries, HasSubstr("CMI_OPC_PM_SET_PORT_CONFIG answer, PM_ERR_INVALID_PARAM, 1 record, fc1/3\n"));
    EXPECT_THAT(summaries, HasSubstr("MTS_OPC_PM_GET_PORT_INFO answer, PM_ERR_INVALID_RANGE\n"));
}

// By the kind of a record, the name of an interface and a value.
TEST_F(dissector, finds_messages) {
    const std::string found = tshark(
        recorded().path, {"-Y", "port_mgr.port_info && port_mgr.interface == \"fcip1\" && port_mgr.port_info.mtu > 100",
                          "-T", "fields", "-e", "port_mgr.opcode", "-e", "port_mgr.kind"});
    EXPECT_THAT(lines_of(found), Contains("324\t2"));
    EXPECT_THAT(lines_of(found), Each(testing::AnyOf("324\t2", "2827\t4")));
}

TEST_F(dissector, names_values_in_words) {
    const std::string text = tshark(recorded().path, {"-V"});
    for (const char *const line :
         {"admin state: 2 (down)", "if index: 0x01000000 (fc1/1)", "attribute: 1 (PM_ATTR_ADMIN_STATE)",
          "sap: 181 (PM_SAP_SFP_DIAGNOSTICS)", "node: 0x00000102 (line card in slot 1)", "(10 Gbps)",
          "sub interfaces bits: ", ": 77-79", "resource: 2 (PM_RESOURCE_BB_CREDITS)",
          "status: 0x40290003 (PM_ERR_INVALID_PARAM)", "opcode: 2826 (CMI_OPC_PM_SET_PORT_CONFIG)",
          "state reason: 2 (None)"})
        EXPECT_NE(text.find(line), std::string::npos) << line;
}

// Each end links its own request and answer.
TEST_F(dissector, links_requests_and_answers) {
    std::map<std::string, size_t> linked;
    for (size_t i = 0; i < packets().size(); ++i) {
        const json &packet = packets()[i];
        const bool is_request = std::set<std::string>{"1", "3"}.contains(value_of(packet, "port_mgr.kind"));
        if (is_request) continue;
        const size_t frame = std::stoul(value_of(packet, "port_mgr.response_to"));
        const json &request = packets().at(frame - 1);
        EXPECT_EQ(value_of(request, "port_mgr.response_in"), std::to_string(i + 1));
        for (const char *const same : {"port_mgr.token", "port_mgr.process", "port_mgr.opcode", "port_mgr.connection"})
            EXPECT_EQ(value_of(request, same), value_of(packet, same));
        const double seconds = std::stod(value_of(packet, "port_mgr.time"));
        EXPECT_GT(seconds, 0);
        EXPECT_LT(seconds, 10);
        ++linked[value_of(packet, "port_mgr.process_name")];
    }
    EXPECT_EQ(linked.size(), 3u);
    EXPECT_GE(linked["pmctl"], 20u);
}

TEST_F(dissector, joins_the_pieces_of_a_large_message) {
    const temporary_runtime_dir directory;
    const std::string chassis = directory.file("large.toml");
    std::ofstream file(chassis);
    file << "[chassis]\nname = \"large\"\ntype = 6\nslots = 6\n";
    for (int slot = 1; slot <= 6; ++slot) file << "[[module]]\nslot = " << slot << "\nkind = \"fc\"\nports = 128\n";
    file.close();
    const std::string path = directory.file("large.pcapng");
    {
        const virtual_switch_process daemon(chassis);
        setenv("MTS_CAPTURE", path.c_str(), 1);
        EXPECT_EQ(shell("exec " ALL_PORTS).status, 0);
        unsetenv("MTS_CAPTURE");
    }
    std::vector<std::string> options{"-2", "-T", "fields", "-E", "aggregator= "};
    for (const char *const name : {"payload_offset", "whole_in", "response_in", "response_to", "malformed",
                                   "record_count.count", "port_info.admin_speed"})
        options.insert(options.end(), {"-e", std::string("port_mgr.") + name});
    const auto lines = lines_of(tshark(path, options));
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0], "0\t\t3\t\t\t\t");
    EXPECT_EQ(lines[1], "0\t3\t\t\t\t\t");
    EXPECT_THAT(lines[2], testing::StartsWith("262080\t\t\t1\t\t768\t"));
    EXPECT_EQ(std::ranges::count(lines[2], ' '), 767);
}

}  // namespace
}  // namespace dissector_test
