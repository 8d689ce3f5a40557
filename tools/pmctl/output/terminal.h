// SPDX-License-Identifier: Apache-2.0
#ifndef PMCTL_OUTPUT_TERMINAL_H
#define PMCTL_OUTPUT_TERMINAL_H

#include <string_view>

namespace pmctl {

// What the text is made for. As it is here: a file or a pipe.
struct terminal {
    bool colour = false;
    unsigned width = 0;    // columns; 0: unlimited
    unsigned height = 0;   // lines of a screen that can be drawn anew in its place; 0: no such screen
    unsigned columns = 0;  // of that screen, whatever `width` was asked for; 0: unknown
};

// What this descriptor leads to, in this environment; `colour_option` is the word of --color, or empty.
terminal terminal_at(int descriptor, std::string_view colour_option);

}  // namespace pmctl

#endif
