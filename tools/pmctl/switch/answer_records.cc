// SPDX-License-Identifier: Apache-2.0
#include "switch/answer_records.h"

#include <arpa/inet.h>

#include <cstring>

#include <fmt/core.h>

#include "failure.h"
#include "switch/switch_connection.h"

namespace pmctl {
namespace {

constexpr size_t header_size = 2 * sizeof(uint32_t);

std::span<const std::byte> payload_of(const mts_msg_t &answer) {
    const auto *payload = static_cast<const std::byte *>(mts_payload_get(&answer));
    return {payload, payload == nullptr ? 0 : mts_payload_size(&answer)};
}

// The word at a position, counted in words; 0 where there is none.
uint32_t word_at(std::span<const std::byte> payload, size_t position) {
    uint32_t word = 0;
    if (payload.size() < (position + 1) * sizeof word) return 0;
    std::memcpy(&word, payload.data() + position * sizeof word, sizeof word);
    return ntohl(word);
}

}  // namespace

uint32_t answer_status(const mts_msg_t &answer) { return word_at(payload_of(answer), 0); }

std::span<const std::byte> answer_records(const std::string &subject, const mts_msg_t &answer, size_t record_size) {
    const std::span<const std::byte> payload = payload_of(answer);
    switch_connection::check_answer(subject, answer_status(answer));
    const uint32_t count = word_at(payload, 1);
    if (payload.size() < header_size || count > (payload.size() - header_size) / record_size)
        throw query_refused(fmt::format("{}: the answer cannot be understood", subject));
    return payload.subspan(header_size, count * record_size);
}

}  // namespace pmctl
