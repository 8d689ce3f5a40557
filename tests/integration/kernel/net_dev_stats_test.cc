// SPDX-License-Identifier: Apache-2.0
// The counters of the loopback interface: what the library reads lies between what the kernel tells elsewhere before
// and afterwards.
#include "port_mgr/net_dev_stats.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <fstream>
#include <string>
#include <vector>

namespace {

// A member of the record, and the files whose numbers the kernel adds up for it.
struct counter {
    uint32_t pm_net_dev_stats_t::*member;
    std::vector<const char *> files;
};

const std::vector<counter> counters{
    {&pm_net_dev_stats_t::rx_packets, {"rx_packets"}},
    {&pm_net_dev_stats_t::tx_packets, {"tx_packets"}},
    {&pm_net_dev_stats_t::rx_bytes, {"rx_bytes"}},
    {&pm_net_dev_stats_t::tx_bytes, {"tx_bytes"}},
    {&pm_net_dev_stats_t::rx_errors, {"rx_errors"}},
    {&pm_net_dev_stats_t::tx_errors, {"tx_errors"}},
    {&pm_net_dev_stats_t::rx_dropped, {"rx_dropped", "rx_missed_errors"}},
    {&pm_net_dev_stats_t::tx_dropped, {"tx_dropped"}},
    {&pm_net_dev_stats_t::rx_multicast, {"multicast"}},
    {&pm_net_dev_stats_t::rx_compressed, {"rx_compressed"}},
    {&pm_net_dev_stats_t::tx_compressed, {"tx_compressed"}},
    {&pm_net_dev_stats_t::rx_frame_errors, {"rx_length_errors", "rx_over_errors", "rx_crc_errors", "rx_frame_errors"}},
    {&pm_net_dev_stats_t::rx_fifo_errors, {"rx_fifo_errors"}},
    {&pm_net_dev_stats_t::tx_carrier_errors,
     {"tx_carrier_errors", "tx_aborted_errors", "tx_window_errors", "tx_heartbeat_errors"}},
    {&pm_net_dev_stats_t::tx_fifo_errors, {"tx_fifo_errors"}},
    {&pm_net_dev_stats_t::collisions, {"collisions"}},
};

const std::string folder = "/sys/class/net/lo/statistics/";

std::vector<uint64_t> told_elsewhere() {
    std::vector<uint64_t> totals;
    for (const counter &each : counters) {
        uint64_t total = 0;
        for (const char *const name : each.files) {
            uint64_t number = 0;
            std::ifstream file(folder + name);
            EXPECT_TRUE(file >> number) << name;
            total += number;
        }
        totals.push_back(total);
    }
    return totals;
}

// Gives the interface something to count, where it is up.
void send_a_datagram() {
    const int own = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (own == -1) return;
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto *const place = reinterpret_cast<sockaddr *>(&address);
    if (bind(own, place, size) == 0 && getsockname(own, place, &size) == 0) {
        const std::array<char, 100> content{};
        sendto(own, content.data(), content.size(), MSG_DONTWAIT, place, size);
    }
    close(own);
}

TEST(kernel_net_dev_stats, are_what_the_kernel_tells_elsewhere) {
    if (access(folder.c_str(), R_OK) != 0) GTEST_SKIP() << "the kernel tells nothing in " << folder;
    send_a_datagram();
    const auto before = told_elsewhere();
    pm_net_dev_stats_t stats{};
    ASSERT_EQ(pm_get_proc_net_dev_stats("lo", &stats), 0);
    const auto after = told_elsewhere();
    for (size_t i = 0; i < counters.size(); ++i) {
        // The record has the low 32 bits.
        const auto since = static_cast<uint32_t>(stats.*counters[i].member - static_cast<uint32_t>(before[i]));
        EXPECT_LE(since, after[i] - before[i]) << counters[i].files.front();
    }
}

TEST(kernel_net_dev_stats, of_an_interface_that_is_not_there_are_not_found) {
    pm_net_dev_stats_t stats{};
    EXPECT_EQ(pm_get_proc_net_dev_stats("no-such-dev", &stats), -1);
}

}  // namespace
