// SPDX-License-Identifier: Apache-2.0
// Ranges of interfaces, counted and stepped through.
#ifndef PMCTL_SWITCH_INTERFACE_RANGES_H
#define PMCTL_SWITCH_INTERFACE_RANGES_H

#include <cstdint>
#include <string>
#include <vector>

#include "platform/types.h"

namespace pmctl {

// A range, both ends included, and the text that named it. A single interface is a range of one, whatever its kind.
class interface_range {
  public:
    // Throws usage_error, which says why, when it cannot be told what lies between the ends.
    interface_range(std::string text, if_index_t first, if_index_t last);

    [[nodiscard]] const std::string &text() const { return text_; }
    [[nodiscard]] if_index_t first() const { return first_; }
    [[nodiscard]] if_index_t last() const { return last_; }
    [[nodiscard]] uint32_t count() const { return count_; }

    // The interface at an offset below the count.
    [[nodiscard]] if_index_t member(uint32_t offset) const;

  private:
    std::string text_;
    if_index_t first_;
    if_index_t last_;
    uint32_t count_;
    uint32_t spacing_;  // from member to member; 0: the library steps
};

// Every interface of the ranges, in their order.
std::vector<if_index_t> members_of(const std::vector<interface_range> &ranges);

}  // namespace pmctl

#endif
