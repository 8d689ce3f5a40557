// SPDX-License-Identifier: Apache-2.0
#include "platform/cmi.h"

#include "mts/handle_operation.h"
#include "platform_dev/mts_dev.h"

using namespace platform_dev;

namespace {

constexpr uint32_t default_wait_seconds = 10;

}  // namespace

uint32_t cmi_req_resp(uint32_t opcode, uint32_t kind, const void *request, void **response, uint32_t *length, uint32_t,
                      uint32_t, uint32_t sap, mts_handle_t handle, uint32_t last) {
    received_frame answer;
    const int error = run_on_handle(handle, [&](message_queue &queue) {
        if (!response || !length || (!request && *length > 0)) return EINVAL;
        frame_header header{};
        header.kind = frame_kind::cmi_request;
        header.opcode = opcode;
        header.payload_size = *length;
        header.cmi_word = kind;
        if (const int send_error = queue.send(MTS_NODE_SUPERVISOR, sap, header, request)) return send_error;
        return queue.await(header.token, frame_kind::cmi_answer, last == 0 ? default_wait_seconds : last, answer);
    });
    if (error != 0) return static_cast<uint32_t>(error);
    if (answer.header.cmi_word != 0) return answer.header.cmi_word;
    *response = answer.payload.release();
    *length = answer.header.payload_size;
    return 0;
}
