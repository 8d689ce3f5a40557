// SPDX-License-Identifier: Apache-2.0
#include "dissector_fixture.h"

#include "integration/pmctl/pmctl_runs.h"
#include "integration/virtual_switch/configuration_client.h"
#include "platform/if_index.h"

namespace dissector_test {
namespace {

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

}  // namespace

recording::recording() {
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

std::unique_ptr<recording> dissector::recorded_;
std::vector<json> dissector::packets_;

}  // namespace dissector_test
