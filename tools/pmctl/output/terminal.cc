// SPDX-License-Identifier: Apache-2.0
#include "output/terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <charconv>
#include <cstdlib>

namespace pmctl {
namespace {

constexpr unsigned usual_height = 24;

std::string_view variable(const char *name) {
    const char *value = getenv(name);
    return value == nullptr ? "" : value;
}

// $COLUMNS when it is a positive number, else 0.
unsigned width_of_environment() {
    const std::string_view text = variable("COLUMNS");
    unsigned width = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), width);
    return error == std::errc{} && end == text.data() + text.size() ? width : 0;
}

bool wants_colour(std::string_view option, bool is_screen) {
    if (option == "always") return true;
    if (option == "never") return false;
    return is_screen && variable("NO_COLOR").empty();
}

}  // namespace

terminal terminal_at(int descriptor, std::string_view colour_option) {
    const bool is_terminal = isatty(descriptor) == 1;
    const bool is_screen = is_terminal && variable("TERM") != "dumb";
    terminal found{wants_colour(colour_option, is_screen)};
    if (!is_terminal) return found;
    winsize size{};
    ioctl(descriptor, TIOCGWINSZ, &size);
    const unsigned typed = width_of_environment();
    found.width = typed > 0 ? typed : size.ws_col;
    if (!is_screen) return found;
    found.height = size.ws_row > 0 ? size.ws_row : usual_height;
    found.columns = size.ws_col;
    return found;
}

}  // namespace pmctl
