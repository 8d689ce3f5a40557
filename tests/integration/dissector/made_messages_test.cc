// SPDX-License-Identifier: Apache-2.0
// What the dissector makes of messages that no switch sends.
#include <arpa/inet.h>
#include <gmock/gmock.h>

#include <random>

#include "dissector_fixture.h"
#include "integration/capture/capture_reader.h"
#include "integration/virtual_switch/virtual_switch_test.h"
#include "made_capture.h"

namespace dissector_test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

std::string spoil(std::string packet, std::mt19937 &random) {
    constexpr size_t record_size = 64;
    const auto below = [&random](size_t end) { return std::uniform_int_distribution<size_t>(0, end - 1)(random); };
    const size_t first = below(4) == 0 ? 0 : std::min(record_size, packet.size() - 1);
    for (size_t changes = below(4); changes > 0; --changes)
        packet[first + below(std::min<size_t>(packet.size() - first, 40))] = static_cast<char>(below(256));
    for (size_t changes = below(8); changes > 0; --changes)
        packet[below(packet.size())] = static_cast<char>(below(2) * 255);
    if (below(2) == 0) packet.resize(1 + below(packet.size()));
    return packet;
}

// tshark itself fails the test when the dissector does.
TEST_F(dissector, survives_spoilt_messages) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const std::string path = recorded().directory.file("spoilt.pcapng");
    {
        made_capture spoilt(path, recorded().path);
        for (const capture_test::packet &packet : capture_test::read_capture(recorded().path).packets) {
            if (packet.bytes.size() > 8000) continue;
            for (int times = 0; times < 8; ++times) spoilt.add(spoil(packet.bytes, random));
        }
    }
    const std::string text = tshark(path, {"-2", "-V"});
    for (const char *const told : {"(Error/Malformed)", "Not all of the message was captured"})
        EXPECT_NE(text.find(told), std::string::npos) << told;
}

std::string network_word(uint32_t number) {
    const uint32_t wire = htonl(number);
    return {reinterpret_cast<const char *>(&wire), sizeof wire};
}

// Every type, known or not, with numbers that its layout explains and others.
TEST_F(dissector, names_interfaces_as_the_platform_does) {
    std::vector<if_index_t> indexes;
    for (uint32_t type = 0; type < 256; ++type) {
        for (const uint32_t number : {0x000001u, 0x083000u, 0x001007u, 0x0c7fffu, 0x400abcu, 0xffffffu, 0x00ffffu})
            indexes.push_back(type << 24 | number);
    }
    const std::string path = recorded().directory.file("interfaces.pcapng");
    {
        std::string payload = network_word(0) + network_word(static_cast<uint32_t>(indexes.size()));
        for (const if_index_t index : indexes) payload += network_word(index);
        made_capture made(path, recorded().path);
        for (const capture_test::packet &packet : capture_test::read_capture(recorded().path).packets) {
            if (packet.opcode != MTS_OPC_PM_GET_IF_INDEX_LISTING || packet.kind != 2) continue;
            std::string record = packet.bytes.substr(0, 64);
            made.add(record.replace(28, 4, network_word(static_cast<uint32_t>(payload.size()))) + payload);
            break;
        }
    }
    const auto decoded = decode(path);
    ASSERT_EQ(decoded.size(), 1u);
    std::vector<std::string> names;
    for (const if_index_t index : indexes) names.push_back(name_of(index));
    EXPECT_EQ(values_of(decoded[0], "port_mgr.interface"), names);
}

TEST_F(dissector, tells_of_missing_pieces) {
    const std::string path = recorded().directory.file("pieces.pcapng");
    {
        made_capture made(path, recorded().path);
        for (const capture_test::packet &packet : capture_test::read_capture(recorded().path).packets) {
            if (packet.opcode != MTS_OPC_PM_GET_PORT_INFO_BRIEF || packet.kind != 2) continue;
            const auto half = static_cast<uint32_t>(packet.piece.size() / 2);
            made.add(packet.bytes.substr(0, 32) + network_word(half) + packet.bytes.substr(36, 28) +
                     packet.piece.substr(half));
        }
    }
    const auto decoded = decode(path, {"-2"});
    ASSERT_FALSE(decoded.empty());
    for (const json &packet : decoded) {
        EXPECT_THAT(packet.dump(), HasSubstr("The pieces before this one were not captured"));
        EXPECT_EQ(values_of(packet, "port_mgr.payload").size(), 1u);
    }
}

// A message of a client, or for it, that goes to no service in particular.
std::string message(uint8_t kind, uint32_t opcode, const std::string &payload) {
    std::string record{1, static_cast<char>(kind), 1, 64};
    const auto size = static_cast<uint32_t>(payload.size());
    for (const uint32_t word : {0u, 0u, opcode, 1u, 1u, 0u, size}) record += network_word(word);
    record.resize(64);
    return record + payload;
}

TEST_F(dissector, shows_texts_that_do_not_fill_their_room) {
    const std::string path = recorded().directory.file("texts.pcapng");
    {
        made_capture made(path, recorded().path);
        const std::string one_range = std::string{0, 1} + network_word(0x01000000) + network_word(0x01000000);
        made.add(message(3, CMI_OPC_PM_SET_PORT_CONFIG,
                         std::string(100, '\0') + one_range + std::string{PM_ATTR_DESCRIPTION, 2} + "up"));
    }
    const auto decoded = decode(path);
    ASSERT_EQ(decoded.size(), 1u);
    EXPECT_EQ(value_of(decoded[0], "port_mgr.config.description"), "up");
}

// The array ends where the dissector would stop to show it.
TEST_F(dissector, misses_elements_behind_the_last_one_that_it_shows) {
    constexpr uint32_t shown = 40'000;
    constexpr uint32_t mark = 0x544c5631;
    const std::string unknown_and_empty{'\xff', '\xff', 0, 0};
    std::string payload = network_word(0) + network_word(0);
    for (const uint32_t word : {mark, shown + 1, shown * 4}) payload += network_word(word);
    for (uint32_t element = 0; element < shown; ++element) payload += unknown_and_empty;
    const std::string path = recorded().directory.file("elements.pcapng");
    {
        made_capture made(path, recorded().path);
        made.add(message(2, MTS_OPC_PM_GET_PORT_INFO, payload));
    }
    EXPECT_EQ(tshark(path, {"-T", "fields", "-e", "_ws.expert.message"}), "40000 of 40001 elements\n");
}

TEST_F(dissector, shows_short_messages_as_far_as_they_go) {
    const std::string path = recorded().directory.file("short.pcapng");
    {
        made_capture cut(path, recorded().path);
        for (capture_test::packet packet : capture_test::read_capture(recorded().path).packets) {
            if (packet.opcode != MTS_OPC_PM_GET_NEXT_PORT_INFO || packet.kind != 2) continue;
            constexpr uint8_t left = 8 + 100;
            packet.bytes.resize(64 + left);
            packet.bytes.replace(28, 4, std::string{0, 0, 0, left});
            cut.add(packet.bytes);
        }
    }
    const auto decoded = decode(path);
    ASSERT_EQ(decoded.size(), 2u);
    for (const json &packet : decoded) {
        EXPECT_EQ(value_of(packet, "port_mgr.interface"), "fc1/1");
        EXPECT_EQ(values_of(packet, "port_mgr.port_info.oper_mode").size(), 1u);
        EXPECT_THAT(values_of(packet, "port_mgr.port_info.port_vsan"), IsEmpty());
        EXPECT_THAT(packet.dump(), HasSubstr("100 of the 189 bytes of port_info"));
    }
}

}  // namespace
}  // namespace dissector_test
