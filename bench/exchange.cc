// SPDX-License-Identifier: Apache-2.0
// exchange.cc: what one request with its answer costs, beside a bare ping-pong of the same sizes over a socket pair.
//
// Both ends of everything run on one core.
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "bench/support/child_process.h"
#include "bench/support/report.h"
#include "bench/support/temporary_runtime_dir.h"
#include "platform_dev/mts_dev.h"
#include "platform_dev/mts_service.h"
#include "port_mgr/port_mgr_common.h"
#include "protocol/port_info_layout.h"

namespace {

using bench::child_process;
using bench::require;

// A request for one range of ports, and the answers to it: this many base records and no elements.
constexpr uint32_t request_size = 23;
constexpr uint32_t one_port = 1;
constexpr uint32_t large_answer_ports = 200 * 1024 / pm::base_record_size;

constexpr uint32_t answer_size(uint32_t ports) {
    return static_cast<uint32_t>(pm::answer_header_size + ports * pm::base_record_size);
}

class socket_pair {
  public:
    socket_pair() { require(socketpair(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0, ends_) == 0, "socketpair"); }
    socket_pair(const socket_pair &) = delete;
    socket_pair &operator=(const socket_pair &) = delete;
    ~socket_pair() {
        close(ends_[0]);
        close(ends_[1]);
    }
    int ours() const { return ends_[0]; }
    int theirs() const { return ends_[1]; }

  private:
    int ends_[2];
};

void answer_bare_requests(int socket, size_t size) {
    std::vector<char> request(request_size);
    const std::vector<char> answer(size);
    while (recv(socket, request.data(), request.size(), 0) > 0 && send(socket, answer.data(), answer.size(), 0) > 0) {
    }
}

// The bare ping-pong.
class bare_client {
  public:
    explicit bare_client(size_t size)
        : answer_(size), server_([&] { answer_bare_requests(sockets_.theirs(), size); }) {}

    void operator()() {
        require(send(sockets_.ours(), request_.data(), request_.size(), 0) > 0, "send");
        require(recv(sockets_.ours(), answer_.data(), answer_.size(), 0) == static_cast<ssize_t>(answer_.size()),
                "recv");
    }

  private:
    std::vector<char> request_ = std::vector<char>(request_size);
    std::vector<char> answer_;
    socket_pair sockets_;
    child_process server_;
};

class handle_owner {
  public:
    handle_owner() : handle_(mts_dev_open()) { require(handle_ != 0, "mts_dev_open"); }
    handle_owner(const handle_owner &) = delete;
    handle_owner &operator=(const handle_owner &) = delete;
    ~handle_owner() { mts_dev_close(handle_); }
    operator mts_handle_t() const { return handle_; }

  private:
    mts_handle_t handle_;
};

// The same through the transport alone. The last interface of the range tells the service how many ports to answer.
void exchange_messages(mts_handle_t handle, uint32_t ports) {
    std::array<uint8_t, request_size> payload{};
    pm::store_be32(&payload[request_size - 4], ports);
    mts_msg_t request;
    mts_msg_t answer;
    require(mts_send(handle, PM_NODE_SUPERVISOR, PM_SAP_PORT_MANAGER, MTS_OPC_PM_GET_PORT_INFO, payload.data(),
                     request_size, &request, 0, 0) == 0,
            "mts_send");
    const mts_recv_options_t options = {{1, 0, 10, mts_rr_token_get(&request)}};
    require(mts_recv(handle, &answer, &options) == 0 && mts_payload_size(&answer) == answer_size(ports), "mts_recv");
    require(mts_drop(handle, &request) == 0 && mts_drop(handle, &answer) == 0, "mts_drop");
}

// The same through the library, and the answer parsed.
void query_ports(mts_handle_t handle, uint32_t ports) {
    mts_msg_t answer;
    uint32_t count = 0;
    pm_port_info_t *records = nullptr;
    require(pm_get_port_info_range(handle, 0, ports, &answer) == 0, "pm_get_port_info_range");
    require(pm_parse_get_port_info(&answer, &count, &records) == 0 && count == ports, "pm_parse_get_port_info");
    require(mts_drop(handle, &answer) == 0, "mts_drop");
    std::free(records);
}

void answer_request(void *, const mts_request_t *request, mts_reply_t *reply) {
    const uint32_t ports = pm::load_be32(static_cast<const uint8_t *>(request->payload) + request_size - 4);
    auto *const answer = static_cast<uint8_t *>(mts_reply_payload(reply, answer_size(ports)));
    pm::store_be32(answer + pm::answer_status_size, ports);
}

mts_server_t *open_server() {
    mts_server_t *server = mts_server_create();
    require(server != nullptr, "mts_server_create");
    require(mts_server_add_service(server, PM_NODE_SUPERVISOR, PM_SAP_PORT_MANAGER, answer_request, nullptr) == 0,
            "mts_server_add_service");
    return server;
}

void measure_exchange(bench::report &report, uint32_t ports) {
    const handle_owner handle;
    bench::contest contest;
    contest.add("query and parse", [&] { query_ports(handle, ports); });
    contest.add("transport alone", [&] { exchange_messages(handle, ports); });
    const auto bare = std::make_shared<bare_client>(answer_size(ports));
    contest.add("bare ping-pong", [bare] { (*bare)(); });
    const auto rows = contest.run();
    report.table("23 and " + std::to_string(answer_size(ports)) + " bytes", "ns", rows);
    const double ratio = rows[0].took.median / rows[2].took.median;
    if (ports == one_port) report.at_most("query and parse of one port, of a bare ping-pong", ratio, 1.15);
}

}  // namespace

int main(int argc, char **argv) {
    bench::pin_to_one_core();
    const bench::temporary_runtime_dir directory;
    mts_server_t *server = open_server();  // before the fork, so that it can be reached from here on
    const child_process serving([server] { mts_server_run(server); });
    bench::report report(argc, argv, "exchange, both ends on one core");
    measure_exchange(report, one_port);
    measure_exchange(report, large_answer_ports);
    report.write();
    mts_server_destroy(server);
    return EXIT_SUCCESS;
}
