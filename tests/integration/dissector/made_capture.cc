// SPDX-License-Identifier: Apache-2.0
#include "made_capture.h"

#include <cstring>

#include "integration/capture/capture_reader.h"

namespace dissector_test {
namespace {

uint32_t word_at(const std::string &bytes, size_t at) {
    uint32_t word = 0;
    std::memcpy(&word, &bytes.at(at), sizeof word);
    return word;
}

}  // namespace

made_capture::made_capture(const std::string &path, const std::string &like) : file_(path, std::ios::binary) {
    const std::string bytes = capture_test::bytes_of(like);
    size_t size = 0;
    for (int block = 0; block < 2; ++block) size += word_at(bytes, size + sizeof(uint32_t));
    file_ << bytes.substr(0, size);
}

void made_capture::add(std::string packet) {
    const auto size = static_cast<uint32_t>(packet.size());
    packet.resize((packet.size() + 3) / 4 * 4);
    const auto length = static_cast<uint32_t>(packet.size() + 32);
    for (const uint32_t word : {6u, length, 0u, 0u, 0u, size, size}) put(word);
    file_ << packet;
    put(length);
}

void made_capture::put(uint32_t word) { file_.write(reinterpret_cast<const char *>(&word), sizeof word); }

}  // namespace dissector_test
