// SPDX-License-Identifier: Apache-2.0
// random_answer.h: answers as services give them, well-formed but for what a function's name says.
#ifndef MODEL_RANDOM_ANSWER_H
#define MODEL_RANDOM_ANSWER_H

#include "answer.h"
#include "random_source.h"

namespace model {

// A status, a count, and as many records of this size, of random bytes.
support::bytes random_records(random_source &source, size_t record_size);

// An answer about ports with their elements: known and unknown ones, of these ports and of others, some repeated, some
// with a length of another kind, some that cannot be read.
answer random_full_answer(random_source &source);
answer random_next_answer(random_source &source);

// Makes an answer say something that it does not hold: cut short, another count, another status, no payload at all.
void spoil(random_source &source, std::optional<support::bytes> &payload);

// A message that brings an answer of this opcode, most often as it should.
answer_message random_message(random_source &source, uint32_t opcode);

// What CMI makes of a request that this answers, most often as it should.
cmi_result random_result(random_source &source, const answer &what);

}  // namespace model

#endif
