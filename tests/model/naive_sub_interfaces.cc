// SPDX-License-Identifier: Apache-2.0
#include "naive_sub_interfaces.h"

#include "naive_bytes.h"

namespace model {
namespace {

using support::bytes;

// The type, the main interface and the number of a sub-interface, as the platform tells them.
uint32_t type_of(if_index_t if_index) { return if_index / 16777216; }
if_index_t main_of(if_index_t if_index) { return if_index - if_index % 4096; }
uint32_t number_of(if_index_t if_index) { return if_index % 4096; }

bool has_sub_interfaces(uint32_t type) { return type == 2 || type == 4 || type == 22 || type == 26; }

struct entry {
    if_index_t main;
    std::vector<uint32_t> words;
    std::vector<bool> numbers;
};

bytes payload_of(uint32_t operation, const std::vector<entry> &entries) {
    support::payload payload;
    payload.be32(operation).be32(0).be32(static_cast<uint32_t>(entries.size()));
    for (const entry &each : entries) {
        payload.be32(0).be32(each.main);
        for (const uint32_t word : each.words) payload.be32(word);
        // The size of the set travels as it lies in memory.
        payload.u8(0).u8(2).u8(0).u8(0);
        for (size_t i = 0; i < 4096; i += 8) {
            unsigned byte = 0;
            for (size_t j = 0; j < 8; ++j) byte = byte * 2 + (each.numbers[i + j] ? 1 : 0);
            payload.u8(static_cast<uint8_t>(byte));
        }
    }
    return payload;
}

}  // namespace

sub_interface_request request_of_ranges(bool create, const std::vector<pm_if_index_range_t> &ranges) {
    std::vector<entry> entries;
    for (const pm_if_index_range_t &range : ranges) {
        if (!has_sub_interfaces(type_of(range.first))) return {invalid_range};
        size_t index = 0;
        // Only the first entry is ever found again.
        if (entries.empty() || entries[0].main != main_of(range.first)) {
            index = entries.size();
            entries.push_back({main_of(range.first), {0, 0, 0}, std::vector<bool>(4096)});
        }
        // The count of a range that runs backwards wraps around.
        const uint32_t count = number_of(range.last) - number_of(range.first) + 1;
        for (size_t number = 0; number < 4096; ++number) {
            const bool is_in = number >= number_of(range.first) && number - number_of(range.first) < count;
            if (is_in) entries[index].numbers[number] = true;
        }
    }
    return {0, payload_of(create ? 1 : 2, entries)};
}

sub_interface_request request_of_bitmap(const pm_snmp_sub_intf_t &record) {
    if (!has_sub_interfaces(type_of(record.main)) || number_of(record.main) != 0) return {rejected};
    entry only{record.main, {record.word[0], record.word[1], record.word[2]}, std::vector<bool>(4096)};
    for (size_t i = 0; i < 512; ++i) {
        for (size_t j = 0; j < 8; ++j) only.numbers[8 * i + j] = record.bitmap[i] / (128 >> j) % 2 == 1;
    }
    return {0, payload_of(3, {only})};
}

uint32_t status_of_answer(const std::optional<bytes> &payload) {
    if (!payload) return no_payload;
    return payload->size() < 8 ? invalid_parameter : number32(&(*payload)[4]);
}

bool is_valid_set(const bitset_t &set) { return set.bits[0] < 0x40 && (set.bits[511] & 3) == 0; }

}  // namespace model
