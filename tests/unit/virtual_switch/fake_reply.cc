// SPDX-License-Identifier: Apache-2.0
#include "fake_reply.h"

uint32_t mts_reply::word(size_t offset) const {
    const std::vector<uint8_t> &bytes = payload.value();
    uint32_t number = 0;
    for (size_t i = 0; i < 4; ++i) number = number << 8 | bytes.at(offset + i);
    return number;
}

void *mts_reply_payload(mts_reply_t *reply, uint32_t size) {
    if (size > reply->largest) return nullptr;
    return reply->payload.emplace(size).data();
}

void mts_reply_fail(mts_reply_t *reply, uint32_t status) { reply->failure = status; }
