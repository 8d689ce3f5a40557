// SPDX-License-Identifier: Apache-2.0
#include "protocol/port_attribute_codec.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace {

using testing::ElementsAre;

const pm::port_attribute &attribute_of_type(uint16_t type) {
    return *std::find_if(pm::port_attributes.begin(), pm::port_attributes.end(),
                         [type](const auto &attribute) { return attribute.type == type; });
}

std::vector<uint8_t> encode(uint16_t type, const pm_port_info_t &info) {
    pm::attribute_value value{};
    const uint32_t wire_if_index = pm::swap_be32(0x01020304);
    const auto bytes = pm::encode_attribute_value(attribute_of_type(type), info, wire_if_index, value);
    return {bytes.begin(), bytes.end()};
}

TEST(port_attribute_codec, puts_the_interface_before_a_number) {
    pm_port_info_t info{};
    info.auto_neg = 0x11121314;
    EXPECT_THAT(encode(23, info), ElementsAre(1, 2, 3, 4, 0x11, 0x12, 0x13, 0x14));
}

TEST(port_attribute_codec, widens_short_numbers) {
    pm_port_info_t info{};
    info.native_vlan = 0x2122;
    info.duplex = 0x31;
    info.fcip_tcp_port = 0x4142;
    EXPECT_THAT(encode(83, info), ElementsAre(1, 2, 3, 4, 0, 0, 0x21, 0x22));
    EXPECT_THAT(encode(24, info), ElementsAre(1, 2, 3, 4, 0, 0, 0, 0x31));
    EXPECT_THAT(encode(92, info), ElementsAre(1, 2, 3, 4, 0, 0, 0x41, 0x42));
}

TEST(port_attribute_codec, puts_single_bytes_first) {
    pm_port_info_t info{};
    info.fcot_present = 0x51;
    info.delayed_trap_state = 0x61;
    EXPECT_THAT(encode(43, info), ElementsAre(1, 2, 3, 4, 0x51, 0, 0, 0));
    EXPECT_THAT(encode(39, info), ElementsAre(1, 2, 3, 4, 0x61, 0, 0, 0));
}

TEST(port_attribute_codec, copies_what_is_in_network_order) {
    pm_port_info_t info{};
    constexpr std::array<uint8_t, 4> bytes{0x71, 0x72, 0x73, 0x74};
    std::memcpy(&info.tlv_81, bytes.data(), bytes.size());
    EXPECT_THAT(encode(81, info), ElementsAre(1, 2, 3, 4, 0x71, 0x72, 0x73, 0x74));
}

TEST(port_attribute_codec, sends_the_number_that_is_held) {
    pm_port_info_t info{};
    info.fcip_params[6] = 0x81828384;
    EXPECT_THAT(encode(91, info), ElementsAre(1, 2, 3, 4, 0x81, 0x82, 0x83, 0x84));
}

TEST(port_attribute_codec, sends_zeros_for_what_is_ignored) {
    pm_port_info_t info{};
    info.if_index = 0x91929394;
    EXPECT_THAT(encode(105, info), ElementsAre(1, 2, 3, 4, 0, 0, 0, 0));
}

TEST(port_attribute_codec, sends_the_owner_without_an_interface) {
    pm_port_info_t info{};
    std::memset(info.owner, 'a', 80);
    std::vector<uint8_t> expected(81, 'a');
    expected.back() = 0;
    EXPECT_EQ(encode(110, info), expected);
}

}  // namespace
