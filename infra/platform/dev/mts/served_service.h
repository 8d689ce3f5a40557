// SPDX-License-Identifier: Apache-2.0
// served_service.h: a service of a server.
#ifndef PLATFORM_DEV_MTS_SERVED_SERVICE_H
#define PLATFORM_DEV_MTS_SERVED_SERVICE_H

#include "platform_dev/mts_service.h"

namespace platform_dev {

struct service {
    uint32_t node;
    uint32_t sap;
    mts_service_t handle;
    void *context;

    [[nodiscard]] bool is(uint32_t other_node, uint32_t other_sap) const {
        return node == other_node && sap == other_sap;
    }
};

}  // namespace platform_dev

#endif
