// SPDX-License-Identifier: Apache-2.0
#include "random_answer.h"

#include <algorithm>

namespace model {
namespace {

using support::bytes;

constexpr size_t base_record_size = 189;
constexpr size_t header_size = 8;
constexpr uint16_t owner_type = 110;
constexpr uint16_t owner_length = 81;

void put_word(bytes &to, size_t at, uint32_t word) {
    for (size_t i = 0; i < 4; ++i) to[at + i] = static_cast<uint8_t>(word >> (24 - 8 * i));
}

bytes with_header(uint32_t status, uint32_t count, const bytes &records) {
    return support::payload().be32(status).be32(count).append(records);
}

uint16_t random_type(random_source &source) {
    static const std::vector<uint16_t> known{4,  22, 23, 24, 30, 31, 32, 36, 37,  38,  39,  42, 43, 67,
                                             68, 74, 78, 81, 82, 83, 84, 85, 86,  87,  88,  89, 90, 91,
                                             91, 92, 92, 93, 94, 95, 97, 98, 105, 106, 107, 108};
    switch (source.below(8)) {
        case 0:
            return owner_type;
        case 1:
            return static_cast<uint16_t>(source.below(128));
        case 2:
            return static_cast<uint16_t>(source.word());
        default:
            return source.pick(known);
    }
}

element random_owner(random_source &source) {
    if (!source.one_in(3)) return {0, owner_type, owner_length, source.some_bytes(owner_length)};
    const auto length = source.pick<uint16_t>({0, 8, 80, 82, 0x5100});
    return {0, owner_type, length, source.some_bytes(4)};
}

// The index of one of these ports, one that is almost the same, or any.
bytes random_index(random_source &source, const std::vector<bytes> &ports) {
    if (ports.empty() || source.one_in(8)) return source.some_bytes(4);
    bytes index = source.pick(ports);
    if (source.one_in(6)) index[source.below(4)] ^= static_cast<uint8_t>(1 + source.below(255));
    return index;
}

element random_element(random_source &source, const std::vector<bytes> &ports) {
    if (source.one_in(12)) return {source.word() | 1};
    const uint16_t type = random_type(source);
    if (type == owner_type) return random_owner(source);
    const auto length = static_cast<uint16_t>(source.one_in(4) ? source.word() : 8);
    return {0, type, length, support::payload().append(random_index(source, ports)).append(source.some_bytes(4))};
}

// The elements behind these records.
std::vector<element> random_elements(random_source &source, const bytes &payload, uint32_t count) {
    std::vector<bytes> ports;
    for (size_t i = 0; i < count; ++i) {
        const auto *const record = &payload[header_size + base_record_size * i];
        ports.emplace_back(record, record + 4);
    }
    std::vector<element> elements(source.below(14));
    std::ranges::generate(elements, [&] { return random_element(source, ports); });
    return elements;
}

// Elements, in place of which these bytes lie: they are read by the platform.
void add_elements(random_source &source, answer &to, uint32_t count) {
    to.elements = random_elements(source, *to.payload, count);
    if (source.one_in(5)) return;
    const bytes place = source.some_bytes(1 + source.below(3));
    to.payload->insert(to.payload->end(), place.begin(), place.end());
}

uint32_t random_status(random_source &source) { return source.one_in(5) ? source.word() : 0; }

}  // namespace

bytes random_records(random_source &source, size_t record_size) {
    const uint32_t count = source.below(6);
    return with_header(random_status(source), count, source.some_bytes(count * record_size));
}

answer random_full_answer(random_source &source) {
    const uint32_t count = source.below(6);
    answer made{with_header(random_status(source), count, source.some_bytes(count * base_record_size))};
    add_elements(source, made, count);
    return made;
}

answer random_next_answer(random_source &source) {
    answer made{with_header(random_status(source), source.word(), source.some_bytes(base_record_size))};
    add_elements(source, made, 1);
    return made;
}

void spoil(random_source &source, std::optional<bytes> &payload) {
    // Counts whose records have few bytes when their sizes wrap around in 32 bits.
    static const std::vector<uint32_t> large{0xffffffff, 0x80000000, 0x20000000, 22724854, 84215046, 16086032, 7};
    switch (source.below(5)) {
        case 0:
            payload.reset();
            return;
        case 1:
            payload->resize(source.below(static_cast<uint32_t>(payload->size()) + 1));
            return;
        case 2:
            put_word(*payload, 0, source.word());
            return;
        case 3:
            put_word(*payload, 4, source.pick(large));
            return;
        default:
            put_word(*payload, 4, (*payload)[7] + 1U);
            return;
    }
}

answer_message random_message(random_source &source, uint32_t opcode) {
    const uint32_t other = source.pick<uint32_t>({0, 324, 325, 3141, opcode + 1});
    return {source.one_in(12) ? other : opcode, !source.one_in(12)};
}

cmi_result random_result(random_source &source, const answer &what) {
    return {source.one_in(12) ? source.word() : 0, what};
}

}  // namespace model
