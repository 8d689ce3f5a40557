// SPDX-License-Identifier: Apache-2.0
// member_record.h: the records in which the port-channel look-ups answer.
#ifndef PLATFORM_DEV_CHASSIS_DB_MEMBER_RECORD_H
#define PLATFORM_DEV_CHASSIS_DB_MEMBER_RECORD_H

#include <cstdint>

#include "chassis_db/chassis_image.h"

namespace platform_dev {

// Where a record keeps its 32-bit words, which need not be aligned; members follow each other.
struct member_record_layout {
    uint32_t size;
    uint32_t channel_offset;
    uint32_t count_offset;
    uint32_t first_member_offset;

    [[nodiscard]] constexpr bool holds_every_member() const {
        return first_member_offset + max_members * sizeof(uint32_t) <= size;
    }
};

// Reads the channel from `record` and writes its members there. Returns 0, or -1 when the channel is not published.
int32_t fill_member_record(void *record, const member_record_layout &layout);

}  // namespace platform_dev

#endif
