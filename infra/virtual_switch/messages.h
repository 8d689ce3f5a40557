// SPDX-License-Identifier: Apache-2.0
// messages.h: what the switch says on standard error while it serves.
#ifndef VIRTUAL_SWITCH_MESSAGES_H
#define VIRTUAL_SWITCH_MESSAGES_H

#include <string>

namespace virtual_switch {

// Prints a line that starts with the program's name. When whoever reads them does not keep up, it is lost: the switch
// waits for nobody.
void say(const std::string &message);

}  // namespace virtual_switch

#endif
