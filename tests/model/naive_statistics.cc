// SPDX-License-Identifier: Apache-2.0
#include "naive_statistics.h"

#include <cctype>
#include <cstdio>

#include "naive_bytes.h"
#include "record_members.h"

namespace model {
namespace {

using support::bytes;

pm_eth_stats_t in_host_order(const bytes &wire) {
    pm_eth_stats_t stats;
    for (size_t i = 0; i < 320; ++i) reinterpret_cast<uint8_t *>(&stats)[i] = wire[i];
    for (size_t i = 0; i < 8; ++i) {
        const uint8_t *const block = &wire[32 + 24 * i];
        stats.traffic[i].octets = number64(block);
        stats.traffic[i].frames = number64(block + 8);
        stats.traffic[i].errors = number32(block + 16);
        stats.traffic[i].drops = number32(block + 20);
    }
    stats.seconds_since_clear = number32(&wire[224]);
    stats.rx_pause_frames = number64(&wire[232]);
    stats.tx_pause_frames = number64(&wire[240]);
    stats.crc_errors = number32(&wire[248]);
    stats.alignment_errors = number32(&wire[252]);
    stats.symbol_errors = number32(&wire[256]);
    stats.undersize_frames = number32(&wire[260]);
    stats.oversize_frames = number32(&wire[264]);
    stats.fragments = number32(&wire[268]);
    stats.jabbers = number32(&wire[272]);
    stats.rx_overruns = number32(&wire[276]);
    stats.tx_underruns = number32(&wire[280]);
    stats.collisions = number32(&wire[284]);
    stats.late_collisions = number32(&wire[288]);
    stats.excessive_collisions = number32(&wire[292]);
    stats.deferred_frames = number32(&wire[296]);
    stats.carrier_losses = number32(&wire[300]);
    stats.link_resets = number32(&wire[304]);
    return stats;
}

// A table as it is read: no line has more than 511 characters, the rest of one is a line of its own.
std::vector<std::string> lines_of(const std::string &table) {
    std::vector<std::string> lines(1);
    for (const char character : table) {
        lines.back() += character;
        if (character == '\n' || lines.back().size() == 511) lines.emplace_back();
    }
    if (lines.back().empty()) lines.pop_back();
    return lines;
}

bool is_space(char character) { return std::isspace(static_cast<unsigned char>(character)) != 0; }

bool is_digit(char character) { return character >= '0' && character <= '9'; }

// The numbers that a text begins with, to the sixteenth, cut to 32 bits; those that are not there are 0.
std::vector<uint32_t> numbers_of(const std::string &text) {
    std::vector<uint32_t> numbers;
    size_t at = 0;
    while (numbers.size() < 16) {
        while (at < text.size() && is_space(text[at])) ++at;
        const bool is_negative = at < text.size() && text[at] == '-';
        if (is_negative) ++at;
        if (at == text.size() || !is_digit(text[at])) break;
        uint32_t number = 0;
        for (; at < text.size() && is_digit(text[at]); ++at)
            number = number * 10 + static_cast<uint32_t>(text[at] - '0');
        numbers.push_back(is_negative ? 0 - number : number);
    }
    numbers.resize(16);
    return numbers;
}

pm_net_dev_stats_t counters_of(const std::vector<uint32_t> &column) {
    pm_net_dev_stats_t stats;
    stats.rx_packets = column[1];
    stats.tx_packets = column[9];
    stats.rx_bytes = column[0];
    stats.tx_bytes = column[8];
    stats.rx_errors = column[2];
    stats.tx_errors = column[10];
    stats.rx_dropped = column[3];
    stats.tx_dropped = column[11];
    stats.rx_multicast = column[7];
    stats.rx_compressed = column[6];
    stats.tx_compressed = column[15];
    stats.rx_frame_errors = column[5];
    stats.rx_fifo_errors = column[4];
    stats.tx_carrier_errors = column[14];
    stats.tx_fifo_errors = column[12];
    stats.collisions = column[13];
    return stats;
}

std::string line(const char *format, if_index_t interface) {
    char text[200];
    std::snprintf(text, sizeof text, format, interface);
    return text;
}

}  // namespace

eth_outcome ethernet_counters(const std::optional<bytes> &payload, if_index_t interface) {
    eth_outcome result{0, untouched<pm_eth_stats_t>()};
    if (payload && payload->size() >= 12 && number16(&(*payload)[10]) != 0) {
        result.status = -1;
        result.printed = line("Linecard unable to communicate with port for port %x\n", interface);
    } else if (!payload || payload->size() != 320) {
        result.reporters = {"pm_get_clear_eth_stats"};
    } else if (number32(&(*payload)[24]) == 0) {
        for (size_t i = 0; i < 320; ++i) reinterpret_cast<uint8_t *>(&result.stats)[i] = (*payload)[i];
        result.status = static_cast<int32_t>(rejected);
        result.printed = line("Linecard returned error for port %x\n", interface);
    } else {
        result.stats = in_host_order(*payload);
    }
    return result;
}

net_dev_outcome net_dev_counters(const std::string &table, const std::string &name) {
    const net_dev_outcome nothing{-1, untouched<pm_net_dev_stats_t>()};
    if (name.empty()) return nothing;
    const std::vector<std::string> lines = lines_of(table);
    for (size_t i = 2; i < lines.size(); ++i) {
        size_t start = 0;
        while (start < lines[i].size() && is_space(lines[i][start])) ++start;
        const std::string text = lines[i].substr(start);
        if (text.substr(0, name.size()) != name) continue;
        if (text.size() == name.size() || text[name.size()] != ':') return nothing;
        return {0, counters_of(numbers_of(text.substr(name.size() + 1)))};
    }
    return nothing;
}

}  // namespace model
