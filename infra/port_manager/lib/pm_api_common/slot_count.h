// SPDX-License-Identifier: Apache-2.0
// slot_count.h: how many module slots the chassis has.
#ifndef PM_API_COMMON_SLOT_COUNT_H
#define PM_API_COMMON_SLOT_COUNT_H

#include <cstdint>

namespace pm {

// Asks the platform until it has answered once. Thread-safe: a thread that comes too early asks, too, and learns the
// same.
uint8_t slot_count();

}  // namespace pm

#endif
