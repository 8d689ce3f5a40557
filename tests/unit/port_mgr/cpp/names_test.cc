// SPDX-License-Identifier: Apache-2.0
#include "cpp_layer_fixture.h"

namespace {

class cpp_names : public unit::cpp_layer {};

TEST_F(cpp_names, are_those_of_the_platform) {
    EXPECT_EQ(port_mgr::interface_name(0x01020304), "port 1020304");
    EXPECT_EQ(port_mgr::interface_name(0x05060708), "port 5060708");
}

TEST_F(cpp_names, may_be_as_long_as_the_platform_makes_them) {
    interfaces.name_size = 255;
    const std::string name = port_mgr::interface_name(0x01020304);
    EXPECT_EQ(name.size(), 255U);
    EXPECT_EQ(name.substr(0, 13), "port 1020304+");
    EXPECT_EQ(name.back(), '+');
}

}  // namespace
