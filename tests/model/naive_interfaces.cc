// SPDX-License-Identifier: Apache-2.0
#include "naive_interfaces.h"

#include "naive_bytes.h"

namespace model {
namespace {

// What a look-up that cannot tell a type returns.
constexpr uint32_t untold = 0xffffffff;

// What is wrong with the ends of a range, or 0.
uint32_t wrong_types(const interface &first, const interface &last) {
    if (!first.type || !last.type) return untold;
    return *first.type == *last.type ? 0 : invalid_range;
}

bool is_port_range(const interface &first, const interface &last, uint32_t slots) {
    if (!first.slot || !first.port || !last.slot || !last.port) return false;
    return *first.slot == *last.slot && *first.slot < slots && *first.port <= *last.port;
}

uint32_t or_0(std::optional<uint32_t> number) { return number ? *number : 0; }

range_member port_at(const interface &first, const interface &last, uint32_t offset, uint32_t slots, uint32_t type) {
    if (!is_port_range(first, last, slots)) return {invalid_range};
    const uint32_t port = (*first.port + offset) % 256;
    if (port > *last.port) return {rejected};
    return {0, type * 16777216 + *first.slot * 65536 + port * 256};
}

range_member numbered_at(uint32_t first, uint32_t last, uint32_t offset, uint32_t type) {
    const uint64_t number = uint64_t{first} + offset;
    if (number > last) return {invalid_range};
    return {0, type * 16777216 + static_cast<uint32_t>(number)};
}

}  // namespace

counted ports_in_range(const interface &first, const interface &last, uint32_t slots) {
    if (const uint32_t wrong = wrong_types(first, last); wrong != 0) return {wrong, 0};
    const counted invalid{invalid_range, 0};
    const uint32_t type = *first.type;
    if (type == 5) return {0, 1};
    if (type == 1 || type == 2 || type == 11 || type == 13) {
        if (!is_port_range(first, last, slots)) return invalid;
        const uint32_t count = *last.port - *first.port + 1;
        if (type != 2 || *first.port != *last.port) return {0, count};
        if (!first.sub_interface || !last.sub_interface || *last.sub_interface < *first.sub_interface) return invalid;
        return {0, *last.sub_interface - *first.sub_interface + 1};
    }
    if (type == 4 || type == 22) {
        if (last.if_index < first.if_index) return invalid;
        return {0, or_0(last.channel) - or_0(first.channel) + 1};
    }
    if (type != 10 || !first.tunnel || !last.tunnel) return invalid;
    return {0, *last.tunnel - *first.tunnel + 1};
}

range_member member_of_range(const interface &first, const interface &last, uint32_t offset, uint32_t slots) {
    if (first.if_index == last.if_index && offset == 0) return {0, first.if_index};
    if (const uint32_t wrong = wrong_types(first, last); wrong != 0) return {wrong};
    const uint32_t type = *first.type;
    if (type == 1) return port_at(first, last, offset, slots, 1);
    if (type == 2 || type == 13) return port_at(first, last, offset, slots, 2);
    if (last.if_index < first.if_index) return {invalid_range};
    if (type == 4 || type == 22) return numbered_at(or_0(first.channel), or_0(last.channel), offset, 4);
    if (type == 10) return numbered_at(or_0(first.tunnel), or_0(last.tunnel), offset, 10);
    return {invalid_range};
}

vsan_bitset_t vsans_of(uint32_t start, uint32_t length, const support::bytes &bits) {
    vsan_bitset_t vsans{512, {}};
    const uint64_t end = start + uint64_t{8} * length;
    for (uint64_t vsan = start; vsan < end && vsan <= 4095; ++vsan) {
        const auto bit = static_cast<size_t>(vsan - start);
        const bool is_set = bits[bit / 8] / (1 << (7 - bit % 8)) % 2 == 1;
        if (is_set) vsans.bits[vsan / 8] = static_cast<uint8_t>(vsans.bits[vsan / 8] + (1 << (7 - vsan % 8)));
    }
    return vsans;
}

}  // namespace model
