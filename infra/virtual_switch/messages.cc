// SPDX-License-Identifier: Apache-2.0
#include "messages.h"

#include <poll.h>
#include <unistd.h>

#include <cstdio>

#include "program_name.h"

namespace virtual_switch {

void say(const std::string &message) {
    pollfd writable{STDERR_FILENO, POLLOUT, 0};
    if (poll(&writable, 1, 0) == 1) std::fprintf(stderr, "%s: %s\n", program_name, message.c_str());
}

}  // namespace virtual_switch
