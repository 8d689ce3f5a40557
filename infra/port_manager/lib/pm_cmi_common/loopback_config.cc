// SPDX-License-Identifier: Apache-2.0
#include "port_mgr/loopback_config.h"

#include "pm_api_common/cmi_exchange.h"
#include "pm_api_common/range_writer.h"
#include "pm_cmi_common/interface_mask.h"
#include "pm_cmi_common/request_block.h"
#include "port_mgr/opcodes.h"
#include "protocol/config_layout.h"
#include "protocol/request_layout.h"

uint32_t pm_cli_config_loopback_interface(mts_handle_t handle, uint32_t flag, uint32_t mask_low, uint32_t mask_high,
                                          const pm_if_range_list_t *ranges, uint32_t last) {
    if ((mask_low & PM_IF_KIND_LOOPBACK) == 0) return pm::refuse_mask(mask_low, mask_high);
    if (ranges == nullptr) return PM_ERR_FAILURE;
    const uint64_t size = pm::loopback_request_header_size + uint64_t{ranges->count} * pm::wire_range_size;
    const pm::request_block payload = PM_ALLOCATE_REQUEST(size);
    if (!payload) return pm::out_of_memory;
    pm::byte_writer writer(payload.bytes());
    writer.put_be32(ranges->count);
    pm::put_ranges(writer, ranges->count, ranges->ranges);
    const uint32_t kind = flag != 0 ? PM_LOOPBACK_CREATE : PM_LOOPBACK_DELETE;
    return pm::exchange({CMI_OPC_PM_CONFIG_LOOPBACK, kind, payload.bytes(), PM_SAP_ETHERNET_CHANNEL}, handle, last)
        .status;
}
