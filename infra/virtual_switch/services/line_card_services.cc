// SPDX-License-Identifier: Apache-2.0
#include "services/line_card_services.h"

#include "port_mgr/opcodes.h"
#include "services/ethernet_stats_service.h"
#include "services/guarded_service.h"
#include "services/module_resource_service.h"
#include "services/sfp_diagnostics_service.h"

namespace virtual_switch {
namespace {

constexpr line_card_service services[] = {
    {PM_SAP_SFP_DIAGNOSTICS, guarded<sfp_diagnostics_service>},
    {PM_SAP_MODULE_RESOURCE, guarded<line_card_resource_service>},
    {PM_SAP_ETHERNET_STATS, guarded<ethernet_stats_service>},
};

}  // namespace

std::span<const line_card_service> line_card_services() { return services; }

}  // namespace virtual_switch
