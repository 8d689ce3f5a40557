// SPDX-License-Identifier: Apache-2.0
#include <libmnl/libmnl.h>
#include <linux/if_link.h>
#include <linux/rtnetlink.h>

#include <memory>
#include <vector>

#include "bench/exchange/peers.h"

namespace bench {

namespace {

struct socket_closer {
    void operator()(mnl_socket *socket) const { mnl_socket_close(socket); }
};

int take_index(const nlmsghdr *message, void *index) {
    *static_cast<int *>(index) = static_cast<const ifinfomsg *>(mnl_nlmsg_get_payload(message))->ifi_index;
    return MNL_CB_OK;
}

void query_link(mnl_socket *socket, std::vector<char> &buffer, unsigned sequence) {
    nlmsghdr *const request = mnl_nlmsg_put_header(buffer.data());
    request->nlmsg_type = RTM_GETLINK;
    request->nlmsg_flags = NLM_F_REQUEST;
    request->nlmsg_seq = sequence;
    auto *const link = static_cast<ifinfomsg *>(mnl_nlmsg_put_extra_header(request, sizeof(ifinfomsg)));
    link->ifi_family = AF_UNSPEC;
    mnl_attr_put_strz(request, IFLA_IFNAME, "lo");
    require(mnl_socket_sendto(socket, request, request->nlmsg_len) > 0, "mnl_socket_sendto");
    const ssize_t size = mnl_socket_recvfrom(socket, buffer.data(), buffer.size());
    require(size > 0, "mnl_socket_recvfrom");
    int index = 0;
    const int handled = mnl_cb_run(buffer.data(), static_cast<size_t>(size), sequence, mnl_socket_get_portid(socket),
                                   take_index, &index);
    require(handled >= 0 && index > 0, "mnl_cb_run");
}

}  // namespace

rival netlink_link_query() {
    return {"netlink link query", []() -> exchange {
                const std::shared_ptr<mnl_socket> socket(mnl_socket_open(NETLINK_ROUTE), socket_closer());
                require(socket != nullptr && mnl_socket_bind(socket.get(), 0, MNL_SOCKET_AUTOPID) == 0, "netlink");
                return [socket, buffer = std::vector<char>(static_cast<size_t>(MNL_SOCKET_BUFFER_SIZE)),
                        sequence = 0u]() mutable { query_link(socket.get(), buffer, ++sequence); };
            }};
}

}  // namespace bench
