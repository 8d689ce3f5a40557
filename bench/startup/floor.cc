// SPDX-License-Identifier: Apache-2.0
// floor.cc: the least that a program can do which asks the switch for all its ports in brief: it connects to the
// service, sends the request, receives the whole answer and exits. It needs libc only, and checks and prints nothing
// beyond that the answer is whole.
#include <sys/socket.h>
#include <sys/un.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "mts/frame.h"
#include "port_mgr/opcodes.h"
#include "port_mgr/port_info_request.h"
#include "protocol/request_layout.h"

namespace {

using platform_dev::frame_header;

constexpr uint32_t magic = 0x4d545302;
constexpr uint32_t request_size = pm::port_info_request_header_size;

uint8_t answer[platform_dev::max_packet_payload + sizeof(frame_header)];

int connect_to_service() {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::snprintf(address.sun_path, sizeof address.sun_path, "%s/%08x-%u", std::getenv("MTS_RUNTIME_DIR"),
                  PM_NODE_SUPERVISOR, PM_SAP_PORT_MANAGER);
    const int connection = socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0);
    if (connect(connection, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0) return -1;
    return connection;
}

bool send_request(int connection) {
    uint8_t request[request_size + sizeof(frame_header)] = {PM_PORT_INFO_MODE_ALL};
    frame_header header{};
    header.magic = magic;
    header.kind = platform_dev::frame_kind::message_request;
    header.opcode = MTS_OPC_PM_GET_PORT_INFO_BRIEF;
    header.payload_size = request_size;
    std::memcpy(request + request_size, &header, sizeof header);
    return send(connection, request, sizeof request, MSG_NOSIGNAL) == static_cast<ssize_t>(sizeof request);
}

bool receive_answer(int connection) {
    const ssize_t size = recv(connection, answer, sizeof answer, 0);
    frame_header header;
    if (size <= static_cast<ssize_t>(sizeof header)) return false;
    std::memcpy(&header, answer + size - sizeof header, sizeof header);
    return static_cast<size_t>(size) == header.payload_size + sizeof header;
}

}  // namespace

int main() {
    const int connection = connect_to_service();
    return connection >= 0 && send_request(connection) && receive_answer(connection) ? EXIT_SUCCESS : EXIT_FAILURE;
}
