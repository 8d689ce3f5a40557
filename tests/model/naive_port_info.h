// SPDX-License-Identifier: Apache-2.0
// naive_port_info.h: what answers about ports mean, byte by byte.
#ifndef MODEL_NAIVE_PORT_INFO_H
#define MODEL_NAIVE_PORT_INFO_H

#include "answer.h"
#include "outcome.h"

namespace model {

using full_outcome = outcome<pm_port_info_t>;
using brief_outcome = outcome<pm_port_info_brief_t>;
using set_outcome = outcome<pm_set_port_result_t>;

// Answers with port records, and behind how many bytes their elements lie.
full_outcome full_records(const answer &from);
full_outcome full_message(const answer &from, const answer_message &in);
full_outcome configuration(const cmi_result &result);
full_outcome module_listing(const cmi_result &result);
size_t elements_offset(const support::bytes &payload);

// The answer with the record of one port.
full_outcome next_message(const answer &from, const answer_message &in);

// Answers with brief records; the payload alone is believed to hold what it says.
brief_outcome brief_records(const support::bytes &payload);
brief_outcome brief_message(const answer &from, const answer_message &in);

// Answers with what became of interfaces; the payload alone is believed to hold what it says.
set_outcome set_results(const std::optional<support::bytes> &payload);
set_outcome set_configuration(const cmi_result &result);

}  // namespace model

#endif
