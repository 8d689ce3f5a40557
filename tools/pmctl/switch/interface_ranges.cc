// SPDX-License-Identifier: Apache-2.0
#include "switch/interface_ranges.h"

#include <fmt/core.h>

#include "failure.h"
#include "platform_dev/if_index_dev.h"
#include "port_mgr/if_index_range.h"
#include "switch/interface_names.h"

namespace pmctl {
namespace {

uint8_t type_of(if_index_t index) {
    uint8_t type = IF_TYPE_NONE;
    if_index_get_type(index, &type);
    return type;
}

uint8_t slot_of(if_index_t index) {
    uint8_t slot = 0;
    if_index_get_slot(index, &slot);
    return slot;
}

bool is_countable(if_index_t index) {
    uint32_t count;
    return pm_get_num_ports_in_if_index_range(index, index, &count) == 0;
}

// Loopbacks, which the library does not count, and the sub-interfaces that it does not tell from their main interface.
bool is_numbered_here(if_index_t index) {
    return type_of(index) == IF_TYPE_LOOPBACK ||
           (type_of(index) != IF_TYPE_ETHERNET && if_index_get_mainintf_from_subintf(index) != index);
}

bool are_of_two_types(if_index_t first, if_index_t last) { return type_of(first) != type_of(last); }
bool are_on_two_slots(if_index_t first, if_index_t last) { return slot_of(first) != slot_of(last); }
bool run_backwards(if_index_t first, if_index_t last) { return first > last; }

bool differ_elsewhere(if_index_t first, if_index_t last) {
    return name_stem(interface_name(first)) != name_stem(interface_name(last));
}

// Were they on the first slot, they would count.
bool lack_their_slot(if_index_t first, if_index_t) {
    if_index_t on_first_slot;
    return if_index_slot_port_init(&on_first_slot, type_of(first), 0, 0) == 0 && is_countable(on_first_slot) &&
           !is_countable(first);
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
    {lack_their_slot, "the chassis does not have the slot of the range"},
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
    uint32_t count;
    const uint32_t status = pm_get_num_ports_in_if_index_range(first, last, &count);
    return status == 0 && count > 1 ? count : 0;
}

bool leads_to(if_index_t first, if_index_t last, uint32_t offset, if_index_t expected) {
    if_index_t member;
    return pm_get_if_index_in_range(first, last, &member, offset) == 0 && member == expected;
}

// The library counts sub-interfaces but steps past them, port by port; of some kinds its steps are ports of another
// kind. There the members lie evenly between the ends, which differ in one number only.
uint32_t spacing_of(if_index_t first, if_index_t last, uint32_t count) {
    if (leads_to(first, last, 0, first) && leads_to(first, last, count - 1, last)) return 0;
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
    if_index_t member = first_;
    pm_get_if_index_in_range(first_, last_, &member, offset);
    return member;
}

}  // namespace pmctl
