// SPDX-License-Identifier: Apache-2.0
#include "services/refusal_log.h"

#include "messages.h"

namespace virtual_switch {

void refusal_log::add(const std::string &refusal, clock::time_point now) {
    if (now >= period_end_) {
        if (unsaid_ > 0) say("configuration refused: " + std::to_string(unsaid_) + " more times");
        period_end_ = now + period;
        said_ = 0;
        unsaid_ = 0;
    }
    if (said_ < most_in_period) {
        ++said_;
        say("configuration refused: " + refusal);
    } else {
        ++unsaid_;
    }
}

}  // namespace virtual_switch
