// SPDX-License-Identifier: Apache-2.0
#include "mts/message_record.h"

#include <algorithm>

namespace platform_dev {

namespace {

constexpr uint32_t released_magic = 0x6d747264;

void write_record(mts_msg_t &message, const message_record &record) {
    message = {};
    std::memcpy(&message, &record, sizeof record);
}

message_record describe(const frame_header &header, record_kind kind) {
    return {.magic = record_magic,
            .kind = kind,
            .opcode = header.opcode,
            .token = header.token,
            .message_id = header.message_id,
            .payload_size = 0,
            .is_packet_buffer = 0,
            .payload = nullptr};
}

}  // namespace

void write_request(mts_msg_t &message, const frame_header &header) {
    write_record(message, describe(header, record_kind::request));
}

void write_answer(mts_msg_t &message, received_frame answer) {
    message_record record = describe(answer.header, record_kind::answer);
    record.payload_size = answer.header.payload_size;
    record.is_packet_buffer = answer.is_packet_buffer;
    record.payload = answer.payload.release();
    write_record(message, record);
}

bool release_record(mts_msg_t *message, heap_block &packet_buffer) {
    const message_record record = read_record(message);
    if (record.kind == record_kind::none)
        return message && std::ranges::all_of(message->word, [](uint32_t word) { return word == 0; });
    heap_block payload(record.payload);
    if (record.is_packet_buffer) packet_buffer = std::move(payload);
    *message = {{released_magic}};
    return true;
}

}  // namespace platform_dev
