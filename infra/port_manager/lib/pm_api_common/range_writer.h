// SPDX-License-Identifier: Apache-2.0
// range_writer.h: puts ranges of interfaces into a request.
#ifndef PM_API_COMMON_RANGE_WRITER_H
#define PM_API_COMMON_RANGE_WRITER_H

#include "platform/if_index.h"
#include "port_mgr/types.h"
#include "protocol/cursor.h"

namespace pm {

// Null ranges go out as zeros.
inline void put_ranges(byte_writer &to, uint32_t count, const pm_if_index_range_t *ranges) {
    for (uint32_t i = 0; i < count; ++i) {
        to.put_wire32(ranges != nullptr ? hton_if_index(ranges[i].first) : 0);
        to.put_wire32(ranges != nullptr ? hton_if_index(ranges[i].last) : 0);
    }
}

}  // namespace pm

#endif
