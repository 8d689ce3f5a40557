// SPDX-License-Identifier: Apache-2.0
#include <cerrno>
#include <cstring>

#include "cpp_layer_fixture.h"

namespace {

using port_mgr::origin;
using port_mgr::status;

struct known_code {
    uint32_t value;
    const char *name;
    const char *words;
};

constexpr known_code known_codes[] = {
    {0x40290000, "PM_ERR_FAILURE", "missing or invalid arguments (PM_ERR_FAILURE, 0x40290000)"},
    {0x40290003, "PM_ERR_INVALID_PARAM", "invalid parameter, or malformed answer (PM_ERR_INVALID_PARAM, 0x40290003)"},
    {0x40290004, "PM_ERR_TLV", "attribute that cannot be encoded (PM_ERR_TLV, 0x40290004)"},
    {0x40290005, "PM_ERR_NO_PAYLOAD", "answer without payload (PM_ERR_NO_PAYLOAD, 0x40290005)"},
    {0x40290009, "PM_ERR_REJECTED", "request rejected (PM_ERR_REJECTED, 0x40290009)"},
    {0x4029000a, "PM_ERR_INVALID_RANGE", "no such interface or range (PM_ERR_INVALID_RANGE, 0x4029000a)"},
};

TEST(cpp_status, of_a_code_has_its_name_and_words_whoever_told_it) {
    for (const known_code &code : known_codes) {
        for (const origin from : {origin::exchange, origin::answer}) {
            const status told(code.value, from);
            EXPECT_STREQ(told.name(), code.name);
            EXPECT_EQ(told.words(), code.words);
            EXPECT_EQ(told.value(), code.value);
            EXPECT_EQ(told.from(), from);
            EXPECT_FALSE(told.ok());
            EXPECT_FALSE(told.is_transport_failure());
        }
    }
}

TEST(cpp_status, of_success_is_no_failure_of_anybody) {
    for (const status good : {status(), status(0, origin::exchange), status(0, origin::answer)}) {
        EXPECT_TRUE(good.ok());
        EXPECT_EQ(good.value(), 0U);
        EXPECT_EQ(good.name(), nullptr);
        EXPECT_EQ(good.words(), "success");
        EXPECT_FALSE(good.is_transport_failure());
    }
    EXPECT_EQ(status().from(), origin::exchange);
}

TEST(cpp_status, of_an_error_number_is_the_systems_when_the_exchange_told_it) {
    for (const int error : {ETIMEDOUT, EHOSTUNREACH, EAGAIN, ECONNRESET, EINTR, EBADF}) {
        const status told(static_cast<uint32_t>(error), origin::exchange);
        EXPECT_TRUE(told.is_transport_failure());
        EXPECT_EQ(told.words(), strerror(error));
        EXPECT_EQ(told.name(), nullptr);
    }
}

TEST(cpp_status, of_an_error_number_is_the_services_own_when_the_answer_told_it) {
    const status told(ETIMEDOUT, origin::answer);
    EXPECT_FALSE(told.is_transport_failure());
    EXPECT_EQ(told.words(), "status 0x6e");
}

TEST(cpp_status, of_1_is_memory_that_ran_out_or_the_transports_eperm) {
    EXPECT_EQ(status(1, origin::exchange).words(), "out of memory, or not permitted");
    EXPECT_TRUE(status(1, origin::exchange).is_transport_failure());
    EXPECT_EQ(status(1, origin::answer).words(), "out of memory");
    EXPECT_FALSE(status(1, origin::answer).is_transport_failure());
}

TEST(cpp_status, of_an_unknown_number_tells_the_number) {
    EXPECT_EQ(status(0x40290001, origin::answer).words(), "status 0x40290001");
    EXPECT_EQ(status(0xffffffff, origin::exchange).words(), "status 0xffffffff");
    EXPECT_EQ(status(0x4029000b, origin::exchange).name(), nullptr);
}

TEST(cpp_status, of_an_error_number_ends_where_the_kernels_do) {
    EXPECT_TRUE(status(4095, origin::exchange).is_transport_failure());
    EXPECT_FALSE(status(4096, origin::exchange).is_transport_failure());
    EXPECT_EQ(status(4096, origin::exchange).words(), "status 0x1000");
}

TEST(cpp_status, equals_another_of_the_same_number) {
    EXPECT_EQ(status(5, origin::exchange), status(5, origin::answer));
    EXPECT_NE(status(5, origin::exchange), status(6, origin::exchange));
    static_assert(status(PM_ERR_TLV, origin::answer) == status(PM_ERR_TLV, origin::exchange));
    static_assert(!status(PM_ERR_TLV, origin::answer).ok() && status().ok());
}

}  // namespace
