// SPDX-License-Identifier: Apache-2.0
// fresh_process.h: for what a process does only once. State that a library keeps for the life of its process is as
// the program started with it, as long as nothing has touched it outside of these processes.
#ifndef SUPPORT_FRESH_PROCESS_H
#define SUPPORT_FRESH_PROCESS_H

#include <functional>

namespace support {

// Runs part of a test in a child of this process, which starts out as its copy, and waits for its end. What fails there
// is shown and fails the test.
void in_fresh_process(const std::function<void()> &part);

}  // namespace support

#endif
