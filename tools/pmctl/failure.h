// SPDX-License-Identifier: Apache-2.0
// What goes wrong in a command. The text of each is one line that names what was wrong.
#ifndef PMCTL_FAILURE_H
#define PMCTL_FAILURE_H

#include <stdexcept>
#include <string>
#include <vector>

namespace pmctl {

// A word as messages name it: in quotes when it is empty or has blanks.
std::string shown_word(const std::string &word);

// The command line was wrong.
class usage_error : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The same, several times: a line each.
class usage_errors : public usage_error {
  public:
    explicit usage_errors(std::vector<std::string> lines);

    [[nodiscard]] const std::vector<std::string> &lines() const { return lines_; }

  private:
    std::vector<std::string> lines_;
};

// The same: a word is no name of an interface. Another may have been meant.
class unknown_name : public usage_error {
  public:
    explicit unknown_name(std::string name);

    [[nodiscard]] const std::string &name() const { return name_; }

  private:
    std::string name_;
};

// The switch cannot be asked at all; asking on is of no use.
class switch_unavailable : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The switch said no to one question; others may still be answered.
class query_refused : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

}  // namespace pmctl

#endif
