// SPDX-License-Identifier: Apache-2.0
#include "services/port_service.h"

#include "port_mgr/status.h"
#include "services/port_selection.h"

namespace virtual_switch {
namespace {

struct operation {
    uint32_t opcode;
    uint32_t (*select)(const chassis_model &model, const port_request &request, port_list &ports);
    void (*answer)(mts_reply_t *reply, const port_list &ports);
};

constexpr std::array operations{
    operation{MTS_OPC_PM_GET_PORT_INFO, select_ports, answer_ports},
    operation{MTS_OPC_PM_GET_PORT_INFO_BRIEF, select_ports, answer_ports_brief},
    operation{MTS_OPC_PM_GET_NEXT_PORT_INFO, select_next_port, answer_ports},
};

}  // namespace

void port_service(void *model, const mts_request_t *request, mts_reply_t *reply) {
    const port_request received{{static_cast<const uint8_t *>(request->payload), request->payload_size}, request->sap};
    for (const operation &known : operations) {
        if (known.opcode != request->opcode) continue;
        port_list ports;
        const uint32_t status = known.select(*static_cast<const chassis_model *>(model), received, ports);
        return status == 0 ? known.answer(reply, ports) : answer_status(reply, status);
    }
    answer_status(reply, PM_ERR_FAILURE);
}

}  // namespace virtual_switch
