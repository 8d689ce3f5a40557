// SPDX-License-Identifier: Apache-2.0
// captured_stdout.h: standard output, kept from the terminal while the object lives. What a failed test printed is
// shown at the end.
#ifndef SUPPORT_CAPTURED_STDOUT_H
#define SUPPORT_CAPTURED_STDOUT_H

#include <string>

namespace support {

class captured_stdout {
  public:
    captured_stdout();
    ~captured_stdout();
    captured_stdout(const captured_stdout &) = delete;
    captured_stdout &operator=(const captured_stdout &) = delete;

    // The text since the last call of this function.
    std::string take();

  private:
    int terminal_;
    int file_;
    size_t taken_ = 0;
};

}  // namespace support

#endif
