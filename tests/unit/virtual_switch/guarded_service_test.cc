// SPDX-License-Identifier: Apache-2.0
#include "services/guarded_service.h"

#include <gtest/gtest.h>

#include "fake_reply.h"

namespace {

using virtual_switch::guarded;

void take_memory(void *, const mts_request_t *, mts_reply_t *reply) {
    mts_reply_payload(reply, 4);
    throw std::bad_alloc();
}

void copy_number(void *context, const mts_request_t *request, mts_reply_t *reply) {
    mts_reply_fail(reply, *static_cast<uint32_t *>(context) + request->opcode);
}

TEST(guarded_service, fails_a_request_that_there_is_no_memory_for) {
    const mts_request_t request{};
    mts_reply reply;
    guarded<take_memory>(nullptr, &request, &reply);
    EXPECT_EQ(reply.failure, uint32_t{ENOMEM});
}

TEST(guarded_service, hands_on_what_the_service_is_given) {
    uint32_t context = 40;
    mts_request_t request{};
    request.opcode = 2;
    mts_reply reply;
    guarded<copy_number>(&context, &request, &reply);
    EXPECT_EQ(reply.failure, 42U);
}

}  // namespace
