// SPDX-License-Identifier: Apache-2.0
#include "services/port_service.h"

#include <string>

#include "port_mgr/status.h"
#include "services/listing_service.h"
#include "services/loopback_service.h"
#include "services/port_selection.h"
#include "services/request_payload.h"
#include "services/set_service.h"
#include "services/sub_interface_service.h"
#include "services/transceiver_service.h"

namespace virtual_switch {
namespace {

// Answers a request that selects ports.
template <auto select, auto answer>
void query(switch_state &state, const mts_request_t &request, mts_reply_t *reply) {
    port_list ports;
    const uint32_t status = select(state.model(), {payload_of(request), request.sap}, ports);
    if (status == 0)
        answer(reply, ports);
    else
        answer_status(reply, status);
}

enum class transport : uint8_t { any, cmi_only };

// Of a request that configures: what messages call it, and the form in which its clients expect a refusal.
struct configuring {
    const char *what;
    void (*refuse)(mts_reply_t *reply, uint32_t status);
};

struct operation {
    uint32_t opcode;
    transport over;
    void (*serve)(switch_state &state, const mts_request_t &request, mts_reply_t *reply);
    configuring change{};  // of a query: nothing
};

constexpr std::array operations{
    operation{MTS_OPC_PM_GET_PORT_INFO, transport::any, query<select_ports, answer_ports>},
    operation{MTS_OPC_PM_GET_PORT_INFO_BRIEF, transport::any, query<select_ports, answer_ports_brief>},
    operation{MTS_OPC_PM_GET_NEXT_PORT_INFO, transport::any, query<select_next_port, answer_ports>},
    operation{MTS_OPC_PM_GET_IF_INDEX_LISTING, transport::any, serve_listing},
    operation{MTS_OPC_PM_GET_STARTUP_IF_INDEX_LISTING, transport::any, serve_startup_listing},
    operation{CMI_OPC_PM_SET_PORT_CONFIG, transport::cmi_only, serve_set, {"attributes of ports", refuse_set}},
    operation{CMI_OPC_PM_GET_PORT_CONFIG, transport::cmi_only, query<select_configured_ports, answer_configured_ports>},
    operation{CMI_OPC_PM_GET_FCOT_INFO, transport::cmi_only, serve_transceivers},
    operation{CMI_OPC_PM_CONFIG_SUB_INTF,
              transport::cmi_only,
              serve_sub_interfaces,
              {"sub-interfaces", answer_sub_interfaces}},
    operation{CMI_OPC_PM_CONFIG_LOOPBACK, transport::cmi_only, serve_loopbacks, {"loopbacks", mts_reply_fail}},
    operation{CMI_OPC_PM_GET_MODULE_INTF_LISTING, transport::cmi_only, query<select_module_ports, answer_ports>},
};

void refuse(const configuring &change, const mts_client_t &client, port_service_context &context, mts_reply_t *reply) {
    context.refusals.add(std::string(change.what) + ": user " + std::to_string(client.uid) + " " +
                         context.access.reason());
    change.refuse(reply, PM_ERR_REJECTED);
}

}  // namespace

void port_service(void *context, const mts_request_t *request, mts_reply_t *reply) {
    auto &served = *static_cast<port_service_context *>(context);
    for (const operation &known : operations) {
        if (known.opcode != request->opcode || (known.over == transport::cmi_only && request->is_cmi == 0)) continue;
        if (known.change.refuse != nullptr && !served.access.allows(request->client))
            return refuse(known.change, request->client, served, reply);
        return known.serve(*served.state, *request, reply);
    }
    answer_status(reply, PM_ERR_FAILURE);
}

}  // namespace virtual_switch
