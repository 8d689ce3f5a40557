// SPDX-License-Identifier: Apache-2.0
// listing_layout.h: how requests for the indexes of a type of interfaces travel. An answer has an index a record.
#ifndef PROTOCOL_LISTING_LAYOUT_H
#define PROTOCOL_LISTING_LAYOUT_H

#include <cstddef>

#include "port_mgr/if_index_listing.h"

namespace pm {

// A request: the interface type.
inline constexpr size_t listing_request_size = 1;

// A request for startup interfaces: the type, the caller's block, and bytes that nobody uses.
inline constexpr size_t startup_listing_request_size = listing_request_size + PM_STARTUP_BLOCK_SIZE + 244;

}  // namespace pm

#endif
