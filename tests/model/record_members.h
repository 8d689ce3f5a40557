// SPDX-License-Identifier: Apache-2.0
// record_members.h: compares records byte by byte, and names where they differ.
#ifndef MODEL_RECORD_MEMBERS_H
#define MODEL_RECORD_MEMBERS_H

#include <cstring>
#include <span>
#include <string>

#include "bytes.h"
#include "port_mgr/port_mgr_common.h"

namespace model {

struct member {
    const char *name;
    size_t offset;
    size_t size;
};

// The members of a record, in order; all of its bytes are in them.
template <typename Record>
std::span<const member> members_of();

std::string first_difference(std::span<const member> members, const uint8_t *expected, const uint8_t *seen);

// The first member that differs, with both values as bytes; nothing when the records are the same.
template <typename Record>
std::string first_difference(const Record &expected, const Record &seen) {
    return first_difference(members_of<Record>(), reinterpret_cast<const uint8_t *>(&expected),
                            reinterpret_cast<const uint8_t *>(&seen));
}

// A record that nothing has been written to.
template <typename Record>
Record untouched() {
    Record record;
    std::memset(&record, 0x5a, sizeof record);
    return record;
}

}  // namespace model

#endif
