// SPDX-License-Identifier: Apache-2.0
#include "support/answers.h"

#include <cerrno>
#include <cstring>

#include "platform/cmi.h"
#include "platform/idxmap.h"
#include "platform/pdb.h"
#include "platform/tlv_array.h"
#include "platform_dev/mts_dev.h"
#include "protocol/byte_order.h"

namespace fuzz {
namespace {

struct live_message {
    uint32_t mark;
    uint32_t opcode;
    uint32_t size;
    uint8_t *payload;
};
static_assert(sizeof(live_message) <= sizeof(mts_msg_t));

constexpr uint32_t message_mark = 0x46555a5a;

std::function<bytes(const request &)> next_answer;
bytes current_answer;
size_t answer_tail = no_tail;
uint32_t asked_opcode = 0;
size_t messages = 0;

live_message content_of(const mts_msg_t *record) {
    live_message content{};
    std::memcpy(&content, record, sizeof content);
    return content.mark == message_mark ? content : live_message{};
}

// A block of exactly the payload and its tail; null for nothing.
uint8_t *block_of(bytes payload, size_t tail) {
    if (payload.empty()) return nullptr;
    auto *const block = static_cast<uint8_t *>(std::malloc(payload.size() + tail));
    std::memcpy(block, payload.data(), payload.size());
    std::memset(block + payload.size(), 0, tail);
    return block;
}

mts_msg_t made_message(uint32_t opcode, bytes payload, size_t tail) {
    const live_message content{message_mark, opcode, static_cast<uint32_t>(payload.size()), block_of(payload, tail)};
    mts_msg_t record{};
    std::memcpy(&record, &content, sizeof content);
    ++messages;
    return record;
}

void release(mts_msg_t *record) {
    const live_message content = content_of(record);
    if (content.mark == 0) return;
    std::free(content.payload);
    *record = {};
    --messages;
}

}  // namespace

void answer_with(bytes payload, size_t tail) {
    answer_by([payload](const request &) { return payload; }, tail);
}

void answer_by(std::function<bytes(const request &)> next, size_t tail) {
    next_answer = std::move(next);
    answer_tail = tail;
}

size_t live_messages() { return messages; }

message::message(uint32_t opcode, bytes payload, size_t tail) : message_(made_message(opcode, payload, tail)) {}

message::~message() { release(&message_); }

bool takes_long(bytes answer, size_t record_size) {
    constexpr size_t answer_header = 8;
    constexpr size_t array_header = 12;
    constexpr uint64_t quick_steps = 20000;
    if (answer.size() < answer_header) return false;
    const uint64_t records = pm::load_be32(answer.data() + 4);
    const uint64_t end = answer_header + records * record_size;
    if (answer.size() < end + array_header) return false;
    return records * tlv_array_get_num_tlvs(answer.data() + end, 1) > quick_steps;
}

}  // namespace fuzz

using namespace fuzz;

int32_t mts_send(mts_handle_t, uint32_t, uint32_t sap, uint32_t opcode, const void *payload, uint32_t size,
                 mts_msg_t *request, uint32_t, uint32_t) {
    asked_opcode = opcode;
    current_answer = next_answer({sap, opcode, false, {static_cast<const uint8_t *>(payload), size}});
    *request = made_message(opcode, {}, no_tail);
    return 0;
}

int32_t mts_recv(mts_handle_t, mts_msg_t *response, const mts_recv_options_t *) {
    *response = made_message(asked_opcode, current_answer, answer_tail);
    return 0;
}

int32_t mts_drop(mts_handle_t, mts_msg_t *record) {
    release(record);
    return 0;
}

uint32_t mts_rr_token_get(const mts_msg_t *) { return 1; }
uint32_t mts_errno_get(mts_handle_t) { return EIO; }
void *mts_payload_get(const mts_msg_t *record) { return content_of(record).payload; }
uint32_t mts_payload_size(const mts_msg_t *record) { return content_of(record).size; }
uint32_t mts_opc_get(const mts_msg_t *record) { return content_of(record).opcode; }
int32_t mts_is_response(const mts_msg_t *) { return 1; }
uint32_t mts_msg_id_get(const mts_msg_t *) { return 1; }

uint32_t cmi_req_resp(uint32_t opcode, uint32_t, const void *payload, void **response, uint32_t *length, uint32_t,
                      uint32_t, uint32_t sap, mts_handle_t, uint32_t) {
    current_answer = next_answer({sap, opcode, true, {static_cast<const uint8_t *>(payload), *length}});
    *response = block_of(current_answer, answer_tail);
    *length = static_cast<uint32_t>(current_answer.size());
    return 0;
}

mts_handle_t mts_dev_open() { return 1; }
int32_t mts_dev_close(mts_handle_t) { return 0; }

// The look-up that routes port channels needs no chassis database here.
int32_t pdb_get_chassis_type(uint32_t *type) {
    *type = 6;
    return 0;
}

// Every interface is on some line card.
int32_t idxmap_node_by_if_index(if_index_t, uint32_t *node) {
    *node = 0x102;
    return 0;
}

int32_t idxmap_entry_by_if_index(if_index_t, idxmap_entry_t *entry) {
    *entry = {};
    return 0;
}
