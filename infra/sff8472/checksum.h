// SPDX-License-Identifier: Apache-2.0
// checksum.h: the check bytes of the pages.
#ifndef SFF8472_CHECKSUM_H
#define SFF8472_CHECKSUM_H

#include <numeric>
#include <span>

#include "sff8472/page_layout.h"

namespace sff8472 {

// The low byte of the sum.
inline uint8_t checksum(std::span<const uint8_t> covered) {
    return static_cast<uint8_t>(std::accumulate(covered.begin(), covered.end(), 0u));
}

}  // namespace sff8472

#endif
