// SPDX-License-Identifier: Apache-2.0
#ifndef PMCTL_COMMAND_LINE_COMPLETION_H
#define PMCTL_COMMAND_LINE_COMPLETION_H

#include <functional>
#include <string>
#include <vector>

namespace pmctl {

// What the last word may become after those before it, which follow the program's name. `interface_names` is asked
// only where the name of an interface may stand.
std::vector<std::string> completions(const std::vector<std::string> &words,
                                     const std::function<std::vector<std::string>()> &interface_names);

}  // namespace pmctl

#endif
