// SPDX-License-Identifier: Apache-2.0
#include <memory>
#include <string>

#include "cpp_layer_fixture.h"

namespace {

using port_mgr::origin;
using port_mgr::result;
using port_mgr::status;

TEST(cpp_result, holds_what_a_call_gave) {
    result<std::string> given(std::string("ports"));
    EXPECT_TRUE(given);
    EXPECT_EQ(*given, "ports");
    EXPECT_EQ(given->size(), 5U);
    given->append("!");
    EXPECT_EQ(*std::as_const(given), "ports!");
    EXPECT_EQ(std::as_const(given)->back(), '!');
    EXPECT_TRUE(given.why().ok());
}

TEST(cpp_result, tells_why_there_is_nothing) {
    const result<std::string> refused(status(PM_ERR_REJECTED, origin::answer));
    EXPECT_FALSE(refused);
    EXPECT_EQ(refused.why().value(), PM_ERR_REJECTED);
    EXPECT_EQ(refused.why().from(), origin::answer);
}

TEST(cpp_result, hands_out_what_can_only_be_moved) {
    result<std::unique_ptr<int>> given(std::make_unique<int>(7));
    const std::unique_ptr<int> taken = *std::move(given);
    ASSERT_NE(taken, nullptr);
    EXPECT_EQ(*taken, 7);
    EXPECT_EQ(*given, nullptr);
}

TEST(cpp_result, holds_a_number_without_taking_it_for_a_status) {
    const result<uint64_t> given(uint64_t{0x40290009});
    EXPECT_TRUE(given);
    EXPECT_EQ(*given, 0x40290009U);
    EXPECT_TRUE(result<uint64_t>(uint64_t{0}));
}

}  // namespace
