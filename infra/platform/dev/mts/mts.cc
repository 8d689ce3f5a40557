// SPDX-License-Identifier: Apache-2.0
#include "platform/mts.h"

#include "mts/handle_operation.h"
#include "mts/message_record.h"

using namespace platform_dev;

namespace {

constexpr uint32_t receive_any = 0;
constexpr uint32_t receive_answer_to = 1;

int receive_as_told(message_queue &queue, const mts_recv_options_t &options, received_frame &answer) {
    const uint32_t seconds = options.word[2];
    switch (options.word[0]) {
        case receive_any:
            return queue.next(seconds, answer);
        case receive_answer_to:
            return queue.await(options.word[3], frame_kind::message_answer, seconds, answer);
        default:
            return EINVAL;
    }
}

int32_t result_of(int error) { return error == 0 ? 0 : -1; }

}  // namespace

int32_t mts_send(mts_handle_t handle, uint32_t node, uint32_t sap, uint32_t opcode, const void *payload,
                 uint32_t payload_size, mts_msg_t *request, uint32_t, uint32_t) {
    return result_of(run_on_handle(handle, [&](message_queue &queue) {
        if (!request || (!payload && payload_size > 0)) return EINVAL;
        frame_header header{};
        header.kind = frame_kind::message_request;
        header.opcode = opcode;
        header.payload_size = payload_size;
        const int error = queue.send(node, sap, header, payload);
        if (error == 0) write_request(*request, header);
        return error;
    }));
}

int32_t mts_recv(mts_handle_t handle, mts_msg_t *response, const mts_recv_options_t *options) {
    return result_of(run_on_handle(handle, [&](message_queue &queue) {
        if (!response || !options) return EINVAL;
        received_frame answer;
        const int error = receive_as_told(queue, *options, answer);
        if (error == 0) write_answer(*response, std::move(answer));
        return error;
    }));
}

int32_t mts_drop(mts_handle_t handle, mts_msg_t *message) {
    heap_block packet_buffer;
    const bool released = release_record(message, packet_buffer);
    return result_of(run_on_handle(handle, [&](message_queue &queue) {
        queue.give_back(std::move(packet_buffer));
        return released ? 0 : EINVAL;
    }));
}

uint32_t mts_rr_token_get(const mts_msg_t *request) { return read_record(request).token; }

uint32_t mts_errno_get(mts_handle_t handle) {
    const message_queue *queue = find_queue(handle);
    return static_cast<uint32_t>(queue ? queue->last_error() : EBADF);
}

void *mts_payload_get(const mts_msg_t *message) { return read_record(message).payload; }

uint32_t mts_payload_size(const mts_msg_t *message) { return read_record(message).payload_size; }

uint32_t mts_opc_get(const mts_msg_t *message) { return read_record(message).opcode; }

int32_t mts_is_response(const mts_msg_t *message) { return read_record(message).kind == record_kind::answer; }

uint32_t mts_msg_id_get(const mts_msg_t *message) { return read_record(message).message_id; }
