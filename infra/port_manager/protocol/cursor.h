// SPDX-License-Identifier: Apache-2.0
// cursor.h: writes and reads a payload field by field, so that an encoder or a decoder reads as the list of fields
// that it is. A cursor never passes the end of its bytes; a reader remembers when a field met it.
#ifndef PROTOCOL_CURSOR_H
#define PROTOCOL_CURSOR_H

#include <cstddef>
#include <span>

#include "protocol/byte_order.h"

namespace pm {

class byte_writer {
  public:
    explicit byte_writer(std::span<uint8_t> bytes) : rest_(bytes) {}

    void put_u8(uint8_t value) { put(value); }
    void put_be16(uint16_t value) { put(swap_be16(value)); }
    void put_be32(uint32_t value) { put(swap_be32(value)); }
    // A number that is in network order already.
    void put_wire32(uint32_t value) { put(value); }

  private:
    template <typename Number>
    void put(Number value) {
        ok_ = ok_ && rest_.size() >= sizeof value;
        if (!ok_) return;
        store(rest_.data(), value);
        rest_ = rest_.subspan(sizeof value);
    }

    std::span<uint8_t> rest_;
    bool ok_ = true;
};

class byte_reader {
  public:
    explicit byte_reader(std::span<const uint8_t> bytes) : rest_(bytes) {}

    uint8_t get_u8() { return get<uint8_t>(); }
    uint16_t get_be16() { return swap_be16(get<uint16_t>()); }
    uint32_t get_be32() { return swap_be32(get<uint32_t>()); }
    // A number that stays in network order.
    uint32_t get_wire32() { return get<uint32_t>(); }

    // What has not been read yet.
    [[nodiscard]] std::span<const uint8_t> rest() const { return rest_; }

    // Every field was there; those that were not have read as 0.
    [[nodiscard]] bool ok() const { return ok_; }

  private:
    template <typename Number>
    Number get() {
        ok_ = ok_ && rest_.size() >= sizeof(Number);
        if (!ok_) return 0;
        const Number value = load<Number>(rest_.data());
        rest_ = rest_.subspan(sizeof(Number));
        return value;
    }

    std::span<const uint8_t> rest_;
    bool ok_ = true;
};

}  // namespace pm

#endif
