// SPDX-License-Identifier: Apache-2.0
// listing_service.h: the indexes of the interfaces of one type.
#ifndef VIRTUAL_SWITCH_SERVICES_LISTING_SERVICE_H
#define VIRTUAL_SWITCH_SERVICES_LISTING_SERVICE_H

#include "chassis/switch_state.h"
#include "platform_dev/mts_service.h"

namespace virtual_switch {

// Serves MTS_OPC_PM_GET_IF_INDEX_LISTING: all that exist, in order of indexes. A service lists the types that it owns;
// the port manager lists the port channels of both kinds.
void serve_listing(switch_state &state, const mts_request_t &request, mts_reply_t *reply);

// Serves MTS_OPC_PM_GET_STARTUP_IF_INDEX_LISTING: those that a text names, in its order, each once, whether or not they
// exist. An empty text names none.
void serve_startup_listing(switch_state &state, const mts_request_t &request, mts_reply_t *reply);

}  // namespace virtual_switch

#endif
