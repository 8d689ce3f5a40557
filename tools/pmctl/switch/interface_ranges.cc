// SPDX-License-Identifier: Apache-2.0
#include "switch/interface_ranges.h"

#include <fmt/core.h>

#include <optional>

#include "failure.h"
#include "platform_dev/if_index_dev.h"
#include "port_mgr/if_index_range.h"
#include "switch/interface_names.h"

namespace pmctl {
namespace {

uint8_t slot_of(if_index_t index) {
    uint8_t slot = 0;
    if_index_get_slot(index, &slot);
    return slot;
}

// How far an index lies behind its like on the first slot. Which slots there are is the switch's to say, so ranges are
// counted and stepped through as if they were on the first one, which every chassis has.
uint32_t slot_distance(if_index_t index) {
    if_index_t slot_begin = 0;
    if_index_t first_begin = 0;
    if_index_slot_port_init(&slot_begin, interface_type(index), slot_of(index), 0);
    if_index_slot_port_init(&first_begin, interface_type(index), 0, 0);
    return slot_begin - first_begin;
}

// Loopbacks, which the library does not count, and the sub-interfaces that it does not tell from their main interface.
bool is_numbered_here(if_index_t index) {
    return is_loopback(index) || (interface_type(index) != IF_TYPE_ETHERNET && is_sub_interface(index));
}

bool are_of_two_types(if_index_t first, if_index_t last) { return interface_type(first) != interface_type(last); }
bool are_on_two_slots(if_index_t first, if_index_t last) { return slot_of(first) != slot_of(last); }
bool run_backwards(if_index_t first, if_index_t last) { return first > last; }

bool differ_elsewhere(if_index_t first, if_index_t last) {
    return name_stem(interface_name(first)) != name_stem(interface_name(last));
}

// As many as there can be tunnels, of which no kind has more but the loopbacks.
bool are_too_many(if_index_t first, if_index_t last) { return is_numbered_here(first) && last - first >= 65536; }

// What can be wrong with a range; the last row fits every other.
struct refusal {
    bool (*applies)(if_index_t first, if_index_t last);
    const char *reason;
};

constexpr refusal refusals[] = {
    {are_of_two_types, "the ends of the range are of two kinds"},
    {are_on_two_slots, "the ends of the range lie on two slots"},
    {run_backwards, "the range runs backwards"},
    {differ_elsewhere, "the ends of the range differ in more than their last number"},
    {are_too_many, "the range is longer than 65536 interfaces"},
    {[](if_index_t, if_index_t) { return true; }, "interfaces of this kind have no ranges"},
};

usage_error refused(const std::string &text, if_index_t first, if_index_t last) {
    const refusal *row = refusals;
    while (!row->applies(first, last)) ++row;
    return usage_error(fmt::format("{}: {}", row->reason, text));
}

// 0 when the range is none.
uint32_t count_of(if_index_t first, if_index_t last) {
    if (first == last) return 1;
    if (run_backwards(first, last)) return 0;
    if (is_numbered_here(first) && !differ_elsewhere(first, last))
        return are_too_many(first, last) ? 0 : last - first + 1;
    const uint32_t distance = slot_distance(first);
    uint32_t count;
    const uint32_t status = pm_get_num_ports_in_if_index_range(first - distance, last - distance, &count);
    return status == 0 && count > 1 ? count : 0;
}

// Where the library's step leads, or nothing.
std::optional<if_index_t> step(if_index_t first, if_index_t last, uint32_t offset) {
    const uint32_t distance = slot_distance(first);
    if_index_t member;
    if (pm_get_if_index_in_range(first - distance, last - distance, &member, offset) != 0) return std::nullopt;
    return member + distance;
}

// The library counts sub-interfaces but steps past them, port by port; of some kinds its steps are ports of another
// kind. There the members lie evenly between the ends, which differ in one number only.
uint32_t spacing_of(if_index_t first, if_index_t last, uint32_t count) {
    if (step(first, last, 0) == first && step(first, last, count - 1) == last) return 0;
    return (last - first) / (count - 1);
}

}  // namespace

interface_range::interface_range(std::string text, if_index_t first, if_index_t last)
    : text_(std::move(text)), first_(first), last_(last), count_(count_of(first, last)) {
    if (count_ == 0) throw refused(text_, first, last);
    spacing_ = spacing_of(first, last, count_);
    if (spacing_ != 0 && differ_elsewhere(first, last)) throw refused(text_, first, last);
}

if_index_t interface_range::member(uint32_t offset) const {
    if (spacing_ != 0) return first_ + offset * spacing_;
    return step(first_, last_, offset).value_or(first_);
}

std::vector<if_index_t> members_of(const std::vector<interface_range> &ranges) {
    std::vector<if_index_t> all;
    for (const interface_range &range : ranges)
        for (uint32_t offset = 0; offset < range.count(); ++offset) all.push_back(range.member(offset));
    return all;
}

}  // namespace pmctl
