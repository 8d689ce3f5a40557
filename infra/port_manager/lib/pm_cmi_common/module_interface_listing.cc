// SPDX-License-Identifier: Apache-2.0
#include "port_mgr/module_interface_listing.h"

#include "pm_api_common/cmi_exchange.h"
#include "pm_api_common/interface_type.h"
#include "port_mgr/opcodes.h"
#include "port_mgr/port_info_response.h"
#include "port_mgr/service_selection.h"
#include "protocol/config_layout.h"

uint32_t pm_cmi_get_module_interface_listing(mts_handle_t handle, uint8_t module, if_index_t if_index, uint32_t last,
                                             uint32_t *count, pm_port_info_t **records) {
    const std::array<uint8_t, pm::module_listing_request_size> request{module, pm::type_of(if_index)};
    const uint32_t sap = pm_get_mts_sap(if_index);
    const pm::cmi_answer answer =
        pm::exchange({CMI_OPC_PM_GET_MODULE_INTF_LISTING, pm::module_listing_request_kind, request, sap}, handle, last);
    if (answer.status != 0) return answer.status;
    return pm_parse_get_port_info_res_payload(answer.payload.get(), answer.size, count, records);
}
