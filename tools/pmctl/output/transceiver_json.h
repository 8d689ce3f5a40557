// SPDX-License-Identifier: Apache-2.0
#ifndef PMCTL_OUTPUT_TRANSCEIVER_JSON_H
#define PMCTL_OUTPUT_TRANSCEIVER_JSON_H

#include <string>
#include <vector>

#include "switch/transceivers.h"

namespace pmctl {

// An object for each port; what a port, or the transceiver in it, does not have is null.
std::string transceiver_json(const std::vector<transceiver_port> &ports);

}  // namespace pmctl

#endif
