// SPDX-License-Identifier: Apache-2.0
#include <cstring>

#include "command_test.h"
#include "failure.h"
#include "support/json_schema.h"

namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::IsEmpty;

class show_host_interface : public command_test {
  protected:
    void SetUp() override {
        command_test::SetUp();
        uint32_t words[16];
        for (uint32_t i = 0; i < 16; ++i) words[i] = 4294967000 + i;
        std::memcpy(&the_switch.host_interfaces["eth0"], words, sizeof words);
    }

    static pmctl::outcome run(std::vector<const char *> words) {
        words.insert(words.begin(), {"show", "host", "interface"});
        return command_test::run(std::move(words));
    }
};

TEST_F(show_host_interface, lists_counters) {
    const auto outcome = run({"eth0"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, R"(eth0
  General
    Interface           eth0
  Received
    Bytes               4294967002
    Packets             4294967000
    Multicast packets   4294967008
    Compressed packets  4294967009
    Errors              4294967004
    Dropped packets     4294967006
    Framing errors      4294967011
    FIFO overruns       4294967012
  Transmitted
    Bytes               4294967003
    Packets             4294967001
    Compressed packets  4294967010
    Errors              4294967005
    Dropped packets     4294967007
    FIFO underruns      4294967014
    Carrier losses      4294967013
    Collisions          4294967015
)");
    EXPECT_THAT(the_switch.asked, IsEmpty());
}

TEST_F(show_host_interface, is_described_in_json) {
    const json found = json::parse(run({"eth0", "--json"}).output);
    EXPECT_EQ(found, json::parse(R"({"interfaces": [{"name": "eth0",
        "rx_bytes": 4294967002, "rx_packets": 4294967000, "rx_multicast": 4294967008, "rx_compressed": 4294967009,
        "rx_errors": 4294967004, "rx_dropped": 4294967006, "rx_frame_errors": 4294967011,
        "rx_fifo_errors": 4294967012,
        "tx_bytes": 4294967003, "tx_packets": 4294967001, "tx_compressed": 4294967010, "tx_errors": 4294967005,
        "tx_dropped": 4294967007, "tx_fifo_errors": 4294967014, "tx_carrier_errors": 4294967013,
        "collisions": 4294967015}]})"));
    const json_schema schema(DOCUMENTS "/schema/pmctl-show-host-interface.schema.json");
    schema.expect_described("interface", found["interfaces"][0]);
}

TEST_F(show_host_interface, says_that_there_is_none) {
    const auto outcome = run({"eth9", "--json"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.messages, ElementsAre("not in /proc/net/dev of this machine: eth9"));
    EXPECT_EQ(outcome.output, "{\n  \"interfaces\": []\n}\n");
    EXPECT_THAT(run({""}).messages, ElementsAre("not in /proc/net/dev of this machine: \"\""));
    EXPECT_THROW(run({}), pmctl::usage_error);
}

}  // namespace
