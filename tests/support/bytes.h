// SPDX-License-Identifier: Apache-2.0
// bytes.h: builds payloads and shows them as text.
#ifndef SUPPORT_BYTES_H
#define SUPPORT_BYTES_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace support {

using bytes = std::vector<uint8_t>;

// Two digits a byte, nothing between them.
std::string hex(const void *from, size_t size);
std::string hex(const bytes &from);

// A payload, field by field; numbers go out in network order.
class payload {
  public:
    payload &u8(uint8_t value);
    payload &be16(uint16_t value);
    payload &be32(uint32_t value);
    payload &fill(size_t count, uint8_t value);
    payload &append(const bytes &more);

    [[nodiscard]] const bytes &data() const { return data_; }
    operator const bytes &() const { return data_; }

  private:
    bytes data_;
};

}  // namespace support

#endif
