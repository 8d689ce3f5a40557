// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "chassis_db/chassis_reader.h"
#include "chassis_db/member_record.h"
#include "platform/port_channel.h"

namespace {

constexpr platform_dev::member_record_layout record_layout = {
    .size = 144, .channel_offset = 6, .count_offset = 18, .first_member_offset = 26};
static_assert(record_layout.holds_every_member());

}  // namespace

int32_t pcm_get_pc_info(void *record) { return platform_dev::fill_member_record(record, record_layout); }

int32_t pcm_get_pc_for_port(uint32_t first, uint32_t second) {
    const auto list = platform_dev::find_port_channel(second);
    if (!list) return -1;
    const auto end = list->members.begin() + list->count;
    return std::find(list->members.begin(), end, first) == end ? -1 : 0;
}
