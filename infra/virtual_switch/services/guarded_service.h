// SPDX-License-Identifier: Apache-2.0
// guarded_service.h: what stands between the transport, which takes no exceptions, and a service.
#ifndef VIRTUAL_SWITCH_SERVICES_GUARDED_SERVICE_H
#define VIRTUAL_SWITCH_SERVICES_GUARDED_SERVICE_H

#include <cerrno>
#include <new>

#include "platform_dev/mts_service.h"

namespace virtual_switch {

// A request that there is no memory for fails.
template <mts_service_t serve>
void guarded(void *context, const mts_request_t *request, mts_reply_t *reply) try {
    serve(context, request, reply);
} catch (const std::bad_alloc &) {
    mts_reply_fail(reply, ENOMEM);
}

}  // namespace virtual_switch

#endif
