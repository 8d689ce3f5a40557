// SPDX-License-Identifier: Apache-2.0
// Transceivers for people.
#ifndef PMCTL_OUTPUT_TRANSCEIVER_VIEW_H
#define PMCTL_OUTPUT_TRANSCEIVER_VIEW_H

#include "output/view.h"
#include "switch/transceivers.h"

namespace pmctl {

// A table with a line for each port. Readings beyond a threshold have '!' (warning) or "!!" (alarm) behind them.
sheet transceiver_table(const std::vector<transceiver_port> &ports);

// A list for each port with everything, thresholds included.
std::vector<sheet> transceiver_lists(const std::vector<transceiver_port> &ports);

}  // namespace pmctl

#endif
