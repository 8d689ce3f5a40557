// SPDX-License-Identifier: Apache-2.0
// record_corpus: asks the services of the virtual switch through the library, and writes every answer to the folder of
// the fuzzer that reads such answers, and every request to that of the services; has pmctl ask them, too; and writes
// the transceivers of the chassis as pages: record_corpus FOLDER.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include "chassis/chassis_file.h"
#include "outcome.h"
#include "platform_dev/if_index_dev.h"
#include "port_mgr/port_mgr_common.h"
#include "support/answers.h"
#include "support/pmctl_calls.h"
#include "support/virtual_chassis.h"

namespace {

using fuzz::bytes;

const std::map<uint32_t, const char *> target_of_opcode{{MTS_OPC_PM_GET_PORT_INFO, "port_info_answer"},
                                                        {MTS_OPC_PM_GET_PORT_INFO_BRIEF, "brief_answer"},
                                                        {MTS_OPC_PM_GET_NEXT_PORT_INFO, "next_port_answer"},
                                                        {MTS_OPC_GET_SFP_DIAG_INFO, "sfp_answer"},
                                                        {MTS_OPC_PM_GET_CLEAR_ETH_STATS, "ethernet_stats_answer"},
                                                        {CMI_OPC_PM_SET_PORT_CONFIG, "set_answer"},
                                                        {CMI_OPC_PM_GET_PORT_CONFIG, "port_info_answer"},
                                                        {CMI_OPC_PM_GET_FCOT_INFO, "transceiver_answer"},
                                                        {CMI_OPC_PM_CONFIG_SUB_INTF, "sub_interface_answer"},
                                                        {CMI_OPC_PM_GET_MODULE_INTF_LISTING, "port_info_answer"}};

void write_input(const std::filesystem::path &folder, const std::string &name, bytes content) {
    std::filesystem::create_directories(folder);
    std::ofstream file(folder / name, std::ios::binary);
    file.write(reinterpret_cast<const char *>(content.data()), static_cast<std::streamsize>(content.size()));
}

fuzz::request_code code_of(const fuzz::request &request) {
    return fuzz::code_of(request.sap, request.opcode, request.is_cmi);
}

void append_length(std::vector<uint8_t> &to, size_t length) {
    to.push_back(static_cast<uint8_t>(length >> 8));
    to.push_back(static_cast<uint8_t>(length));
}

class recorder {
  public:
    explicit recorder(std::filesystem::path folder) : folder_(std::move(folder)) {
        fuzz::answer_by([this](const fuzz::request &request) { return answer(request); }, fuzz::element_tail);
    }

    // What the next requests are about, for the names of the files.
    void begin(const std::string &subject) { subject_ = subject; }

  private:
    bytes answer(const fuzz::request &request) {
        const fuzz::request_code code = code_of(request);
        answer_ = chassis_.ask(code, request.payload);
        const auto target = target_of_opcode.find(request.opcode);
        if (target != target_of_opcode.end()) write(target->second, answer_);
        std::vector<uint8_t> asked{code.service, code.opcode};
        append_length(asked, request.payload.size());
        asked.insert(asked.end(), request.payload.begin(), request.payload.end());
        write("switch_service", asked);
        return answer_;
    }

    void write(const std::string &target, bytes content) const { write_input(folder_ / target, subject_, content); }

    std::filesystem::path folder_;
    fuzz::virtual_chassis chassis_{fuzz::director};
    std::string subject_;
    std::vector<uint8_t> answer_;
};

if_index_t index_of(const char *name) {
    if_index_t index = 0;
    FUZZ_REQUIRE(if_index_from_name(name, &index) == 0);
    return index;
}

pm_if_index_range_t range(const char *first, const char *last) { return {index_of(first), index_of(last)}; }

// Ends a query over messages.
void drop(mts_msg_t &response) { mts_drop(1, &response); }

void ask_for_ports(recorder &to) {
    mts_msg_t response;
    for (const auto &[name, ports] : {std::pair{"fc_port", range("fc1/1", "fc1/1")},
                                      std::pair{"ethernet_ports", range("Ethernet4/1", "Ethernet4/3")},
                                      std::pair{"port_channel", range("port-channel5", "port-channel5")},
                                      std::pair{"no_such_port", range("fc31/1", "fc31/1")}}) {
        to.begin(name);
        pm_get_port_info(1, PM_PORT_INFO_MODE_RANGES, 0, 0, 0, 0, 1, &ports, &response);
        drop(response);
        pm_get_port_info_brief(1, PM_PORT_INFO_MODE_RANGES, 0, 0, 0, 0, 1, &ports, &response);
        drop(response);
        pm_get_next_port_info(1, ports.first, &response);
        drop(response);
        uint32_t count = 0;
        pm_port_info_t *records = nullptr;
        to.begin(std::string("configured_") + name);
        if (pm_cmi_get_port_config(1, 3, 1, &ports, &count, &records, 0) == 0) std::free(records);
    }
}

void ask_for_transceivers(recorder &to) {
    for (const auto &[name, ports] : {std::pair{"fc_ports", range("fc1/1", "fc1/4")},
                                      std::pair{"ethernet_port", range("Ethernet4/5", "Ethernet4/5")}}) {
        uint32_t count = 0;
        pm_fcot_info_t *records = nullptr;
        to.begin(name);
        if (pm_cmi_get_fcot_info(1, 3, 1, &ports, &count, &records, 0) == 0) std::free(records);
        to.begin(std::string(name) + "_with_diagnostics");
        records = nullptr;
        pm_get_next_port_fcot_info_with_ddm(1, 3, 1, &ports, &count, &records, 0);
        std::free(records);
        pm_sfp_diag_info_t info;
        pm_sfp_diag_extra_t extra;
        pm_get_sfp_diag_info(1, ports.first, &info, &extra);
    }
}

void ask_for_counters(recorder &to) {
    pm_eth_stats_t stats{};
    for (const auto &[name, port] : {std::pair{"counters", "Ethernet4/5"}, std::pair{"no_counters", "Ethernet3/1"}}) {
        to.begin(name);
        pm_get_clear_eth_stats(1, index_of(port), index_of(port), PM_ETH_STATS_READ, &stats);
    }
}

void configure(recorder &to) {
    uint32_t count = 0;
    pm_set_port_result_t *entries = nullptr;
    constexpr uint8_t down = 2;
    constexpr uint32_t mtu = 9000;
    constexpr char description[PM_CFG_VALUE_SIZE] = "text";
    const pm_if_index_range_t fc = range("fc1/1", "fc1/3");
    const pm_if_index_range_t channel = range("port-channel5", "port-channel5");
    to.begin("shut_down");
    pm_cmi_set_port_config(1, nullptr, nullptr, 1, &fc, PM_ATTR_ADMIN_STATE, 1, &down, &count, &entries, 0);
    std::free(entries);
    to.begin("refused");
    pm_cmi_set_port_config(1, "who", "where", 1, &fc, PM_ATTR_MTU, 4, &mtu, &count, &entries, 0);
    std::free(entries);
    to.begin("channel");
    pm_cmi_set_port_config(1, nullptr, nullptr, 1, &channel, PM_ATTR_DESCRIPTION, 5, description, &count, &entries, 0);
    std::free(entries);
    pm_snmp_sub_intf_t sub_interface{};
    sub_interface.main = index_of("Ethernet4/1");
    sub_interface.bitmap[1] = 0x80;
    to.begin("create_sub_interface");
    pm_snmp_config_sub_interface(1, &sub_interface, 0);
}

void ask_for_lists(recorder &to) {
    mts_msg_t response;
    for (const uint8_t type : {IF_TYPE_FC, IF_TYPE_ETHERNET}) {
        to.begin("listing_" + std::to_string(type));
        if (pm_get_if_index_listing(type, 1, &response, 1) == 0) drop(response);
    }
    const pm_if_index_range_t fc = range("fc1/1", "fc1/3");
    to.begin("module_resources");
    if (pm_get_module_resources(1, 1, &fc, 1, 0xfe000000, &response) == 0) drop(response);
}

std::string file_name(std::string subject) {
    std::ranges::replace_if(
        subject, [](char each) { return each == ' ' || each == '/'; }, '_');
    return subject;
}

// What pmctl is answered when it carries out a command, as its fuzzer reads it. The switch is a small one.
std::vector<uint8_t> pmctl_input(uint8_t command) {
    fuzz::virtual_chassis chassis(fuzz::fixed_switch);
    std::vector<uint8_t> answer;
    std::vector<uint8_t> input{command, 0};
    const auto note_answer = [&](const fuzz::request &request) -> bytes {
        answer = chassis.ask(code_of(request), request.payload);
        append_length(input, answer.size());
        input.insert(input.end(), answer.begin(), answer.end());
        return answer;
    };
    fuzz::answer_by(note_answer, fuzz::element_tail);
    const pmctl::outcome done = pmctl::carry_out(fuzz::pmctl_call(fuzz::pmctl_commands()[command], false));
    FUZZ_REQUIRE(done.status == pmctl::exit_done);
    return input;
}

// Of the commands that few answers are enough for.
void record_pmctl(const std::filesystem::path &folder) {
    constexpr size_t largest_input = 8192;
    for (uint8_t command = 0; command < fuzz::pmctl_commands().size(); ++command) {
        const std::vector<uint8_t> input = pmctl_input(command);
        if (input.size() <= largest_input) write_input(folder, file_name(fuzz::pmctl_commands()[command]), input);
    }
}

// Transceivers of several kinds, as pages.
void record_pages(const std::filesystem::path &folder) {
    const auto chassis = virtual_switch::load_chassis(SOURCE_FOLDER "/examples/chassis/director.toml");
    for (const char *port : {"fc1/1", "fc1/17", "fc1/30", "fc3/1", "Ethernet4/5"}) {
        const virtual_switch::transceiver &in = chassis.transceivers.at(index_of(port));
        std::vector<uint8_t> pages(in.serial_id.begin(), in.serial_id.end());
        pages.insert(pages.end(), in.diagnostics.begin(), in.diagnostics.end());
        write_input(folder, file_name(port), pages);
    }
}

}  // namespace

int main(int argc, char **argv) {
    if (argc != 2) return 2;
    const std::filesystem::path folder = argv[1];
    recorder to(folder);
    ask_for_ports(to);
    ask_for_transceivers(to);
    configure(to);
    ask_for_lists(to);
    ask_for_counters(to);
    record_pmctl(folder / "pmctl_answers");
    record_pages(folder / "sff8472");
}
