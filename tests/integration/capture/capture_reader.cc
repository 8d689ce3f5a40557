// SPDX-License-Identifier: Apache-2.0
#include "capture_reader.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>

namespace capture_test {
namespace {

// Takes bytes from the front; throws when there are too few.
class byte_taker {
  public:
    explicit byte_taker(std::string_view bytes) : rest_(bytes) {}

    [[nodiscard]] bool is_empty() const { return rest_.empty(); }
    std::string_view take(size_t size) {
        if (size > rest_.size()) throw std::runtime_error("the bytes end in a field");
        const std::string_view taken = rest_.substr(0, size);
        rest_.remove_prefix(size);
        return taken;
    }
    template <typename number_t>
    number_t take_number() {
        number_t number;
        std::memcpy(&number, take(sizeof number).data(), sizeof number);
        return number;
    }
    uint32_t word() { return take_number<uint32_t>(); }
    uint32_t network_word() { return ntohl(word()); }

  private:
    std::string_view rest_;
};

void expect(bool condition, const char *what) {
    if (!condition) throw std::runtime_error(what);
}

using option_map = std::map<uint16_t, std::string>;

option_map take_options(byte_taker &from) {
    option_map options;
    for (;;) {
        const auto code = from.take_number<uint16_t>();
        const auto length = from.take_number<uint16_t>();
        if (code == 0) {
            expect(length == 0 && from.is_empty(), "the options end at the end of the block");
            return options;
        }
        options[code] = from.take(length);
        const std::string_view padding = from.take((4 - length % 4) % 4);
        expect(padding.find_first_not_of('\0') == std::string_view::npos, "zeros pad an option");
    }
}

// The block without its lengths.
byte_taker take_block(byte_taker &from, uint32_t &type) {
    type = from.word();
    const uint32_t length = from.word();
    expect(length % 4 == 0 && length >= 12, "a block is a number of words");
    const byte_taker body(from.take(length - 12));
    expect(from.word() == length, "a block's lengths are the same");
    return body;
}

void read_section(byte_taker body) {
    expect(body.word() == 0x1a2b3c4d, "the mark of the byte order");
    expect(body.take_number<uint16_t>() == 1 && body.take_number<uint16_t>() == 0, "version 1.0");
    expect(body.take_number<uint64_t>() == UINT64_MAX, "a section of unknown length");
    expect(take_options(body)[4] == "libmts", "the application");
}

std::string read_interface(byte_taker body) {
    expect(body.take_number<uint16_t>() == 147, "link type USER0");
    expect(body.take_number<uint16_t>() == 0 && body.word() == 0, "no limit");
    option_map options = take_options(body);
    expect(options[9] == std::string(1, 9), "nanoseconds");
    return options[2];
}

void read_record(byte_taker &from, packet &to) {
    expect(from.take_number<uint8_t>() == 1, "version of the record");
    to.kind = from.take_number<uint8_t>();
    to.flags = from.take_number<uint8_t>();
    expect(from.take_number<uint8_t>() == 64, "size of the record");
    for (uint32_t *const word : {&to.node, &to.sap, &to.opcode, &to.token, &to.message_id, &to.cmi_word,
                                 &to.payload_size, &to.payload_offset, &to.connection, &to.process})
        *word = from.network_word();
    const std::string_view name = from.take(20);
    to.process_name = name.substr(0, name.find('\0'));
}

packet read_packet(byte_taker body) {
    packet read{};
    expect(body.word() == 0, "the section's only interface");
    const uint64_t high = body.word();
    read.nanoseconds = high << 32 | body.word();
    const uint32_t length = body.word();
    expect(body.word() == length && length <= 262144, "packets are whole, and no larger than readers take");
    read.bytes = body.take(length);
    byte_taker data(read.bytes);
    const std::string_view padding = body.take((4 - length % 4) % 4);
    expect(padding.find_first_not_of('\0') == std::string_view::npos, "zeros pad a packet");
    read_record(data, read);
    read.piece = data.take(length - 64);
    const std::string flags = take_options(body)[2];
    expect(flags.size() == sizeof read.direction, "flags");
    std::memcpy(&read.direction, flags.data(), sizeof read.direction);
    return read;
}

void read_blocks(std::string_view bytes, capture &to) {
    byte_taker rest(bytes);
    std::string process;
    while (!rest.is_empty()) {
        uint32_t type = 0;
        const byte_taker body = take_block(rest, type);
        if (type == 0x0a0d0d0a) {
            read_section(body);
            process.clear();
            ++to.sections;
        } else if (type == 1) {
            expect(process.empty() && to.sections > 0, "one interface in a section");
            process = read_interface(body);
        } else {
            expect(type == 6 && !process.empty(), "packets behind an interface");
            to.packets.push_back(read_packet(body));
            to.packets.back().section_process = process;
        }
    }
}

}  // namespace

capture read_capture(const std::string &path) {
    capture read;
    const std::string bytes = bytes_of(path);
    try {
        read_blocks(bytes, read);
    } catch (const std::runtime_error &wrong) {
        ADD_FAILURE() << path << ", packet " << read.packets.size() << ": " << wrong.what();
    }
    return read;
}

std::string bytes_of(const std::string &path) {
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return bytes.str();
}

}  // namespace capture_test
