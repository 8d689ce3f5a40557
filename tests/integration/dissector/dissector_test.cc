// SPDX-License-Identifier: Apache-2.0
// Exchanges of the client with the running switch, recorded at both ends and shown by tshark.
#include <arpa/inet.h>

#include <fstream>
#include <map>
#include <memory>
#include <random>
#include <set>

#include "decoded_capture.h"
#include "integration/capture/capture_reader.h"
#include "integration/pmctl/pmctl_runs.h"
#include "integration/virtual_switch/configuration_client.h"
#include "made_capture.h"
#include "platform/if_index.h"
#include "port_mgr/if_index_listing.h"
#include "port_mgr/opcodes.h"

namespace dissector_test {
namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// The output of a show command, which recorded what it exchanged.
json shown(const std::string &words, const char *array = "interfaces") {
    const run_result run = shell(PMCTL " show " + words + " --json");
    EXPECT_EQ(run.status, 0) << words << ": " << run.messages;
    return json::parse(run.output).at(array).at(0);
}

void configure(const std::string &words) {
    const run_result run = shell(PMCTL " config " + words);
    EXPECT_EQ(run.status, 0) << words << ": " << run.messages;
}

constexpr uint32_t unknown_opcode = 9999;

// What the library can ask and no command does.
void ask_for_the_rest() {
    const configuration_client client;
    EXPECT_EQ(client.next(0).records.size(), 1u);
    EXPECT_EQ(client.configuration({range_of("port-channel5", "port-channel5")}, PM_CONFIG_GET_BY_MEMBER).status, 0u);
    EXPECT_EQ(client.set("fc1/3", byte_value(PM_ATTR_ADMIN_STATE, 77)).status, PM_ERR_INVALID_PARAM);
    EXPECT_EQ(client.range("fc1/1", "Ethernet4/1").status, PM_ERR_INVALID_RANGE);
    EXPECT_EQ(client.ask(PM_SAP_PORT_MANAGER, unknown_opcode, {1, 2, 3}).size(), 4u);
    std::array<char, PM_STARTUP_BLOCK_SIZE> block{"fc1/1-3,fc9/1"};
    mts_msg_t message{};
    EXPECT_EQ(pm_get_startup_if_index_listing(block.data(), IF_TYPE_FC, client.handle(), &message, 10), 0u);
    EXPECT_EQ(mts_drop(client.handle(), &message), 0);
}

// One capture of everything, for all tests.
struct recording {
    recording() {
        setenv("MTS_CAPTURE", path.c_str(), 1);
        const virtual_switch_process daemon(director);
        EXPECT_EQ(shell(PMCTL " show interface brief").status, 0);
        port = shown("interface fc1/30");
        tunnel = shown("interface fcip1");
        counters = shown("interface counters Ethernet4/1");
        transceiver = shown("interface transceiver fc1/30");
        details = shown("interface transceiver details fc1/30");
        resource = shown("module resources", "resources");
        EXPECT_EQ(shell(PMCTL " show interface index").status, 0);
        EXPECT_EQ(shell(PMCTL " show module 4 interfaces").status, 0);
        EXPECT_EQ(shell(PMCTL " show running-config fc1/1").status, 0);
        configure("interface fc1/1-2 shutdown");
        configure("interface fc1/2 description 'first floor'");
        configure("subinterface create Ethernet4/1.77-79");
        configure("loopback create loopback9");
        ask_for_the_rest();
        unsetenv("MTS_CAPTURE");
    }

    temporary_runtime_dir directory;
    std::string path = directory.file("all.pcapng");
    json port, tunnel, counters, transceiver, details, resource;
};

class dissector : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        recorded_ = std::make_unique<recording>();
        // With two passes, requests know their answers.
        packets_ = decode(recorded_->path, {"-2"});
    }
    static void TearDownTestSuite() {
        recorded_.reset();
        packets_.clear();
    }

    static const recording &recorded() { return *recorded_; }
    static const std::vector<json> &packets() { return packets_; }

    // The messages of an opcode that clients sent or received.
    static std::vector<json> requests(uint32_t opcode) { return messages(opcode, {"1", "3"}); }
    static std::vector<json> answers(uint32_t opcode) { return messages(opcode, {"2", "4"}); }

    // The first of them with this value of a field.
    static json first_with(const std::vector<json> &from, const std::string &field, const std::string &value) {
        for (const json &packet : from) {
            const auto values = values_of(packet, field);
            if (std::ranges::find(values, value) != values.end()) return packet;
        }
        ADD_FAILURE() << "no packet with " << field << " " << value;
        return {};
    }

  private:
    static std::vector<json> messages(uint32_t opcode, const std::set<std::string> &kinds) {
        std::vector<json> found;
        for (const json &packet : packets_) {
            const bool is_client = value_of(packet, "port_mgr.process_name") != "pm-virtual-switch";
            if (is_client && value_of(packet, "port_mgr.opcode") == std::to_string(opcode) &&
                kinds.contains(value_of(packet, "port_mgr.kind")))
                found.push_back(packet);
        }
        return found;
    }

    static std::unique_ptr<recording> recorded_;
    static std::vector<json> packets_;
};

std::unique_ptr<recording> dissector::recorded_;
std::vector<json> dissector::packets_;

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
    EXPECT_THAT(summaries, HasSubstr("CMI_OPC_PM_SET_PORT_CONFIG answer, PM_ERR_INVALID_PARAM, 1 records, fc1/3\n"));
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

std::string spoil(std::string packet, std::mt19937 &random) {
    constexpr size_t record_size = 64;
    const auto below = [&random](size_t end) { return std::uniform_int_distribution<size_t>(0, end - 1)(random); };
    const size_t first = below(4) == 0 ? 0 : std::min(record_size, packet.size() - 1);
    for (size_t changes = below(4); changes > 0; --changes)
        packet[first + below(std::min<size_t>(packet.size() - first, 40))] = static_cast<char>(below(256));
    for (size_t changes = below(8); changes > 0; --changes)
        packet[below(packet.size())] = static_cast<char>(below(2) * 255);
    if (below(2) == 0) packet.resize(1 + below(packet.size()));
    return packet;
}

// tshark itself fails the test when the dissector does.
TEST_F(dissector, survives_spoilt_messages) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const std::string path = recorded().directory.file("spoilt.pcapng");
    {
        made_capture spoilt(path, recorded().path);
        for (const capture_test::packet &packet : capture_test::read_capture(recorded().path).packets) {
            if (packet.bytes.size() > 8000) continue;
            for (int times = 0; times < 8; ++times) spoilt.add(spoil(packet.bytes, random));
        }
    }
    const std::string text = tshark(path, {"-2", "-V"});
    for (const char *const told : {"(Error/Malformed)", "Not all of the message was captured"})
        EXPECT_NE(text.find(told), std::string::npos) << told;
}

std::string network_word(uint32_t number) {
    const uint32_t wire = htonl(number);
    return {reinterpret_cast<const char *>(&wire), sizeof wire};
}

// Every type, known or not, with numbers that its layout explains and others.
TEST_F(dissector, names_interfaces_as_the_platform_does) {
    std::vector<if_index_t> indexes;
    for (uint32_t type = 0; type < 256; ++type) {
        for (const uint32_t number : {0x000001u, 0x083000u, 0x001007u, 0x0c7fffu, 0x400abcu, 0xffffffu, 0x00ffffu})
            indexes.push_back(type << 24 | number);
    }
    const std::string path = recorded().directory.file("interfaces.pcapng");
    {
        std::string payload = network_word(0) + network_word(static_cast<uint32_t>(indexes.size()));
        for (const if_index_t index : indexes) payload += network_word(index);
        made_capture made(path, recorded().path);
        for (const capture_test::packet &packet : capture_test::read_capture(recorded().path).packets) {
            if (packet.opcode != MTS_OPC_PM_GET_IF_INDEX_LISTING || packet.kind != 2) continue;
            std::string record = packet.bytes.substr(0, 64);
            made.add(record.replace(28, 4, network_word(static_cast<uint32_t>(payload.size()))) + payload);
            break;
        }
    }
    const auto decoded = decode(path);
    ASSERT_EQ(decoded.size(), 1u);
    std::vector<std::string> names;
    for (const if_index_t index : indexes) names.push_back(name_of(index));
    EXPECT_EQ(values_of(decoded[0], "port_mgr.interface"), names);
}

TEST_F(dissector, shows_short_messages_as_far_as_they_go) {
    const std::string path = recorded().directory.file("short.pcapng");
    {
        made_capture cut(path, recorded().path);
        for (capture_test::packet packet : capture_test::read_capture(recorded().path).packets) {
            if (packet.opcode != MTS_OPC_PM_GET_NEXT_PORT_INFO || packet.kind != 2) continue;
            constexpr uint8_t left = 8 + 100;
            packet.bytes.resize(64 + left);
            packet.bytes.replace(28, 4, std::string{0, 0, 0, left});
            cut.add(packet.bytes);
        }
    }
    const auto decoded = decode(path);
    ASSERT_EQ(decoded.size(), 2u);
    for (const json &packet : decoded) {
        EXPECT_EQ(value_of(packet, "port_mgr.interface"), "fc1/1");
        EXPECT_EQ(values_of(packet, "port_mgr.port_info.oper_mode").size(), 1u);
        EXPECT_THAT(values_of(packet, "port_mgr.port_info.port_vsan"), IsEmpty());
        EXPECT_THAT(packet.dump(), HasSubstr("100 of the 189 bytes of port_info"));
    }
}

}  // namespace
}  // namespace dissector_test
