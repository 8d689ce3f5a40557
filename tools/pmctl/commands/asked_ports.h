// SPDX-License-Identifier: Apache-2.0
// What commands about interfaces share: the interfaces named, and the switch's answers about them.
#ifndef PMCTL_COMMANDS_ASKED_PORTS_H
#define PMCTL_COMMANDS_ASKED_PORTS_H

#include "command.h"
#include "failure.h"
#include "port_mgr/port_info_record.h"
#include "switch/interface_ranges.h"

namespace pmctl {

// The ranges given as NAME, none for every interface. Throws usage_error.
std::vector<interface_range> named_ranges(const arguments &given);

// What exists of the ranges, each interface once, in the order in which they are named; no range stands for every
// interface. A range of which nothing exists is noted as a failure. Throws as a query does.
std::vector<if_index_t> existing_interfaces(const std::vector<interface_range> &ranges,
                                            std::vector<std::string> &failures);

// What exists of the interfaces given as NAME; without a NAME all that `belongs` holds for. Throws as a query does.
std::vector<if_index_t> asked_interfaces(const arguments &given, bool (*belongs)(if_index_t),
                                         std::vector<std::string> &failures);

// Runs a query and notes what went wrong. Returns false when asking on is of no use.
template <typename Query>
bool attempt(std::vector<std::string> &failures, const Query &query) {
    try {
        query();
        return true;
    } catch (const query_refused &refusal) {
        failures.emplace_back(refusal.what());
        return true;
    } catch (const switch_unavailable &reason) {
        failures.emplace_back(reason.what());
        return false;
    }
}

// The ports of the ranges in their order, or every port when there are none.
std::vector<pm_port_info_t> asked_ports(const std::vector<interface_range> &ranges, std::vector<std::string> &failures);

}  // namespace pmctl

#endif
