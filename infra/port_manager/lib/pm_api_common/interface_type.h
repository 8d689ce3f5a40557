// SPDX-License-Identifier: Apache-2.0
// interface_type.h: what the interface types have in common.
#ifndef PM_API_COMMON_INTERFACE_TYPE_H
#define PM_API_COMMON_INTERFACE_TYPE_H

#include "platform/if_index.h"

namespace pm {

constexpr bool is_port_channel_type(uint8_t type) { return type == IF_TYPE_PORT_CHANNEL || type == IF_TYPE_BUNDLE; }

}  // namespace pm

#endif
