// SPDX-License-Identifier: Apache-2.0
// our_answer.h: ports as an answer of the port manager, parsed by the library into an array that its caller frees.
#ifndef BENCH_DECODE_OUR_ANSWER_H
#define BENCH_DECODE_OUR_ANSWER_H

#include <cstdlib>

#include "bench/decode/port_list.h"

namespace bench {

class our_answer {
  public:
    explicit our_answer(const port_list &ports);
    our_answer(const our_answer &) = delete;
    our_answer &operator=(const our_answer &) = delete;
    ~our_answer() { std::free(records_); }

    void decode();
    [[nodiscard]] port_list ports() const { return {records_, records_ + count_}; }
    [[nodiscard]] size_t size() const { return size_; }
    [[nodiscard]] const bytes &payload() const { return payload_; }

  private:
    bytes payload_;  // with the zeroed bytes that the transport leaves behind it
    size_t size_;    // without them
    uint32_t count_ = 0;
    pm_port_info_t *records_ = nullptr;
};

// The base record of a port, and an array of `elements` attributes of it, as they travel.
bytes encode_base_record(const pm_port_info_t &port);
bytes encode_elements(const pm_port_info_t &port, size_t elements);

}  // namespace bench

#endif
