// SPDX-License-Identifier: Apache-2.0
// set_request.h: what a set request asks for.
#ifndef VIRTUAL_SWITCH_SERVICES_SET_REQUEST_H
#define VIRTUAL_SWITCH_SERVICES_SET_REQUEST_H

#include <span>
#include <vector>

#include "chassis/port_settings.h"
#include "port_mgr/types.h"

namespace virtual_switch {

struct set_request {
    std::vector<pm_if_index_range_t> ranges;
    uint8_t attribute;
    setting_value value;  // 0 for kinds of values that no implemented attribute has
};

// Reads a request. The two texts in it, who sets and from where, are not looked at. Returns 0, or the status of the
// refusal.
uint32_t read_set_request(std::span<const uint8_t> payload, set_request &request);

}  // namespace virtual_switch

#endif
