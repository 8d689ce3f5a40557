// SPDX-License-Identifier: Apache-2.0
// wire_record.h: records as they travel, field by field, made from the tables of the protocol.
#ifndef DISSECTOR_WIRE_RECORD_H
#define DISSECTOR_WIRE_RECORD_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace dissector {

// The kinds are those that the engine knows: number (network order), signed_number, host_number, if_index, text, ipv4,
// fc_address, bytes, and bits, which is a set of numbers.
struct wire_field {
    std::string name;
    size_t at;         // offset in the record
    size_t width;      // bytes of one element
    size_t count = 1;  // elements
    std::string_view kind = "number";
    std::string_view texts = {};  // the table of values that have texts, if any
};

struct wire_record {
    std::string_view name;
    size_t size;
    std::vector<wire_field> fields;
};

// Every record that messages are made of.
std::vector<wire_record> wire_records();

}  // namespace dissector

#endif
