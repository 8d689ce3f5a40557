// SPDX-License-Identifier: Apache-2.0
// message_record.h: what lies in the caller's mts_msg_t.
#ifndef PLATFORM_DEV_MTS_MESSAGE_RECORD_H
#define PLATFORM_DEV_MTS_MESSAGE_RECORD_H

#include <cstring>

#include "mts/payload.h"
#include "platform/mts.h"

namespace platform_dev {

enum class record_kind : uint32_t { none, request, answer };

struct message_record {
    uint32_t magic;
    record_kind kind;
    uint32_t opcode;
    uint32_t token;
    uint32_t message_id;
    uint32_t payload_size;  // 0 in a request: its payload went out with the send
    uint32_t is_packet_buffer;
    void *payload;  // owned
};
static_assert(sizeof(message_record) <= sizeof(mts_msg_t));

inline constexpr uint32_t record_magic = 0x6d747372;

// What lies in `message`; of kind none when it is null or holds no message.
[[nodiscard]] inline message_record read_record(const mts_msg_t *message) {
    message_record record{};
    if (message) std::memcpy(&record, message, sizeof record);
    return record.magic == record_magic ? record : message_record{};
}

void write_request(mts_msg_t &message, const frame_header &header);

// Hands the answer over to the record.
void write_answer(mts_msg_t &message, received_frame answer);

// Empties the record. Returns false when it holds no message and is not zeroed, as one that never held any.
// `packet_buffer` gets the payload's block when it can be used again; else the block is freed.
[[nodiscard]] bool release_record(mts_msg_t *message, heap_block &packet_buffer);

}  // namespace platform_dev

#endif
