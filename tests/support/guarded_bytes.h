// SPDX-License-Identifier: Apache-2.0
// guarded_bytes.h: bytes with nothing readable behind them, so that an overrun ends the test.
#ifndef SUPPORT_GUARDED_BYTES_H
#define SUPPORT_GUARDED_BYTES_H

#include "bytes.h"

namespace support {

class guarded_bytes {
  public:
    explicit guarded_bytes(const bytes &content);
    ~guarded_bytes();
    guarded_bytes(const guarded_bytes &) = delete;
    guarded_bytes &operator=(const guarded_bytes &) = delete;

    [[nodiscard]] uint8_t *data() const { return data_; }
    [[nodiscard]] uint32_t size() const { return static_cast<uint32_t>(size_); }

  private:
    size_t size_;
    size_t mapped_;
    uint8_t *mapping_;
    uint8_t *data_;
};

}  // namespace support

#endif
