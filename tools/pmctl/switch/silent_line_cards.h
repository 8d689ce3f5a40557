// SPDX-License-Identifier: Apache-2.0
#ifndef PMCTL_SWITCH_SILENT_LINE_CARDS_H
#define PMCTL_SWITCH_SILENT_LINE_CARDS_H

#include <cstdint>
#include <map>
#include <optional>

#include "port_mgr/types.h"

namespace pmctl {

// Line cards that let a question time out. They are asked no more, so that a card that hangs is waited for once and not
// once a port.
class silent_line_cards {
  public:
    // The line card of this interface did not answer.
    void note(if_index_t index);

    // The interface in the question that the line card of this one did not answer, or nothing.
    [[nodiscard]] std::optional<if_index_t> asked_in_vain(if_index_t index) const;

  private:
    std::map<uint32_t, if_index_t> questions_;  // by the node
};

}  // namespace pmctl

#endif
