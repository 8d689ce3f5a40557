// SPDX-License-Identifier: Apache-2.0
// interface_mask.h: the kinds of interfaces that a command line says are in its ranges.
#ifndef PM_CMI_COMMON_INTERFACE_MASK_H
#define PM_CMI_COMMON_INTERFACE_MASK_H

#include <cstdio>

#include "port_mgr/status.h"

namespace pm {

// Says what was in a mask that lacks the kinds it needs. Returns the status of the refusal.
inline uint32_t refuse_mask(uint32_t low, uint32_t high) {
    std::printf("Iface mask:0x%llx\n", static_cast<unsigned long long>(high) << 32 | low);
    return PM_ERR_REJECTED;
}

}  // namespace pm

#endif
