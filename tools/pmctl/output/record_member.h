// SPDX-License-Identifier: Apache-2.0
// How the members of a packed record are described, and read by their description.
//
// A table of members is all that the text and the JSON of a record are made from.
#ifndef PMCTL_OUTPUT_RECORD_MEMBER_H
#define PMCTL_OUTPUT_RECORD_MEMBER_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "output/view.h"

namespace pmctl {

// How the bytes of a member are read and shown.
enum class member_format : uint8_t {
    number,          // host order; an array of them when the member has several elements
    network_number,  // the same in network order
    text,            // NUL-terminated
    owner,           // the same, of a port's owner
    ipv4,            // network order, dotted
    fc_address,      // network order, 0xAABBCC
    interface        // an interface index, shown as its name
};

// Where a member lies in its record.
struct member_place {
    uint16_t offset;
    uint16_t size;   // of one element, in bytes
    uint16_t count;  // elements
};

// A number in words.
using words_function = std::string (*)(uint32_t number);

struct record_member {
    std::string_view label;  // for people
    std::string_view key;    // in JSON
    member_place place;
    member_format format;
    words_function words = nullptr;              // "KEY_text" in JSON; people see them instead of the number
    std::optional<uint64_t> absent = {};         // the value (after byte order) of a port that does not have this
    tone (*tone_of)(uint32_t number) = nullptr;  // of a number that is good or bad news
    words_function keyword = nullptr;            // "KEY_keyword" in JSON
    words_function in_column = nullptr;          // what people see where room is scarce
};

struct member_group {
    std::string_view title;
    std::span<const record_member> members;
};

// The bytes of each record.
using record_list = std::vector<std::span<const std::byte>>;

template <typename Record>
record_list records_of(std::span<const Record> records) {
    record_list list;
    list.reserve(records.size());
    for (const Record &record : records) list.push_back(std::as_bytes(std::span(&record, 1)));
    return list;
}

// Shown for what a port does not have.
inline constexpr std::string_view absent_text = "-";

// One element of a member that holds numbers. Those that have words are at most 32 bits wide.
uint64_t number_of(const record_member &member, std::span<const std::byte> record, size_t element = 0);
uint32_t code_of(const record_member &member, std::span<const std::byte> record, size_t element = 0);

bool is_absent(const record_member &member, std::span<const std::byte> record);

// The characters of a text member, up to its NUL or its end.
std::string_view characters_of(const record_member &member, std::span<const std::byte> record);

// A member of one of the formats that are written the same way everywhere: ipv4, fc_address and interface.
std::string address_text(const record_member &member, std::span<const std::byte> record);

// The member for people. Words win over what a port does not have; where they are empty absent_text stands.
std::string display_text(const record_member &member, std::span<const std::byte> record);
cell display_cell(const record_member &member, std::span<const std::byte> record);

}  // namespace pmctl

#endif
