// SPDX-License-Identifier: Apache-2.0
// What the switch has: interfaces by their type, and resources of its modules.
#ifndef PMCTL_SWITCH_SWITCH_INVENTORY_H
#define PMCTL_SWITCH_SWITCH_INVENTORY_H

#include <vector>

#include "port_mgr/messaging.h"
#include "switch/switch_connection.h"

namespace pmctl {

// Every query throws switch_unavailable, or query_refused when only this question was answered with no.
class switch_inventory {
  public:
    // Every interface of a type, sub-interfaces included, in the order of their indexes.
    std::vector<if_index_t> interfaces_of_type(uint8_t type);

    // The resources of a module, or with 0 of every module, in host order. A module that is not there is a refusal.
    std::vector<pm_module_resource_t> resources(uint8_t module);

  private:
    switch_connection connection_;
};

}  // namespace pmctl

#endif
