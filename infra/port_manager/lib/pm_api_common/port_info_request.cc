// SPDX-License-Identifier: Apache-2.0
#include "port_mgr/port_info_request.h"

#include <cstdio>

#include "platform/if_index.h"
#include "pm_api_common/assertion.h"
#include "pm_api_common/exchange.h"
#include "pm_api_common/heap.h"
#include "pm_api_common/port_channel_route.h"
#include "pm_api_common/range_writer.h"
#include "port_mgr/opcodes.h"
#include "port_mgr/service_selection.h"
#include "port_mgr/status.h"
#include "protocol/request_layout.h"

namespace {

// A query for full or brief records.
struct port_info_query {
    pm::port_info_request_header header;
    const pm_if_index_range_t *ranges;

    [[nodiscard]] bool names_ports() const {
        if (header.mode == PM_PORT_INFO_MODE_RANGES) return header.range_count != 0 && ranges != nullptr;
        return header.mode == PM_PORT_INFO_MODE_ALL;
    }

    // How many ranges travel.
    [[nodiscard]] uint32_t sent_ranges() const {
        return header.mode == PM_PORT_INFO_MODE_RANGES ? header.range_count : 0;
    }
};

// Sends a valid query to the service that owns its first interface. A failed allocation is reported as `sender`'s, a
// failed send as `reporter`'s when there is one.
uint32_t send_query(mts_handle_t handle, uint32_t opcode, const port_info_query &query, mts_msg_t *request,
                    const char *sender, const char *reporter = nullptr) {
    const uint32_t ranges = query.sent_ranges();
    const uint64_t size = pm::port_info_request_header_size + uint64_t{ranges} * pm::wire_range_size;
    pm::heap_block<uint8_t> payload(static_cast<uint8_t *>(PM_ALLOCATE(size, pm::largest_request)));
    if (payload == nullptr) return pm::report_no_memory(sender, size);
    pm::byte_writer writer({payload.get(), static_cast<size_t>(size)});
    pm::write_header(writer, query.header);
    pm::put_ranges(writer, ranges, query.ranges);

    const uint32_t sap = ranges == 0 ? PM_SAP_PORT_MANAGER : pm_get_mts_sap(query.ranges[0].first);
    const int32_t sent =
        mts_send(handle, PM_NODE_SUPERVISOR, sap, opcode, payload.get(), static_cast<uint32_t>(size), request, 0, 0);
    payload.reset();
    if (sent != pm::transport_failure) return static_cast<uint32_t>(sent);
    if (reporter != nullptr) std::printf("%s: Error with MTS send\n", reporter);
    return mts_errno_get(handle);
}

// Sends with `send`, which takes where to describe the request, and waits for the answer.
uint32_t ask(mts_handle_t handle, mts_msg_t *response, auto send) {
    mts_msg_t request{};
    const uint32_t status = send(&request);
    return status != 0 ? status : pm::receive_answer(handle, request, response);
}

}  // namespace

uint32_t pm_send_get_port_info(mts_handle_t handle, uint8_t mode, uint32_t selector1, uint32_t selector2,
                               uint8_t option1, uint8_t option2, uint32_t range_count,
                               const pm_if_index_range_t *ranges, mts_msg_t *request) {
    const port_info_query query{{mode, selector1, selector2, option1, option2, range_count}, ranges};
    const bool valid = handle != 0 && query.names_ports();
    PM_ASSERT(valid);
    if (!valid) return PM_ERR_INVALID_PARAM;
    return send_query(handle, MTS_OPC_PM_GET_PORT_INFO, query, request, __func__);
}

uint32_t pm_get_port_info(mts_handle_t handle, uint8_t mode, uint32_t selector1, uint32_t selector2, uint8_t option1,
                          uint8_t option2, uint32_t range_count, const pm_if_index_range_t *ranges,
                          mts_msg_t *response) {
    const port_info_query query{{mode, selector1, selector2, option1, option2, range_count}, ranges};
    const bool valid = handle != 0 && query.names_ports() && response != nullptr;
    PM_ASSERT(valid);
    if (!valid) return PM_ERR_INVALID_PARAM;
    return ask(handle, response, [&](mts_msg_t *request) {
        return pm_send_get_port_info(handle, mode, selector1, selector2, option1, option2, range_count, ranges,
                                     request);
    });
}

uint32_t pm_send_get_port_info_brief(mts_handle_t handle, uint8_t mode, uint32_t selector1, uint32_t selector2,
                                     uint8_t option1, uint8_t option2, uint32_t range_count,
                                     const pm_if_index_range_t *ranges, mts_msg_t *request) {
    const port_info_query query{{mode, selector1, selector2, option1, option2, range_count}, ranges};
    const bool valid = handle != 0 && query.names_ports();
    PM_ASSERT(valid);
    if (!valid) return PM_ERR_INVALID_PARAM;
    return send_query(handle, MTS_OPC_PM_GET_PORT_INFO_BRIEF, query, request, __func__);
}

uint32_t pm_get_port_info_brief(mts_handle_t handle, uint8_t mode, uint32_t selector1, uint32_t selector2,
                                uint8_t option1, uint8_t option2, uint32_t range_count,
                                const pm_if_index_range_t *ranges, mts_msg_t *response) {
    const port_info_query query{{mode, selector1, selector2, option1, option2, range_count}, ranges};
    const bool valid = handle != 0 && query.names_ports() && response != nullptr;
    PM_ASSERT(valid);
    if (!valid) return PM_ERR_INVALID_PARAM;
    return ask(handle, response, [&](mts_msg_t *request) {
        return pm_send_get_port_info_brief(handle, mode, selector1, selector2, option1, option2, range_count, ranges,
                                           request);
    });
}

uint32_t pm_send_get_port_info_range(mts_handle_t handle, if_index_t first, if_index_t last, mts_msg_t *request) {
    PM_ASSERT(handle != 0);
    if (handle == 0) {
        std::printf("%s: Invalid MTS queue handle\n", __func__);
        return PM_ERR_INVALID_PARAM;
    }
    const pm_if_index_range_t range{first, last};
    const port_info_query query{{PM_PORT_INFO_MODE_RANGES, 0, 0, 0, 0, 1}, &range};
    return send_query(handle, MTS_OPC_PM_GET_PORT_INFO, query, request, "pm_send_get_port_info", __func__);
}

uint32_t pm_get_port_info_range(mts_handle_t handle, if_index_t first, if_index_t last, mts_msg_t *response) {
    const bool valid = handle != 0 && response != nullptr;
    PM_ASSERT(valid);
    if (!valid) {
        std::printf("%s: Invalid param\n", __func__);
        return PM_ERR_INVALID_PARAM;
    }
    return ask(handle, response,
               [&](mts_msg_t *request) { return pm_send_get_port_info_range(handle, first, last, request); });
}

uint32_t pm_send_get_next_port_info(mts_handle_t handle, if_index_t if_index, mts_msg_t *request) {
    PM_ASSERT(handle != 0);
    if (handle == 0) return PM_ERR_INVALID_PARAM;
    const uint32_t payload = hton_if_index(if_index);
    const uint32_t sap =
        pm::route_through_member(handle, if_index, pm_get_mts_sap(if_index), pm::failed_answer::is_left);
    const int32_t sent = mts_send(handle, PM_NODE_SUPERVISOR, sap, MTS_OPC_PM_GET_NEXT_PORT_INFO, &payload,
                                  sizeof payload, request, 0, 0);
    return sent == pm::transport_failure ? mts_errno_get(handle) : static_cast<uint32_t>(sent);
}

uint32_t pm_get_next_port_info(mts_handle_t handle, if_index_t if_index, mts_msg_t *response) {
    const bool valid = handle != 0 && response != nullptr;
    PM_ASSERT(valid);
    if (!valid) return PM_ERR_INVALID_PARAM;
    return ask(handle, response,
               [&](mts_msg_t *request) { return pm_send_get_next_port_info(handle, if_index, request); });
}
