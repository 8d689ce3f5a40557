// SPDX-License-Identifier: Apache-2.0
#ifndef PMCTL_OUTPUT_TERMINAL_H
#define PMCTL_OUTPUT_TERMINAL_H

namespace pmctl {

// What the text is made for. As it is here: a file or a pipe.
struct terminal {
    bool colour = false;
    unsigned width = 0;  // columns; 0: unlimited
};

}  // namespace pmctl

#endif
