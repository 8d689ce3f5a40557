// SPDX-License-Identifier: Apache-2.0
// misdeed.h: what a service may do with an answer instead of sending it.
#ifndef TESTS_INTEGRATION_FAULTS_MISDEED_H
#define TESTS_INTEGRATION_FAULTS_MISDEED_H

#include <cstdint>
#include <span>
#include <string>

#include "integration/transport/raw_peer.h"

namespace faults {

// An answer of the switch. Its payload is here wherever it travels.
struct answer_frame {
    transport_test::raw_header header;
    std::string payload;
};

// What happens to the connection behind a misdeed.
enum class afterwards { goes_on, closes, answers_late };

// What a client is to learn.
enum class outcome {
    good,            // a good answer
    times_out,       // nothing within its wait
    protocol_error,  // something that is no answer
    reset,           // the end of the connection
    cut,             // an answer of fewer bytes: `number` of them
    longer,          // an answer of more bytes
    ones,            // an answer all of whose bits are set
    refused,         // a status of CMI: `number`
};

struct misdeed {
    const char *name;
    outcome learnt;
    afterwards (*commit)(const transport_test::raw_socket &client, const answer_frame &good, uint32_t number);
    uint32_t number = 0;
};

// All of them, for an answer with a payload of `size` bytes.
[[nodiscard]] std::vector<misdeed> misdeeds(uint32_t size);

// Sends the frame as the switch does: in a packet, or in a memory file when it is too large for one.
void send(const transport_test::raw_socket &client, const answer_frame &frame);

}  // namespace faults

#endif
