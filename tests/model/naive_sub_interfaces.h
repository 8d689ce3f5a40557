// SPDX-License-Identifier: Apache-2.0
// naive_sub_interfaces.h: how requests about sub-interfaces travel, byte by byte.
#ifndef MODEL_NAIVE_SUB_INTERFACES_H
#define MODEL_NAIVE_SUB_INTERFACES_H

#include <optional>
#include <vector>

#include "bytes.h"
#include "port_mgr/port_mgr_common.h"

namespace model {

// A request, or why none is sent.
struct sub_interface_request {
    uint32_t status;
    support::bytes payload = {};
};

// A range of sub-interfaces of the main interface that its first index has.
sub_interface_request request_of_ranges(bool create, const std::vector<pm_if_index_range_t> &ranges);

// The sub-interfaces of one main interface.
sub_interface_request request_of_bitmap(const pm_snmp_sub_intf_t &record);

// The result of a request that was sent.
uint32_t status_of_answer(const std::optional<support::bytes> &payload);

// Whether a set holds no number that is reserved.
bool is_valid_set(const bitset_t &set);

}  // namespace model

#endif
