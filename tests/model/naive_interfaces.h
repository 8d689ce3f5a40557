// SPDX-License-Identifier: Apache-2.0
// naive_interfaces.h: arithmetic over ranges of interfaces, and sets of numbers.
#ifndef MODEL_NAIVE_INTERFACES_H
#define MODEL_NAIVE_INTERFACES_H

#include <optional>
#include <vector>

#include "bytes.h"
#include "port_mgr/port_mgr_common.h"

namespace model {

// An interface as the platform tells of it. Numbers that it cannot tell are missing.
struct interface {
    if_index_t if_index;
    std::optional<uint8_t> type;
    std::optional<uint32_t> slot;
    std::optional<uint32_t> port;
    std::optional<uint32_t> sub_interface;
    std::optional<uint32_t> channel;
    std::optional<uint32_t> tunnel;
};

struct counted {
    uint32_t status;
    uint32_t count;
};

// The number of interfaces of a range, in a chassis with this many slots.
counted ports_in_range(const interface &first, const interface &last, uint32_t slots);

// The interface that far from the first: what it is built from.
struct range_member {
    uint32_t status;
    if_index_t if_index = 0;
};
range_member member_of_range(const interface &first, const interface &last, uint32_t offset, uint32_t slots);

// The VSANs of a set of any extent.
vsan_bitset_t vsans_of(uint32_t start, uint32_t length, const support::bytes &bits);

}  // namespace model

#endif
