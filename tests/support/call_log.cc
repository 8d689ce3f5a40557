// SPDX-License-Identifier: Apache-2.0
#include "call_log.h"

#include <utility>

namespace support::call_log {
namespace {

std::vector<std::string> lines;

}  // namespace

void add(std::string line) { lines.push_back(std::move(line)); }

std::vector<std::string> take() { return std::exchange(lines, {}); }

}  // namespace support::call_log
