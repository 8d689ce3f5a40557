// SPDX-License-Identifier: Apache-2.0
#include "port_mgr/net_dev_stats.h"

#include <cstdio>
#include <cstring>
#include <memory>

namespace {

constexpr int header_lines = 2;

using line_buffer = char[512];

struct close_file {
    void operator()(FILE *file) const { std::fclose(file); }
};
using open_file = std::unique_ptr<FILE, close_file>;

char *read_line(FILE *from, line_buffer &line) { return std::fgets(line, sizeof line, from); }

// The counters of the interface, behind its name and a colon, or null. The first line that begins with the name
// decides.
const char *find_counters(FILE *from, const char *name, line_buffer &line) {
    for (int i = 0; i < header_lines; ++i) read_line(from, line);
    const size_t length = std::strlen(name);
    while (read_line(from, line) != nullptr) {
        const char *const start = line + std::strspn(line, " \t\n\v\f\r");
        if (std::strncmp(start, name, length) == 0) return start[length] == ':' ? start + length + 1 : nullptr;
    }
    return nullptr;
}

pm_net_dev_stats_t parse_counters(const char *text) {
    struct {
        unsigned long long bytes, packets;
        long errors, drops, fifo, frame, compressed, multicast;
    } rx{};
    struct {
        unsigned long long bytes, packets;
        long errors, drops, fifo, collisions, carrier, compressed;
    } tx{};
    std::sscanf(text, "%llu %llu %ld %ld %ld %ld %ld %ld %llu %llu %ld %ld %ld %ld %ld %ld", &rx.bytes, &rx.packets,
                &rx.errors, &rx.drops, &rx.fifo, &rx.frame, &rx.compressed, &rx.multicast, &tx.bytes, &tx.packets,
                &tx.errors, &tx.drops, &tx.fifo, &tx.collisions, &tx.carrier, &tx.compressed);
    const auto low_word = [](auto total) { return static_cast<uint32_t>(total); };
    pm_net_dev_stats_t stats{};
    stats.rx_packets = low_word(rx.packets);
    stats.tx_packets = low_word(tx.packets);
    stats.rx_bytes = low_word(rx.bytes);
    stats.tx_bytes = low_word(tx.bytes);
    stats.rx_errors = low_word(rx.errors);
    stats.tx_errors = low_word(tx.errors);
    stats.rx_dropped = low_word(rx.drops);
    stats.tx_dropped = low_word(tx.drops);
    stats.rx_multicast = low_word(rx.multicast);
    stats.rx_compressed = low_word(rx.compressed);
    stats.tx_compressed = low_word(tx.compressed);
    stats.rx_frame_errors = low_word(rx.frame);
    stats.rx_fifo_errors = low_word(rx.fifo);
    stats.tx_carrier_errors = low_word(tx.carrier);
    stats.tx_fifo_errors = low_word(tx.fifo);
    stats.collisions = low_word(tx.collisions);
    return stats;
}

}  // namespace

int32_t pm_get_proc_net_dev_stats(const char *name, pm_net_dev_stats_t *stats) {
    if (stats == nullptr || name == nullptr || *name == '\0') return -1;
    const open_file file(std::fopen("/proc/net/dev", "r"));
    if (file == nullptr) return -1;
    line_buffer line;
    const char *const counters = find_counters(file.get(), name, line);
    if (counters == nullptr) return -1;
    *stats = parse_counters(counters);
    return 0;
}
