// SPDX-License-Identifier: Apache-2.0
#ifndef PMCTL_SWITCH_ANSWER_RECORDS_H
#define PMCTL_SWITCH_ANSWER_RECORDS_H

#include <cstddef>
#include <span>
#include <string>

#include "port_mgr/cpp/owners.hpp"

namespace pmctl {

// The status word of an answer; 0 where there is none.
uint32_t answer_status(const port_mgr::message &answer);

// The bytes of the records in an answer that the library leaves to its caller: a status word, the number of records,
// both in network order, and the records. They belong to the message. Throws query_refused, which names the subject,
// for another status than 0, and when the answer does not hold what it says.
std::span<const std::byte> answer_records(const std::string &subject, const port_mgr::message &answer,
                                          size_t record_size);

}  // namespace pmctl

#endif
