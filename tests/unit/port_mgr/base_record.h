// SPDX-License-Identifier: Apache-2.0
// base_record.h: a port's base record with a distinct value in every byte, and what must become of it.
#ifndef UNIT_PORT_MGR_BASE_RECORD_H
#define UNIT_PORT_MGR_BASE_RECORD_H

#include <cstring>
#include <string>

#include "bytes.h"
#include "port_mgr/port_info_record.h"

namespace unit {

inline constexpr size_t base_record_size = 189;

// Byte n holds n + 1: a port's index is 0x01020304.
inline support::bytes base_record() {
    support::bytes record;
    for (size_t i = 0; i < base_record_size; ++i) record.push_back(static_cast<uint8_t>(i + 1));
    return record;
}

// The same, of another port.
inline support::bytes base_record_of(if_index_t if_index) {
    support::bytes record = base_record();
    for (size_t i = 0; i < 4; ++i) record[i] = static_cast<uint8_t>(if_index >> (24 - 8 * i));
    return record;
}

// One piece of the record in memory.
struct piece {
    const char *name;
    size_t size;
    enum { as_is, swapped, zero } how;
    size_t wire;       // offset in the base record
    size_t count = 1;  // elements of `size` bytes, each swapped on its own
};

// The members in their order, each right behind the one before it.
inline constexpr piece record_pieces[] = {
    {"if_index", 4, piece::swapped, 0},
    {"admin_mode", 4, piece::swapped, 4},
    {"description", 81, piece::as_is, 8},
    {"admin_speed", 4, piece::swapped, 89},
    {"admin_state", 1, piece::as_is, 93},
    {"oper_mode", 4, piece::swapped, 94},
    {"flowctrl_receive", 2, piece::zero, 0},
    {"lane_state", 4, piece::as_is, 98},
    {"flowctrl_send", 2, piece::zero, 0},
    {"port_vsan", 2, piece::swapped, 102},
    {"bb_credit 0 to 3", 4, piece::swapped, 104, 4},
    {"bb_credit 4", 4, piece::zero, 0},
    {"rx_buf_size", 2, piece::swapped, 120},
    {"oper_state", 1, piece::as_is, 122},
    {"fcid", 4, piece::as_is, 123},
    {"ip_address", 4, piece::as_is, 127},
    {"ip_mask", 4, piece::as_is, 131},
    {"oper_speed", 4, piece::swapped, 135},
    {"mtu", 4, piece::swapped, 139},
    {"bandwidth", 4, piece::swapped, 143},
    {"native_vlan", 2, piece::zero, 0},
    {"state_reason", 1, piece::as_is, 147},
    {"admin_trunk_mode", 1, piece::as_is, 148},
    {"oper_trunk_mode", 1, piece::as_is, 149},
    {"promiscuous", 4, piece::zero, 0},
    {"beacon_mode", 1, piece::as_is, 150},
    {"service_state", 4, piece::swapped, 151},
    {"port_type", 4, piece::swapped, 155},
    {"auto_neg", 4, piece::zero, 0},
    {"duplex, rate_mode", 2, piece::zero, 0},
    {"snmp_trap", 2, piece::as_is, 159},
    {"down_on_link_failure", 4, piece::swapped, 161},
    {"parent_if_index", 4, piece::swapped, 165},
    {"link_error_count", 4, piece::swapped, 169, 5},
    {"all that only attributes fill", 179, piece::zero, 0},
};

// The 388 bytes that a base record becomes when its answer has no attributes.
inline support::bytes expected_record(const support::bytes &wire) {
    support::bytes record;
    for (const piece &part : record_pieces) {
        for (size_t element = 0; element < part.count; ++element) {
            for (size_t i = 0; i < part.size; ++i) {
                const size_t from = part.wire + element * part.size;
                const size_t at = part.how == piece::swapped ? from + part.size - 1 - i : from + i;
                record.push_back(part.how == piece::zero ? uint8_t{0} : wire[at]);
            }
        }
    }
    return record;
}

inline support::bytes bytes_of(const pm_port_info_t &record) {
    support::bytes image(sizeof record);
    std::memcpy(image.data(), &record, sizeof record);
    return image;
}

}  // namespace unit

#endif
