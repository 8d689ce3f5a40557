// SPDX-License-Identifier: Apache-2.0
// pseudo_terminal.h: a screen for the programs that a test runs.
#ifndef TESTS_INTEGRATION_PMCTL_PSEUDO_TERMINAL_H
#define TESTS_INTEGRATION_PMCTL_PSEUDO_TERMINAL_H

#include <string>

class pseudo_terminal {
  public:
    // Some build machines have none (no /dev/pts).
    static bool exists_here();

    pseudo_terminal(unsigned short lines, unsigned short columns);
    ~pseudo_terminal();
    pseudo_terminal(const pseudo_terminal &) = delete;
    pseudo_terminal &operator=(const pseudo_terminal &) = delete;

    // Where programs open it.
    [[nodiscard]] const std::string &path() const { return path_; }

    // What was written, with plain line ends, up to the first `end`; or what came within ten seconds.
    std::string read_to(const std::string &end);

    // What was written and not read yet.
    std::string read_what_is_there();

    void resize(unsigned short lines, unsigned short columns);

  private:
    // Returns false when nothing came in this time.
    bool read_more(int milliseconds);

    int master_;
    int screen_;
    std::string path_;
    std::string unread_;
};

#endif
