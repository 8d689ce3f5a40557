// SPDX-License-Identifier: Apache-2.0
// fake_tlv_array.h: the platform's reading of element arrays: any address is an array of the elements set here.
#ifndef SUPPORT_FAKE_TLV_ARRAY_H
#define SUPPORT_FAKE_TLV_ARRAY_H

#include <memory>

#include "guarded_bytes.h"

namespace support {

class fake_tlv_array {
  public:
    fake_tlv_array();
    ~fake_tlv_array();
    fake_tlv_array(const fake_tlv_array &) = delete;
    fake_tlv_array &operator=(const fake_tlv_array &) = delete;

    // The next element.
    void add(uint16_t type, const bytes &value, uint16_t length);
    // The same, as long as its value is.
    void add(uint16_t type, const bytes &value);
    // Reading the next element fails with this code.
    void add_failure(uint32_t error);
    void clear() { elements_.clear(); }

    // In the log, addresses are told as distances from here.
    void set_origin(const void *origin) { origin_ = static_cast<const uint8_t *>(origin); }

    [[nodiscard]] size_t count() const { return elements_.size(); }
    [[nodiscard]] const uint8_t *origin() const { return origin_; }

    struct element {
        uint32_t error;
        uint16_t type;
        uint16_t length;
        std::unique_ptr<guarded_bytes> value;
    };
    [[nodiscard]] const element &at(uint32_t position) const { return elements_.at(position); }

  private:
    std::vector<element> elements_;
    const uint8_t *origin_ = nullptr;
};

}  // namespace support

#endif
