// SPDX-License-Identifier: Apache-2.0
// The transceivers of ports, as the port manager and the line cards know them.
#ifndef PMCTL_SWITCH_TRANSCEIVERS_H
#define PMCTL_SWITCH_TRANSCEIVERS_H

#include <optional>
#include <vector>

#include "platform/types.h"
#include "sff8472/diagnostics.h"
#include "sff8472/identification.h"
#include "switch/silent_line_cards.h"
#include "switch/switch_connection.h"

namespace pmctl {

// The diagnostics of a transceiver, calibrated.
struct transceiver_diagnostics {
    sff8472::readings values;
    sff8472::raised_flags raised;
    bool is_externally_calibrated;
    bool are_of_line_card;             // else of the port manager
    std::optional<uint64_t> age = {};  // milliseconds since the line card began to read the transceiver
};

struct transceiver {
    sff8472::identification identity;
    std::vector<sff8472::reach> reaches;
    std::optional<transceiver_diagnostics> diagnostics;
};

// A port, and the transceiver in it if there is one.
struct transceiver_port {
    if_index_t if_index;
    bool takes_one;
    std::optional<transceiver> plugged_in = {};
};

// Whether an interface takes a transceiver; it follows from its kind.
bool takes_transceiver(if_index_t index);

class transceiver_client {
  public:
    // These interfaces, which exist, in their order. What went wrong is noted, one line each, and its interfaces are
    // left out. Throws switch_unavailable.
    std::vector<transceiver_port> ports(const std::vector<if_index_t> &interfaces, std::vector<std::string> &failures);

    // The diagnostics of this moment from the line card of a port, or nothing when it does not tell. Throws
    // switch_unavailable when a signal interrupted the question.
    std::optional<transceiver_diagnostics> line_card_diagnostics(if_index_t index);

  private:
    switch_connection connection_;
    silent_line_cards silent_;
};

}  // namespace pmctl

#endif
