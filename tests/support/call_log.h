// SPDX-License-Identifier: Apache-2.0
// call_log.h: what the library did with its surroundings, a line each, in order: calls of the platform and of the
// dynamic loader with their arguments, and the blocks it allocated and freed.
#ifndef SUPPORT_CALL_LOG_H
#define SUPPORT_CALL_LOG_H

#include <string>
#include <vector>

namespace support::call_log {

void add(std::string line);

// The lines since the last call of this function.
std::vector<std::string> take();

}  // namespace support::call_log

#endif
