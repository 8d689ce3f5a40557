// SPDX-License-Identifier: Apache-2.0
#include "bytes.h"

namespace support {

std::string hex(const void *from, size_t size) {
    constexpr char digits[] = "0123456789abcdef";
    const auto *const data = static_cast<const uint8_t *>(from);
    std::string text;
    text.reserve(2 * size);
    for (size_t i = 0; i < size; ++i) {
        text += digits[data[i] >> 4];
        text += digits[data[i] & 15];
    }
    return text;
}

std::string hex(const bytes &from) { return hex(from.data(), from.size()); }

payload &payload::u8(uint8_t value) {
    data_.push_back(value);
    return *this;
}

payload &payload::be16(uint16_t value) { return u8(static_cast<uint8_t>(value >> 8)).u8(static_cast<uint8_t>(value)); }

payload &payload::be32(uint32_t value) {
    return be16(static_cast<uint16_t>(value >> 16)).be16(static_cast<uint16_t>(value));
}

payload &payload::fill(size_t count, uint8_t value) {
    data_.insert(data_.end(), count, value);
    return *this;
}

payload &payload::append(const bytes &more) {
    data_.insert(data_.end(), more.begin(), more.end());
    return *this;
}

}  // namespace support
