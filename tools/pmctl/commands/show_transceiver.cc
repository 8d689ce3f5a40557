// SPDX-License-Identifier: Apache-2.0
#include "commands/show_transceiver.h"

#include "commands/asked_ports.h"
#include "output/transceiver_json.h"
#include "output/transceiver_view.h"

namespace pmctl {
namespace {

std::vector<transceiver_port> asked_transceivers(const arguments &given, bool from_line_cards,
                                                 std::vector<std::string> &failures) {
    std::vector<transceiver_port> ports;
    attempt(failures, [&] {
        const std::vector<if_index_t> interfaces = asked_interfaces(given, takes_transceiver, failures);
        transceiver_client client;
        std::vector<transceiver_port> found = client.ports(interfaces, failures);
        for (transceiver_port &port : found)
            if (from_line_cards && port.plugged_in)
                if (auto live = client.line_card_diagnostics(port.if_index)) port.plugged_in->diagnostics = live;
        ports = std::move(found);
    });
    return ports;
}

}  // namespace

command_result run_show_transceiver(const arguments &given) {
    command_result result;
    const std::vector<transceiver_port> ports = asked_transceivers(given, false, result.failures);
    if (given.has("--json"))
        result.output.text = transceiver_json(ports);
    else
        result.output.sheets.push_back(transceiver_table(ports));
    return result;
}

command_result run_show_transceiver_details(const arguments &given) {
    command_result result;
    const std::vector<transceiver_port> ports = asked_transceivers(given, true, result.failures);
    if (given.has("--json"))
        result.output.text = transceiver_json(ports);
    else
        result.output.sheets = transceiver_lists(ports);
    return result;
}

}  // namespace pmctl
