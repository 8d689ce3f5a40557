// SPDX-License-Identifier: Apache-2.0
#include "chassis_db/member_record.h"

#include <cstring>

#include "chassis_db/chassis_reader.h"

namespace platform_dev {

int32_t fill_member_record(void *record, const member_record_layout &layout) {
    auto *const bytes = static_cast<uint8_t *>(record);
    if_index_t channel;
    memcpy(&channel, bytes + layout.channel_offset, sizeof channel);
    const auto list = find_port_channel(channel);
    if (!list) return -1;
    memcpy(bytes + layout.count_offset, &list->count, sizeof list->count);
    memcpy(bytes + layout.first_member_offset, list->members.data(), list->count * sizeof(if_index_t));
    return 0;
}

}  // namespace platform_dev
