// SPDX-License-Identifier: Apache-2.0
// reply.h: the answer that a service constructs.
#ifndef PLATFORM_DEV_MTS_REPLY_H
#define PLATFORM_DEV_MTS_REPLY_H

#include "mts/payload.h"
#include "platform_dev/mts_service.h"

// The server has one and uses it, and its block, again for each request.
struct mts_reply {
    platform_dev::heap_block block;
    size_t capacity = 0;
    const void *payload = nullptr;  // in the block, or the service's own
    uint32_t payload_size = 0;
    uint32_t status = 0;
    bool is_given = false;
};

#endif
