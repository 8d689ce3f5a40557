// SPDX-License-Identifier: Apache-2.0
#include "switch/status_words.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace {

using enum pmctl::status_source;

struct sample {
    pmctl::status_source source;
    uint32_t status;
    const char *words;
};

class status_samples : public testing::TestWithParam<sample> {};

TEST_P(status_samples, have_their_words) {
    EXPECT_EQ(pmctl::status_words(GetParam().source, GetParam().status), GetParam().words);
}

INSTANTIATE_TEST_SUITE_P(all, status_samples,
                         testing::Values(sample{request, ETIMEDOUT, "Connection timed out"},
                                         sample{request, EAGAIN, "Resource temporarily unavailable"},
                                         sample{answer, ETIMEDOUT, "status 0x6e"}, sample{request, 1, "out of memory"},
                                         sample{answer, 1, "out of memory"}, sample{request, 4096, "status 0x1000"},
                                         sample{answer, 0x40290000, "PM_ERR_FAILURE (0x40290000)"},
                                         sample{request, 0x40290003, "PM_ERR_INVALID_PARAM (0x40290003)"},
                                         sample{answer, 0x40290004, "PM_ERR_TLV (0x40290004)"},
                                         sample{answer, 0x40290005, "PM_ERR_NO_PAYLOAD (0x40290005)"},
                                         sample{answer, 0x40290009, "PM_ERR_REJECTED (0x40290009)"},
                                         sample{answer, 0x4029000a, "PM_ERR_INVALID_RANGE (0x4029000a)"},
                                         sample{answer, 0x402900ff, "status 0x402900ff"}));

}  // namespace
