// SPDX-License-Identifier: Apache-2.0
// naive_transceiver.h: what answers about transceivers mean, byte by byte.
#ifndef MODEL_NAIVE_TRANSCEIVER_H
#define MODEL_NAIVE_TRANSCEIVER_H

#include "answer.h"
#include "outcome.h"

namespace model {

using fcot_outcome = outcome<pm_fcot_info_t>;

// The payload alone is believed to hold what it says.
fcot_outcome fcot_records(const support::bytes &payload);
fcot_outcome fcot_message(const std::optional<support::bytes> &payload);
fcot_outcome fcot_query(const cmi_result &result);
fcot_outcome fcot_query_with_diagnostics(const cmi_result &result);

// The readings of a line card: of both records what is written.
struct sfp_outcome {
    uint32_t status;
    pm_sfp_diag_info_t info;
    pm_sfp_diag_extra_t extra;
    std::string printed = {};
    std::vector<std::string> reporters = {};
};
sfp_outcome sfp_readings(const answer &from);

}  // namespace model

#endif
