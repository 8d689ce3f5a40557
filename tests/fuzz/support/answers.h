// SPDX-License-Identifier: Apache-2.0
// answers.h: a transport that answers every request with bytes of the fuzzer's. It lies in the program itself, where
// the library's calls find it before they find libmts.
//
// A payload lies in a block of its own that ends where it does, so that the sanitizer sees every byte read behind it;
// where the library walks element arrays, which rely on it, the zeroed tail follows.
#ifndef FUZZ_SUPPORT_ANSWERS_H
#define FUZZ_SUPPORT_ANSWERS_H

#include <functional>

#include "platform/mts.h"
#include "platform_dev/tlv_builder.h"
#include "support/fuzz.h"

namespace fuzz {

inline constexpr size_t no_tail = 0;
inline constexpr size_t element_tail = TLV_ZEROED_TAIL_SIZE;

// How every request is answered from now on. An empty answer has no payload.
void answer_with(bytes payload, size_t tail);

struct request {
    uint32_t sap;
    uint32_t opcode;
    bool is_cmi;
    bytes payload;
};

// The same with an answer for each request; the bytes must stay until the next request.
void answer_by(std::function<bytes(const request &)> next, size_t tail);

// Messages that were received and not dropped.
size_t live_messages();

// A received message.
class message {
  public:
    message(uint32_t opcode, bytes payload, size_t tail);
    message(const message &) = delete;
    message &operator=(const message &) = delete;
    ~message();
    [[nodiscard]] const mts_msg_t *get() const { return &message_; }

  private:
    mts_msg_t message_;
};

// Whether the records of an answer, counted in its second word, and the elements behind them are so many that walking
// the elements once for each record takes long, which is no fault of the parser's.
bool takes_long(bytes answer, size_t record_size);

}  // namespace fuzz

#endif
