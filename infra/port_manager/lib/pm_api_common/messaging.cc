// SPDX-License-Identifier: Apache-2.0
#include "port_mgr/messaging.h"

#include <cerrno>

#include "pm_api_common/exchange.h"
#include "pm_api_common/heap.h"
#include "pm_api_common/range_writer.h"
#include "port_mgr/opcodes.h"
#include "protocol/cursor.h"
#include "protocol/request_layout.h"

int32_t pm_mts_recv_with_eintr(mts_handle_t handle, mts_msg_t *response, const mts_recv_options_t *options) {
    int32_t result;
    uint32_t error;
    do {
        result = mts_recv(handle, response, options);
        error = mts_errno_get(handle);
    } while (result == pm::transport_failure && error == EINTR);
    return result;
}

int32_t pm_ips_send_receive(mts_handle_t handle, uint32_t node, uint32_t sap, uint32_t opcode, const void *payload,
                            uint32_t payload_size, mts_msg_t *response, uint32_t wait) {
    mts_msg_t request{};
    if (mts_send(handle, node, sap, opcode, payload, payload_size, &request, 0, 0) != 0) return -1;
    const mts_recv_options_t options = pm::answer_to(request, wait);
    const int32_t received = mts_recv(handle, response, &options);
    mts_drop(handle, &request);
    return received == pm::transport_failure ? -1 : 0;
}

uint32_t pm_get_module_resources(mts_handle_t handle, uint16_t range_count, const pm_if_index_range_t *ranges,
                                 uint16_t module, uint32_t node, mts_msg_t *response) {
    const size_t size = pm::module_resources_header_size + range_count * pm::wire_range_size;
    const pm::heap_block<uint8_t> payload(static_cast<uint8_t *>(PM_ALLOCATE(size, pm::largest_request)));
    if (payload == nullptr) return pm::out_of_memory;

    pm::byte_writer writer({payload.get(), size});
    writer.put_be16(module);
    writer.put_be16(range_count);
    pm::put_ranges(writer, range_count, ranges);

    mts_msg_t request{};
    if (mts_send(handle, node, PM_SAP_MODULE_RESOURCE, MTS_OPC_PM_GET_MODULE_RESOURCES, payload.get(),
                 static_cast<uint32_t>(size), &request, 0, 0) == pm::transport_failure) {
        return mts_errno_get(handle);
    }
    const mts_recv_options_t options = pm::answer_to(request, pm::query_wait);
    if (mts_recv(handle, response, &options) == pm::transport_failure) {
        const uint32_t status = mts_errno_get(handle);
        mts_drop(handle, &request);
        return status;
    }
    // A failed release is taken note of and passed over: the answer is good.
    if (mts_drop(handle, &request) == pm::transport_failure) mts_errno_get(handle);
    return 0;
}
