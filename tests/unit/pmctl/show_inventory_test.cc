// SPDX-License-Identifier: Apache-2.0
#include <cerrno>

#include "command_test.h"
#include "failure.h"
#include "port_mgr/status.h"
#include "support/json_schema.h"

namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

// Numbers of 16 and of 32 bits in network order.
class payload {
  public:
    payload &word(uint32_t number) { return half(number >> 16).half(number & 0xffff); }
    payload &half(uint32_t number) {
        bytes_.push_back(static_cast<uint8_t>(number >> 8));
        bytes_.push_back(static_cast<uint8_t>(number));
        return *this;
    }
    [[nodiscard]] const std::vector<uint8_t> &bytes() const { return bytes_; }

  private:
    std::vector<uint8_t> bytes_;
};

std::vector<uint8_t> list_of(const std::vector<const char *> &names) {
    payload answer;
    answer.word(0).word(static_cast<uint32_t>(names.size()));
    for (const char *name : names) answer.word(index_named(name));
    return answer.bytes();
}

class show_index : public command_test {
  protected:
    void SetUp() override {
        command_test::SetUp();
        for (const int type : {1, 2, 5, 11, 13, 20, 26, 254}) list(type, {});
    }

    static void list(int type, const std::vector<const char *> &names) {
        the_switch.listings[static_cast<uint8_t>(type)] = {0, list_of(names)};
    }

    static pmctl::outcome run(std::vector<const char *> words) {
        words.insert(words.begin(), {"show", "interface", "index"});
        return command_test::run(std::move(words));
    }
};

TEST_F(show_index, lists_every_type) {
    list(1, {"fc1/1", "fc1/2"});
    list(2, {"Ethernet2/1", "Ethernet2/1.100"});
    list(13, {"if13-4/1"});
    list(254, {"if254-7"});
    const auto outcome = run({});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output,
              "Interface        Index       Type\n"
              "fc1/1            0x01000000  fc\n"
              "fc1/2            0x01001000  fc\n"
              "Ethernet2/1      0x02080000  ethernet\n"
              "Ethernet2/1.100  0x02080064  ethernet\n"
              "if13-4/1         0x0d180000  ips\n"
              "if254-7          0xfe000007  other\n");
    EXPECT_THAT(the_switch.asked, ElementsAre("listing 1", "listing 2", "listing 5", "listing 11", "listing 13",
                                              "listing 20", "listing 26", "listing 254"));
}

TEST_F(show_index, lists_one_type) {
    const std::pair<const char *, int> types[] = {
        {"fc", 1},   {"ethernet", 2},  {"Port-Channel", 4}, {"mgmt", 5},    {"fcip", 10},         {"slot-port", 11},
        {"ips", 13}, {"loopback", 20}, {"bundle", 22},      {"other", 254}, {"ethernet-sfp", 26}, {"99", 99}};
    for (const auto &[word, type] : types) {
        the_switch.asked.clear();
        list(type, {});
        EXPECT_EQ(run({"--type", word}).status, 0) << word;
        EXPECT_THAT(the_switch.asked, ElementsAre("listing " + std::to_string(type))) << word;
    }
}

TEST_F(show_index, is_described_in_json) {
    list(1, {"fc1/2"});
    const std::string output = run({"--type=fc", "--json"}).output;
    EXPECT_EQ(json::parse(output), json::parse(R"({"interfaces":
        [{"if_index": 16781312, "name": "fc1/2", "type": 1, "type_text": "fc"}]})"));
    const json_schema schema(DOCUMENTS "/schema/pmctl-show-interface-index.schema.json");
    schema.expect_described("interface", json::parse(output)["interfaces"][0]);
    EXPECT_EQ(run({"--type=2", "--json"}).output, "{\n  \"interfaces\": []\n}\n");
}

TEST_F(show_index, names_types_that_are_refused_and_goes_on) {
    the_switch.listings[1].payload = payload().word(PM_ERR_REJECTED).bytes();
    the_switch.listings[5].request_status = EHOSTUNREACH;
    list(20, {"loopback1"});
    const auto outcome = run({});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.messages, ElementsAre("interfaces of type fc: request rejected (PM_ERR_REJECTED, 0x40290009)",
                                              "interfaces of type mgmt: its service does not run on this switch"));
    EXPECT_THAT(outcome.output, HasSubstr("loopback1  "));
    the_switch.asked.clear();
    the_switch.listings[2].request_status = ETIMEDOUT;
    EXPECT_THAT(run({}).messages.back(), "interfaces of type ethernet: Connection timed out");
    EXPECT_THAT(the_switch.asked, ElementsAre("listing 1", "listing 2"));
}

TEST_F(show_index, refuses_answers_that_do_not_hold_what_they_say) {
    std::vector<std::vector<uint8_t>> answers{{},
                                              {0, 0, 0},
                                              payload().word(0).bytes(),
                                              payload().word(0).half(0).bytes(),
                                              payload().word(0).word(1).bytes(),
                                              payload().word(0).word(2).word(0x01000000).half(0).bytes(),
                                              payload().word(0).word(0xffffffff).word(0x01000000).bytes(),
                                              payload().word(0).word(0x40000001).word(0x01000000).bytes()};
    for (const auto &answer : answers) {
        the_switch.listings[1].payload = answer;
        EXPECT_THAT(run({"--type", "fc"}).messages,
                    ElementsAre("interfaces of type fc: the answer cannot be understood"));
    }
}

TEST_F(show_index, takes_words_and_numbers) {
    for (const char *type : {"0", "256", "-1", "1x", ""}) {
        const std::string option = std::string("--type=") + type;
        if (*type == '\0')
            EXPECT_THROW(run({option.c_str()}), pmctl::usage_error);
        else
            EXPECT_EQ(run({option.c_str()}).status, 2) << type;
    }
    EXPECT_THAT(run({"--type", "ethernt"}).messages,
                ElementsAre("not a type of interfaces: ethernt; did you mean ethernet?"));
    EXPECT_THAT(run({"--type", "xyzzy"}).messages,
                ElementsAre(StartsWith("not a type of interfaces: xyzzy; it takes fc, ethernet, ")));
    EXPECT_THAT(the_switch.asked, IsEmpty());
}

class show_resources : public command_test {
  protected:
    static pmctl::outcome run(std::vector<const char *> words) {
        words.insert(words.begin(), {"show", "module"});
        return command_test::run(std::move(words));
    }

    static std::vector<uint8_t> some_resources() {
        payload answer;
        answer.word(0).word(5);
        answer.half(3).half(1).word(48).word(16);
        answer.half(3).half(2).word(4294967295).word(4294967295);
        answer.half(3).half(3).word(100000).word(1);
        answer.half(258).half(4).word(7).word(70);
        answer.half(4).half(260).word(0).word(1);
        return answer.bytes();
    }
};

TEST_F(show_resources, has_a_line_a_resource) {
    the_switch.resources[0].payload = some_resources();
    const auto outcome = run({"resources"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output,
              "Module  Resource            Total       Used        %\n"
              "3       ports               48          16          33.3\n"
              "3       BB credits          4294967295  4294967295  100.0\n"
              "3       bandwidth (Mbit/s)  100000      1           0.0\n"
              "258     sub-interfaces      7           70          1000.0\n"
              "4       resource 260        0           1           -\n");
    EXPECT_THAT(the_switch.asked, ElementsAre("resources 0"));
}

TEST_F(show_resources, asks_for_one_module) {
    the_switch.resources[3].payload = payload().word(0).word(0).bytes();
    EXPECT_EQ(run({"resources", "3"}).status, 0);
    EXPECT_EQ(run({"3", "resources"}).status, 0);
    EXPECT_THAT(the_switch.asked, ElementsAre("resources 3", "resources 3"));
}

TEST_F(show_resources, is_described_in_json) {
    the_switch.resources[0].payload = some_resources();
    const json resources = json::parse(run({"resources", "--json"}).output)["resources"];
    ASSERT_EQ(resources.size(), 5u);
    const json_schema schema(DOCUMENTS "/schema/pmctl-show-module-resources.schema.json");
    for (const json &each : resources) schema.expect_described("resource", each);
    EXPECT_EQ(resources[0], json::parse(R"({"module": 3, "resource": 1, "resource_text": "ports", "total": 48,
        "used": 16, "percent": 33.3})"));
    EXPECT_TRUE(resources[4].at("percent").is_null());
}

TEST_F(show_resources, says_what_is_wrong) {
    the_switch.resources[7].payload = payload().word(PM_ERR_INVALID_RANGE).bytes();
    EXPECT_THAT(run({"resources", "7"}).messages, ElementsAre("no such module: 7"));
    the_switch.resources[7].payload = payload().word(PM_ERR_FAILURE).bytes();
    EXPECT_THAT(run({"resources", "7"}).messages,
                ElementsAre("module 7: missing or invalid arguments (PM_ERR_FAILURE, 0x40290000)"));
    the_switch.resources[0].request_status = ETIMEDOUT;
    const auto outcome = run({"resources", "--json"});
    EXPECT_THAT(outcome.messages, ElementsAre("all modules: Connection timed out"));
    EXPECT_EQ(outcome.output, "{\n  \"resources\": []\n}\n");
    EXPECT_EQ(run({"resources", "0"}).status, 2);
    EXPECT_EQ(run({"resources", "x"}).status, 2);
}

TEST_F(show_resources, refuses_half_a_record) {
    the_switch.resources[0].payload = payload().word(0).word(1).half(3).half(1).word(48).half(0).bytes();
    EXPECT_THAT(run({"resources"}).messages, ElementsAre("all modules: the answer cannot be understood"));
}

}  // namespace
