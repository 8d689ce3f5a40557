// SPDX-License-Identifier: Apache-2.0
// answer.h: what a service answers: a payload, and the attribute elements that the platform reads behind it.
#ifndef MODEL_ANSWER_H
#define MODEL_ANSWER_H

#include <optional>
#include <vector>

#include "bytes.h"

namespace model {

struct element {
    uint32_t error = 0;  // not 0: what reading it fails with, and nothing else of it is known
    uint16_t type = 0;
    uint16_t length = 0;  // what it says, whatever its value has
    support::bytes value = {};
};

struct answer {
    std::optional<support::bytes> payload;
    std::vector<element> elements = {};
};

// A message that brings an answer.
struct answer_message {
    uint32_t opcode;
    bool is_response;
};

// What CMI makes of a request: its own status, and an answer or none.
struct cmi_result {
    uint32_t status;
    answer what;
};

}  // namespace model

#endif
