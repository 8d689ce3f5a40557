// SPDX-License-Identifier: Apache-2.0
// What a status of the library means, in words.
#ifndef PMCTL_SWITCH_STATUS_WORDS_H
#define PMCTL_SWITCH_STATUS_WORDS_H

#include <cstdint>
#include <string>

namespace pmctl {

// Where a status came from: small numbers of a request are the transport's error numbers, those of an answer the
// service's own.
enum class status_source { request, answer };

// For example "Connection timed out" or "PM_ERR_REJECTED (0x40290009)".
std::string status_words(status_source source, uint32_t status);

// Whether the status of a request that waited for its answer is the transport's, or tells that memory ran out.
bool is_transport_error(uint32_t status);

}  // namespace pmctl

#endif
