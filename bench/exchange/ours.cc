// SPDX-License-Identifier: Apache-2.0
#include "bench/exchange/ours.h"

#include <array>
#include <cstdlib>
#include <memory>

#include "platform_dev/if_index_dev.h"
#include "platform_dev/mts_handle.hpp"
#include "platform_dev/mts_service.h"
#include "port_mgr/port_mgr_common.h"
#include "protocol/request_layout.h"

namespace bench {

namespace {

constexpr size_t request_size = pm::port_info_request_header_size + pm::wire_range_size;

class handle_owner {
  public:
    handle_owner() { require(handle_.get() != 0, "mts_dev_open"); }
    operator mts_handle_t() const { return handle_.get(); }

  private:
    platform_dev::mts_handle handle_;
};

// A range begins with a port of the port manager's. Its end tells the service how many ports to answer.
pm_if_index_range_t range_of(const workload &asked) {
    if_index_t first = 0;
    require(if_index_slot_port_init(&first, IF_TYPE_FC, 0, 0) == 0, "if_index_slot_port_init");
    return {first, asked.ports};
}

void receive(mts_handle_t handle, mts_msg_t &request, mts_msg_t &answer) {
    const mts_recv_options_t options = {{1, 0, 10, mts_rr_token_get(&request)}};
    require(mts_recv(handle, &answer, &options) == 0 && mts_drop(handle, &request) == 0, "mts_recv");
}

void drop(mts_handle_t handle, mts_msg_t &answer) { require(mts_drop(handle, &answer) == 0, "mts_drop"); }

void ask(mts_handle_t handle, const workload &asked, mts_msg_t &answer) {
    const auto [first, last] = range_of(asked);
    require(pm_get_port_info_range(handle, first, last, &answer) == 0, "pm_get_port_info_range");
}

void parse_and_drop(mts_handle_t handle, const workload &asked, mts_msg_t &answer) {
    uint32_t count = 0;
    pm_port_info_t *records = nullptr;
    require(pm_parse_get_port_info(&answer, &count, &records) == 0 && count == asked.ports, "pm_parse_get_port_info");
    drop(handle, answer);
    std::free(records);
}

// The answers that the service has ready.
class answer_store {
  public:
    answer_store() {
        for (const workload &each : workloads) answers_.push_back({each, answer_to(each)});
    }

    [[nodiscard]] const bytes &find(uint32_t opcode, uint32_t ports) const {
        for (const auto &[asked, payload] : answers_)
            if (asked.opcode == opcode && asked.ports == ports) return payload;
        std::abort();
    }

  private:
    struct answer {
        workload asked;
        bytes payload;
    };
    std::vector<answer> answers_;
};

void answer_request(void *store, const mts_request_t *request, mts_reply_t *reply) {
    const auto *const end_of_range = static_cast<const uint8_t *>(request->payload) + request_size - sizeof(if_index_t);
    const uint32_t opcode = request->is_cmi ? MTS_OPC_PM_GET_PORT_INFO : request->opcode;
    const bytes &payload =
        static_cast<answer_store *>(store)->find(opcode, ntoh_if_index(pm::load<uint32_t>(end_of_range)));
    mts_reply_lend_payload(reply, payload.data(), static_cast<uint32_t>(payload.size()));
}

}  // namespace

void serve_ports(const readiness &ready) {
    answer_store answers;
    mts_server_t *const server = mts_server_create();
    require(server != nullptr, "mts_server_create");
    require(mts_server_add_service(server, PM_NODE_SUPERVISOR, PM_SAP_PORT_MANAGER, answer_request, &answers) == 0,
            "mts_server_add_service");
    ready.announce();
    mts_server_run(server);
}

void query(mts_handle_t handle, const workload &asked) {
    mts_msg_t answer;
    ask(handle, asked, answer);
    drop(handle, answer);
}

void query_and_parse(mts_handle_t handle, const workload &asked) {
    mts_msg_t answer;
    ask(handle, asked, answer);
    parse_and_drop(handle, asked, answer);
}

void send_and_receive(mts_handle_t handle, const workload &asked) {
    const auto [first, last] = range_of(asked);
    mts_msg_t request;
    mts_msg_t answer;
    require(pm_send_get_port_info_range(handle, first, last, &request) == 0, "pm_send_get_port_info_range");
    receive(handle, request, answer);
    parse_and_drop(handle, asked, answer);
}

void get_over_cmi(mts_handle_t handle, const workload &asked) {
    const pm_if_index_range_t range = range_of(asked);
    uint32_t count = 0;
    pm_port_info_t *records = nullptr;
    require(pm_cmi_get_port_config(handle, 0, 1, &range, &count, &records, 0) == 0 && count == asked.ports,
            "pm_cmi_get_port_config");
    std::free(records);
}

void transport_alone(mts_handle_t handle, const workload &asked) {
    std::array<uint8_t, request_size> payload{};
    pm::store(&payload[request_size - sizeof(if_index_t)], hton_if_index(asked.ports));
    mts_msg_t request;
    mts_msg_t answer;
    require(mts_send(handle, PM_NODE_SUPERVISOR, PM_SAP_PORT_MANAGER, asked.opcode, payload.data(), request_size,
                     &request, 0, 0) == 0,
            "mts_send");
    receive(handle, request, answer);
    drop(handle, answer);
}

void query_and_parse_brief(mts_handle_t handle, const workload &asked) {
    const pm_if_index_range_t range = range_of(asked);
    mts_msg_t answer;
    uint32_t count = 0;
    pm_port_info_brief_t *records = nullptr;
    require(pm_get_port_info_brief(handle, PM_PORT_INFO_MODE_RANGES, 0, 0, 0, 0, 1, &range, &answer) == 0,
            "pm_get_port_info_brief");
    require(pm_parse_get_port_info_brief(&answer, &count, &records) == 0 && count == asked.ports,
            "pm_parse_get_port_info_brief");
    drop(handle, answer);
    std::free(records);
}

rival our_client(std::string name, way_to_ask way, const workload &asked) {
    return {std::move(name),
            [=]() -> exchange { return [=, handle = std::make_shared<handle_owner>()] { way(*handle, asked); }; }};
}

rival our_rival(std::string name, way_to_ask way, const workload &asked) {
    rival ours = our_client(std::move(name), way, asked);
    ours.serve = serve_ports;
    return ours;
}

}  // namespace bench
