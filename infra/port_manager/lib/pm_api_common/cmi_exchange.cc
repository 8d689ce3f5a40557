// SPDX-License-Identifier: Apache-2.0
#include "pm_api_common/cmi_exchange.h"

#include "platform/cmi.h"

namespace pm {

cmi_answer exchange(const cmi_request &request, mts_handle_t handle, uint32_t last) {
    void *response = nullptr;
    auto length = static_cast<uint32_t>(request.payload.size());
    const uint32_t status = cmi_req_resp(request.opcode, request.kind, request.payload.data(), &response, &length, 0, 0,
                                         request.sap, handle, last);
    return {status, heap_block<uint8_t>(static_cast<uint8_t *>(response)), length};
}

}  // namespace pm
