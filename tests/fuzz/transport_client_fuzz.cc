// SPDX-License-Identifier: Apache-2.0
// What a hostile service sends to a client that waits for an answer.
#include <sys/socket.h>

#include <cstring>

#include "platform/cmi.h"
#include "platform/mts.h"
#include "platform_dev/mts_dev.h"
#include "support/peer.h"

namespace {

constexpr uint32_t sap = 43;

// A received payload is as long as it says, and its zeroed tail follows.
void check_answer(const mts_msg_t &answer) {
    const auto *const payload = static_cast<const uint8_t *>(mts_payload_get(&answer));
    const uint32_t size = mts_payload_size(&answer);
    FUZZ_REQUIRE((payload == nullptr) == (size == 0));
    volatile uint8_t sum = 0;
    for (uint32_t i = 0; i < size; ++i) sum = static_cast<uint8_t>(sum + payload[i]);
    for (size_t i = 0; payload != nullptr && i < platform_dev::payload_tail; ++i) FUZZ_REQUIRE(payload[size + i] == 0);
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    static const int listener = fuzz::listen_in_runtime_dir("fe000000-43");
    const mts_handle_t handle = mts_dev_open();
    mts_msg_t request;
    FUZZ_REQUIRE(mts_send(handle, MTS_NODE_SUPERVISOR, sap, 1, "x", 1, &request, 0, 0) == 0);
    const uint32_t token = mts_rr_token_get(&request);
    mts_drop(handle, &request);
    {
        const platform_dev::unique_fd service(accept4(listener, nullptr, nullptr, SOCK_CLOEXEC));
        for (const fuzz::packet &packet :
             fuzz::packets_in({data, size}, platform_dev::frame_kind::message_answer, token))
            fuzz::send(service.get(), packet);
    }
    for (const uint32_t selects_token : {1u, 0u, 0u}) {
        const mts_recv_options_t options{{selects_token, 0, 0, token, 0, 0, 0, 0, 0}};
        mts_msg_t answer{};
        if (mts_recv(handle, &answer, &options) == -1) {
            FUZZ_REQUIRE(mts_errno_get(handle) != 0);
            continue;
        }
        FUZZ_REQUIRE(mts_is_response(&answer) != 0);
        check_answer(answer);
        FUZZ_REQUIRE(mts_drop(handle, &answer) == 0);
    }
    mts_dev_close(handle);
    return 0;
}
