// SPDX-License-Identifier: Apache-2.0
#include "pm_api_common/exchange.h"

namespace pm {

mts_recv_options_t answer_to(const mts_msg_t &request, uint32_t wait) {
    mts_recv_options_t options{};
    options.word[0] = 1;
    options.word[2] = wait;
    options.word[3] = mts_rr_token_get(&request);
    return options;
}

uint32_t receive_answer(mts_handle_t handle, mts_msg_t &request, mts_msg_t *response) {
    const mts_recv_options_t options = answer_to(request, query_wait);
    uint32_t status = 0;
    if (mts_recv(handle, response, &options) == transport_failure) status = mts_errno_get(handle);
    if (mts_drop(handle, &request) == transport_failure) status = mts_errno_get(handle);
    return status;
}

}  // namespace pm
