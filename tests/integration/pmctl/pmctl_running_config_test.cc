// SPDX-License-Identifier: Apache-2.0
// The running configuration, read line by line with a grammar of its own and held against the JSON of the same ports.
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <regex>
#include <set>

#include "integration/pmctl/pmctl_program.h"

namespace {

using nlohmann::json;
using testing::IsEmpty;

// What the words of a line say, as the number in JSON; null for words that the line does not take.
using reader = std::function<json(const std::string &words)>;

reader one_of(const std::map<std::string, uint32_t> &values) {
    return [values](const std::string &words) {
        const auto found = values.find(words);
        return found == values.end() ? json() : json(found->second);
    };
}

json number(const std::string &words) {
    static const std::regex decimal("0|[1-9][0-9]{0,9}");
    return std::regex_match(words, decimal) ? json(std::stoull(words)) : json();
}

reader number_or(const std::map<std::string, uint32_t> &values) {
    return [known = one_of(values)](const std::string &words) {
        const json value = known(words);
        return value.is_null() ? number(words) : value;
    };
}

json unquoted(const std::string &words) {
    static const std::regex quoted(R"re("([^"\\]|\\["\\]|\\x[0-9a-f]{2})*")re");
    if (!std::regex_match(words, quoted)) return {};
    std::string text;
    for (size_t i = 1; i + 1 < words.size(); ++i) {
        if (words[i] != '\\') {
            text += words[i];
        } else if (words[++i] != 'x') {
            text += words[i];
        } else {
            text += static_cast<char>(std::stoi(words.substr(i + 1, 2), nullptr, 16));
            i += 2;
        }
    }
    return text;
}

struct line_kind {
    const char *keywords;
    json::json_pointer key;
    reader read;
};

const std::vector<line_kind> &line_kinds() {
    static const auto on_off = one_of({{"on", 1}, {"off", 2}});
    static const std::vector<line_kind> kinds = {
        {"no shutdown", json::json_pointer("/admin_state"), one_of({{"", 1}})},
        {"shutdown", json::json_pointer("/admin_state"), one_of({{"", 2}})},
        {"no description", json::json_pointer("/description"),
         [](const std::string &words) { return words.empty() ? json("") : json(); }},
        {"description", json::json_pointer("/description"), unquoted},
        {"switchport mode", json::json_pointer("/admin_mode"),
         number_or({{"auto", 1}, {"SD", 2}, {"E", 4}, {"F", 32}, {"FL", 64}, {"IPS", 512}, {"trunk", 1048576}})},
        {"switchport trunk mode", json::json_pointer("/admin_trunk_mode"),
         one_of({{"off", 1}, {"on", 2}, {"auto", 3}})},
        {"speed", json::json_pointer("/admin_speed"),
         number_or({{"auto", 0}, {"auto max 2000", 1}, {"auto max 4000", 2}, {"auto 10 100", 110}})},
        {"rate-mode", json::json_pointer("/rate_mode"), one_of({{"dedicated", 1}, {"shared", 2}})},
        {"duplex", json::json_pointer("/duplex"), one_of({{"half", 1}, {"full", 2}, {"auto", 3}})},
        {"auto-negotiation", json::json_pointer("/auto_neg"), on_off},
        {"beacon", json::json_pointer("/beacon_mode"), on_off},
        {"receive-buffer-size", json::json_pointer("/rx_buf_size"), number},
        {"receive-bb-credit", json::json_pointer("/bb_credit/0"), number_or({{"default", 0}})},
        {"port-vsan", json::json_pointer("/port_vsan"), number},
        {"mtu", json::json_pointer("/mtu"), number},
        {"bandwidth", json::json_pointer("/bandwidth"), number},
        {"no bandwidth", json::json_pointer("/bandwidth"), number},
        {"down-on-link-failure", json::json_pointer("/down_on_link_failure"), one_of({{"on", 3}, {"off", 4}})},
    };
    return kinds;
}

// The kind of a line, or null.
const line_kind *kind_of(const std::string &line) {
    for (const line_kind &kind : line_kinds())
        if (line == kind.keywords || line.rfind(std::string(kind.keywords) + " ", 0) == 0) return &kind;
    return nullptr;
}

std::string words_of(const std::string &line, const line_kind &kind) {
    const size_t begin = strlen(kind.keywords) + 1;
    return line.size() > begin ? line.substr(begin) : "";
}

struct block {
    std::string created;  // by the line before
    std::string name;
    std::vector<std::string> settings;
};

// Reads "… create NAME", "interface NAME", indented settings and, between blocks, a blank line.
std::vector<block> read_blocks(const std::string &text) {
    std::vector<block> blocks(1);
    for (const std::string &line : lines_of(text)) {
        std::smatch parts;
        if (line.empty())
            blocks.emplace_back();
        else if (std::regex_match(line, parts, std::regex("(subinterface|loopback) create (.+)")))
            blocks.back().created = parts[1].str() + " " + parts[2].str();
        else if (std::regex_match(line, parts, std::regex("interface (.+)")))
            blocks.back().name = parts[1];
        else if (std::regex_match(line, parts, std::regex("  ([^ ].*)")))
            blocks.back().settings.push_back(parts[1]);
        else
            ADD_FAILURE() << "not a line: " << line;
    }
    return blocks;
}

std::string expected_creation(const std::string &name) {
    if (name.find('.') != std::string::npos) return "subinterface " + name;
    return name.rfind("loopback", 0) == 0 ? "loopback " + name : "";
}

// What a bandwidth that is not configured follows from, in kbit/s.
json bandwidth_of_speed(const json &port) {
    const json &speed = port.at("oper_speed");
    return speed.is_null() ? 0 : speed.get<uint64_t>() * 1000;
}

// Every line says what the port's record says, and no two say the same.
void expect_fits(const block &of, const json &port) {
    EXPECT_EQ(of.name, port.at("name"));
    EXPECT_EQ(of.created, expected_creation(of.name));
    std::set<std::string> keys;
    for (const std::string &line : of.settings) {
        const line_kind *kind = kind_of(line);
        ASSERT_NE(kind, nullptr) << of.name << ": " << line;
        const json value = line == "no bandwidth" ? bandwidth_of_speed(port) : kind->read(words_of(line, *kind));
        EXPECT_EQ(value, port.at(kind->key)) << of.name << ": " << line;
        EXPECT_TRUE(keys.insert(kind->key.to_string()).second) << of.name << ": " << line;
    }
    for (const char *key : {"/admin_state", "/description", "/mtu"}) EXPECT_TRUE(keys.contains(key)) << of.name << key;
}

class running_config : public pmctl_alone, public testing::WithParamInterface<std::string> {
  protected:
    virtual_switch_process switch_{GetParam()};
};

TEST_P(running_config, says_line_by_line_how_each_interface_is_set) {
    const auto result = pmctl({"show", "running-config"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.messages, IsEmpty());
    const json ports = objects_in(pmctl({"show", "interface", "--json"}).output);
    const auto blocks = read_blocks(result.output);
    ASSERT_EQ(blocks.size(), ports.size());
    for (size_t i = 0; i < blocks.size(); ++i) expect_fits(blocks[i], ports[i]);
}

INSTANTIATE_TEST_SUITE_P(chassis, running_config, testing::Values(director, every_kind, fixed_switch),
                         [](const auto &file) { return std::filesystem::path(file.param).stem().string(); });

class pmctl_running_config : public pmctl_program {};

TEST_F(pmctl_running_config, shows_each_kind_with_its_settings) {
    EXPECT_EQ(pmctl({"show", "running-config", "fc1/29", "Ethernet4/13", "mgmt0", "port-channel20.30"}).output,
              R"(interface fc1/29
  no shutdown
  description "analyser"
  switchport mode SD
  switchport trunk mode on
  speed 8000
  rate-mode dedicated
  beacon on
  receive-buffer-size 2112
  receive-bb-credit 16
  port-vsan 10
  mtu 2112
  no bandwidth
  down-on-link-failure off

interface Ethernet4/13
  no shutdown
  description "old server"
  switchport mode trunk
  switchport trunk mode on
  speed auto 10 100
  duplex half
  auto-negotiation on
  beacon off
  mtu 1500
  no bandwidth
  down-on-link-failure off

interface mgmt0
  no shutdown
  description "out-of-band management"
  speed 1000
  duplex full
  auto-negotiation on
  mtu 1500
  no bandwidth
  down-on-link-failure off

subinterface create port-channel20.30
interface port-channel20.30
  no shutdown
  description "iSCSI on the uplink"
  mtu 1500
  no bandwidth
)");
}

TEST(running_config_lines, are_in_the_manual) {
    std::ifstream file(SOURCE_FOLDER "/docs/pmctl.md");
    const std::string manual(std::istreambuf_iterator<char>(file), {});
    for (const line_kind &kind : line_kinds())
        EXPECT_THAT(manual, testing::ContainsRegex("[|,] `" + std::string(kind.keywords) + "[ `]")) << kind.keywords;
}

TEST_F(pmctl_running_config, has_no_json) {
    const auto result = pmctl({"show", "running-config", "--json"});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.output, IsEmpty());
}

TEST_F(pmctl_running_config, shows_the_others_when_one_does_not_exist) {
    const auto result = pmctl({"show", "running-config", "fc9/1", "fc3/1"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.output, testing::StartsWith("interface fc3/1\n"));
    EXPECT_EQ(result.messages, "pmctl: no such interface: fc9/1\n");
}

}  // namespace
