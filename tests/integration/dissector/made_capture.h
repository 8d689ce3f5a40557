// SPDX-License-Identifier: Apache-2.0
// made_capture.h: captures of packets that nobody sent.
#ifndef TESTS_DISSECTOR_MADE_CAPTURE_H
#define TESTS_DISSECTOR_MADE_CAPTURE_H

#include <cstdint>
#include <fstream>
#include <string>

namespace dissector_test {

class made_capture {
  public:
    // Begins as the first section of another one does.
    made_capture(const std::string &path, const std::string &like);

    // The bytes of a packet: a record, and a payload behind it.
    void add(std::string packet);

  private:
    void put(uint32_t word);

    std::ofstream file_;
};

}  // namespace dissector_test

#endif
