// SPDX-License-Identifier: Apache-2.0
// The tables of members against the records that they describe.
#include "output/port_members.h"

#include <gtest/gtest.h>

#include <set>

#include "port_mgr/port_info_response.h"

namespace {

using byte_marks = std::vector<int>;

void mark(byte_marks &bytes, size_t offset, size_t size) {
    for (size_t i = 0; i < size; ++i) ++bytes.at(offset + i);
}

// How often each byte of a record of `size` bytes is shown.
byte_marks shown_bytes(std::span<const pmctl::member_group> groups, size_t size) {
    byte_marks bytes(size);
    for (const auto &group : groups)
        for (const auto &member : group.members)
            mark(bytes, member.place.offset, size_t{member.place.size} * member.place.count);
    return bytes;
}

TEST(port_members, show_every_byte_once_but_the_reserved_ones) {
    byte_marks bytes = shown_bytes(pmctl::port_groups(), sizeof(pm_port_info_t));
    mark(bytes, offsetof(pm_port_info_t, reserved_49), sizeof(pm_port_info_t::reserved_49));
    mark(bytes, offsetof(pm_port_info_t, reserved_51), sizeof(pm_port_info_t::reserved_51));
    mark(bytes, offsetof(pm_port_info_t, reserved_58), sizeof(pm_port_info_t::reserved_58));
    EXPECT_EQ(bytes, byte_marks(sizeof(pm_port_info_t), 1));
}

TEST(brief_members, show_every_byte_once_but_the_reserved_ones) {
    byte_marks bytes = shown_bytes(pmctl::brief_groups(), sizeof(pm_port_info_brief_t));
    mark(bytes, offsetof(pm_port_info_brief_t, reserved_23), sizeof(pm_port_info_brief_t::reserved_23));
    mark(bytes, offsetof(pm_port_info_brief_t, reserved_42), sizeof(pm_port_info_brief_t::reserved_42));
    EXPECT_EQ(bytes, byte_marks(sizeof(pm_port_info_brief_t), 1));
}

TEST(port_members, have_labels_and_keys_of_their_own) {
    std::set<std::string_view> keys;
    for (const auto &group : pmctl::port_groups()) {
        std::set<std::string_view> labels;
        for (const auto &member : group.members) {
            EXPECT_TRUE(keys.insert(member.key).second) << member.key;
            EXPECT_TRUE(labels.insert(member.label).second) << member.label;
        }
    }
}

}  // namespace
