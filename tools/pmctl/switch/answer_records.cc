// SPDX-License-Identifier: Apache-2.0
#include "switch/answer_records.h"

#include <arpa/inet.h>

#include <cstring>

#include <fmt/core.h>

#include "failure.h"
#include "port_mgr/cpp/status.hpp"

namespace pmctl {
namespace {

constexpr size_t header_size = 2 * sizeof(uint32_t);

// The word at a position, counted in words; 0 where there is none.
uint32_t word_at(std::span<const std::byte> payload, size_t position) {
    uint32_t word = 0;
    if (payload.size() < (position + 1) * sizeof word) return 0;
    std::memcpy(&word, payload.data() + position * sizeof word, sizeof word);
    return ntohl(word);
}

}  // namespace

uint32_t answer_status(const port_mgr::message &answer) { return word_at(answer.payload(), 0); }

std::span<const std::byte> answer_records(const std::string &subject, const port_mgr::message &answer,
                                          size_t record_size) {
    const std::span<const std::byte> payload = answer.payload();
    const port_mgr::status status(answer_status(answer), port_mgr::origin::answer);
    if (!status.ok()) throw query_refused(fmt::format("{}: {}", subject, status.words()));
    const uint32_t count = word_at(payload, 1);
    if (payload.size() < header_size || count > (payload.size() - header_size) / record_size)
        throw query_refused(fmt::format("{}: the answer cannot be understood", subject));
    return payload.subspan(header_size, count * record_size);
}

}  // namespace pmctl
