// SPDX-License-Identifier: Apache-2.0
// man_in_the_middle.h: stands between the clients of a run-time directory and the switch that serves there, passes on
// what both say, and spoils the answers that a test names.
#ifndef TESTS_INTEGRATION_FAULTS_MAN_IN_THE_MIDDLE_H
#define TESTS_INTEGRATION_FAULTS_MAN_IN_THE_MIDDLE_H

#include <sys/types.h>

#include <cstdint>
#include <string>

#include "misdeed.h"

namespace faults {

struct orders;

// A process of its own, so that nothing of it is counted with the client's.
class man_in_the_middle {
  public:
    // Takes the place of every service that listens in the directory.
    explicit man_in_the_middle(const std::string &directory);
    ~man_in_the_middle();
    man_in_the_middle(const man_in_the_middle &) = delete;
    man_in_the_middle &operator=(const man_in_the_middle &) = delete;

    // Commits the misdeed on the next answer to a request of this opcode.
    void spoil(uint32_t opcode, const misdeed &spoilt);

    // How often it did, and closed the connection where that belongs to it.
    [[nodiscard]] uint32_t committed() const;

    // The payload of the last answer that the switch gave, as far as the first two words, and its size.
    [[nodiscard]] uint32_t answer_size() const;
    [[nodiscard]] uint32_t answer_word(size_t index) const;

    // The service that gave it.
    [[nodiscard]] uint32_t answer_sap() const;

  private:
    orders *orders_;
    pid_t pid_;
};

}  // namespace faults

#endif
