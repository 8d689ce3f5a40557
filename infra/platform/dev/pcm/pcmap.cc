// SPDX-License-Identifier: Apache-2.0
#include "chassis_db/member_record.h"
#include "platform/port_channel.h"

namespace {

constexpr platform_dev::member_record_layout record_layout = {
    .size = 172, .channel_offset = 0, .count_offset = 8, .first_member_offset = 32};
static_assert(record_layout.holds_every_member());

}  // namespace

int32_t pcmap_get_port_channel(void *record) { return platform_dev::fill_member_record(record, record_layout); }
