// SPDX-License-Identifier: Apache-2.0
#include "output/counter_members.h"

#include <algorithm>

#include "output/column_table.h"
#include "output/member_place.h"

#define PLACE(member) PLACE_IN(counted_interface, member)
#define TRAFFIC(class, member) PLACE(stats.traffic[PM_ETH_TRAFFIC_##class].member)
#define HOST(member) PLACE_IN(host_interface, stats.member)

namespace pmctl {
namespace {

using enum member_format;

constexpr record_member general[] = {
    {"Interface", "if_index", PLACE(if_index), interface},
    {"Counting (s)", "seconds_since_clear", PLACE(stats.seconds_since_clear), number},
};

#define TRAFFIC_MEMBERS(title, key, class)                                  \
    {title " bytes", key "_bytes", TRAFFIC(class, octets), number},         \
        {title " frames", key "_frames", TRAFFIC(class, frames), number},   \
        {title " errors", key "_errors", TRAFFIC(class, errors), number}, { \
        title " drops", key "_drops", TRAFFIC(class, drops), number         \
    }

constexpr record_member traffic[] = {
    TRAFFIC_MEMBERS("Received", "rx", RX),
    TRAFFIC_MEMBERS("Transmitted", "tx", TX),
    TRAFFIC_MEMBERS("Received unicast", "rx_unicast", RX_UNICAST),
    TRAFFIC_MEMBERS("Transmitted unicast", "tx_unicast", TX_UNICAST),
    TRAFFIC_MEMBERS("Received multicast", "rx_multicast", RX_MULTICAST),
    TRAFFIC_MEMBERS("Transmitted multicast", "tx_multicast", TX_MULTICAST),
    TRAFFIC_MEMBERS("Received broadcast", "rx_broadcast", RX_BROADCAST),
    TRAFFIC_MEMBERS("Transmitted broadcast", "tx_broadcast", TX_BROADCAST),
    {"Received pause frames", "rx_pause_frames", PLACE(stats.rx_pause_frames), number},
    {"Transmitted pause frames", "tx_pause_frames", PLACE(stats.tx_pause_frames), number},
};
#undef TRAFFIC_MEMBERS

#define RATE_MEMBERS(direction)                                                                          \
    {                                                                                                    \
        {"Bytes/s", #direction "_bytes_per_second", PLACE(direction.bytes), number, {}, no_rate},        \
            {"Frames/s", #direction "_frames_per_second", PLACE(direction.frames), number, {}, no_rate}, \
            {"Errors/s", #direction "_errors_per_second", PLACE(direction.errors), number, {}, no_rate}, \
    }

constexpr record_member rx_rates[] = RATE_MEMBERS(rx);
constexpr record_member tx_rates[] = RATE_MEMBERS(tx);
#undef RATE_MEMBERS

constexpr record_member rx_errors[] = {
    {"CRC", "crc_errors", PLACE(stats.crc_errors), number},
    {"Alignment", "alignment_errors", PLACE(stats.alignment_errors), number},
    {"Symbol", "symbol_errors", PLACE(stats.symbol_errors), number},
    {"Undersize", "undersize_frames", PLACE(stats.undersize_frames), number},
    {"Oversize", "oversize_frames", PLACE(stats.oversize_frames), number},
    {"Fragments", "fragments", PLACE(stats.fragments), number},
    {"Jabbers", "jabbers", PLACE(stats.jabbers), number},
    {"Overruns", "rx_overruns", PLACE(stats.rx_overruns), number},
};

constexpr record_member tx_errors[] = {
    {"Underruns", "tx_underruns", PLACE(stats.tx_underruns), number},
    {"Collisions", "collisions", PLACE(stats.collisions), number},
    {"Late", "late_collisions", PLACE(stats.late_collisions), number},
    {"Excessive", "excessive_collisions", PLACE(stats.excessive_collisions), number},
    {"Deferred", "deferred_frames", PLACE(stats.deferred_frames), number},
    {"Carrier losses", "carrier_losses", PLACE(stats.carrier_losses), number},
    {"Link resets", "link_resets", PLACE(stats.link_resets), number},
};

constexpr member_group groups[] = {
    {"General", general},         {"Traffic", traffic},          {"Receive rates", rx_rates},
    {"Transmit rates", tx_rates}, {"Receive errors", rx_errors}, {"Transmit errors", tx_errors},
};

// The totals of one direction as columns.
#define TOTAL_COLUMNS(CLASS, direction)                                                                   \
    {                                                                                                     \
        {"Bytes", {}, TRAFFIC(CLASS, octets), number}, {"Frames", {}, TRAFFIC(CLASS, frames), number},    \
            {"Unicast", {}, TRAFFIC(CLASS##_UNICAST, frames), number},                                    \
            {"Multicast", {}, TRAFFIC(CLASS##_MULTICAST, frames), number},                                \
            {"Broadcast", {}, TRAFFIC(CLASS##_BROADCAST, frames), number},                                \
            {"Pause", {}, PLACE(stats.direction##_pause_frames), number},                                 \
            {"Errors", {}, TRAFFIC(CLASS, errors), number}, {"Drops", {}, TRAFFIC(CLASS, drops), number}, \
    }
constexpr record_member rx_totals[] = TOTAL_COLUMNS(RX, rx);
constexpr record_member tx_totals[] = TOTAL_COLUMNS(TX, tx);
#undef TOTAL_COLUMNS

using members = std::span<const record_member>;

constexpr members interface_column(general, 1);

sheet table_of(const char *title, const record_list &records, std::initializer_list<members> parts) {
    std::vector<record_member> columns;
    for (const members &part : parts) columns.insert(columns.end(), part.begin(), part.end());
    sheet table = column_sheet(columns, records);
    table.title = title;
    return table;
}

record_list those_with_any(members counts, record_list records) {
    std::erase_if(records, [counts](const auto &record) {
        return std::all_of(counts.begin(), counts.end(),
                           [&record](const record_member &each) { return number_of(each, record) == 0; });
    });
    return records;
}

constexpr record_member host_general[] = {
    {"Interface", "name", PLACE_IN(host_interface, name), text},
};

constexpr record_member host_received[] = {
    {"Bytes", "rx_bytes", HOST(rx_bytes), number},
    {"Packets", "rx_packets", HOST(rx_packets), number},
    {"Multicast packets", "rx_multicast", HOST(rx_multicast), number},
    {"Compressed packets", "rx_compressed", HOST(rx_compressed), number},
    {"Errors", "rx_errors", HOST(rx_errors), number},
    {"Dropped packets", "rx_dropped", HOST(rx_dropped), number},
    {"Framing errors", "rx_frame_errors", HOST(rx_frame_errors), number},
    {"FIFO overruns", "rx_fifo_errors", HOST(rx_fifo_errors), number},
};

constexpr record_member host_transmitted[] = {
    {"Bytes", "tx_bytes", HOST(tx_bytes), number},
    {"Packets", "tx_packets", HOST(tx_packets), number},
    {"Compressed packets", "tx_compressed", HOST(tx_compressed), number},
    {"Errors", "tx_errors", HOST(tx_errors), number},
    {"Dropped packets", "tx_dropped", HOST(tx_dropped), number},
    {"FIFO underruns", "tx_fifo_errors", HOST(tx_fifo_errors), number},
    {"Carrier losses", "tx_carrier_errors", HOST(tx_carrier_errors), number},
    {"Collisions", "collisions", HOST(collisions), number},
};

constexpr member_group host_groups[] = {
    {"General", host_general},
    {"Received", host_received},
    {"Transmitted", host_transmitted},
};

}  // namespace

std::span<const member_group> counter_groups() { return groups; }

std::vector<sheet> counter_sheets(const std::vector<counted_interface> &interfaces, bool with_rates) {
    const record_list records = records_of(std::span(interfaces));
    const auto if_measured = [with_rates](members rates) { return with_rates ? rates : members(); };
    return {table_of("Received", records, {interface_column, if_measured(rx_rates), rx_totals}),
            table_of("Transmitted", records, {interface_column, if_measured(tx_rates), tx_totals}),
            table_of("Receive errors", those_with_any(rx_errors, records), {general, rx_errors}),
            table_of("Transmit errors", those_with_any(tx_errors, records), {general, tx_errors})};
}

std::span<const member_group> host_interface_groups() { return host_groups; }

}  // namespace pmctl
