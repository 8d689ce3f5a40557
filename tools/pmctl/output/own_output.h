// SPDX-License-Identifier: Apache-2.0
#ifndef PMCTL_OUTPUT_OWN_OUTPUT_H
#define PMCTL_OUTPUT_OWN_OUTPUT_H

#include <string>
#include <string_view>

namespace pmctl {

// The program's standard output, kept clean: the library prints diagnostics on descriptor 1, so the program takes
// the real one for itself and points 1 elsewhere. One a process.
class own_output {
  public:
    // From here on what is printed on descriptor 1 is thrown away, and descriptors 0 and 2 are open. Comes before
    // anything else opens a descriptor.
    own_output();
    ~own_output();
    own_output(const own_output &) = delete;
    own_output &operator=(const own_output &) = delete;

    // From here on it goes to standard error.
    void show_diagnostics();

    // The real standard output, or -1.
    [[nodiscard]] int descriptor() const { return descriptor_; }

    // Writes all of the text to the real standard output. Returns why it failed, or nothing; a reader that has gone
    // away is no failure. After a signal it asks whether to give up, which is no failure either.
    [[nodiscard]] std::string write(std::string_view text, bool (*gives_up)() = nullptr);

  private:
    int descriptor_;  // -1 when the program was started without standard output
};

}  // namespace pmctl

#endif
