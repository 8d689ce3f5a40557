// SPDX-License-Identifier: Apache-2.0
// fake_reply.h: a reply that keeps what a service puts into it.
#ifndef TESTS_UNIT_VIRTUAL_SWITCH_FAKE_REPLY_H
#define TESTS_UNIT_VIRTUAL_SWITCH_FAKE_REPLY_H

#include <cstdint>
#include <optional>
#include <vector>

#include "platform_dev/mts_service.h"

struct mts_reply {
    std::optional<std::vector<uint8_t>> payload;
    uint32_t failure = 0;
    uint32_t largest = UINT32_MAX;  // payloads above are refused

    // The four bytes at an offset as a big-endian number.
    [[nodiscard]] uint32_t word(size_t offset) const;
};

#endif
