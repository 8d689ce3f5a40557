// SPDX-License-Identifier: Apache-2.0
// capture_reader.h: reads a capture block by block and holds each to the form.
#ifndef TESTS_CAPTURE_CAPTURE_READER_H
#define TESTS_CAPTURE_CAPTURE_READER_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace capture_test {

enum direction : uint32_t { inbound = 1, outbound = 2 };

// One packet: what its blocks say, and the record in front of its piece of a payload.
struct packet {
    std::string section_process;  // "NAME[PID]"
    uint64_t nanoseconds;
    uint32_t direction;
    uint8_t kind;
    uint8_t flags;
    uint32_t node;
    uint32_t sap;
    uint32_t opcode;
    uint32_t token;
    uint32_t message_id;
    uint32_t cmi_word;
    uint32_t payload_size;
    uint32_t payload_offset;
    uint32_t connection;
    uint32_t process;
    std::string process_name;
    std::string piece;
    std::string bytes;  // the record and the piece
};

struct capture {
    size_t sections = 0;
    std::vector<packet> packets;
};

// Fails the test at the first byte that is not as the form says, and returns what came before.
capture read_capture(const std::string &path);

std::string bytes_of(const std::string &path);

}  // namespace capture_test

#endif
