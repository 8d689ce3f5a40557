// SPDX-License-Identifier: Apache-2.0
#include "bench/exchange/latency.h"

#include <sys/socket.h>

#include <algorithm>
#include <list>

#include "bench/exchange/bare_sockets.h"
#include "bench/exchange/ours.h"
#include "bench/exchange/peers.h"

namespace bench {

namespace {

constexpr const char *bare_datagram = "bare datagram socket pair";
constexpr const char *named_datagram = "bare datagram sockets that any client can reach";

// A contest of exchanges, with the services that it takes.
class exchange_contest {
  public:
    void add(const rival &added) {
        if (added.serve) servers_.emplace_back(added.serve);
        contest_.add(added.name, added.connect());
    }
    [[nodiscard]] std::vector<result> run() { return contest_.run(); }

  private:
    std::list<server_process> servers_;
    contest contest_;
};

void add_bare_datagram(exchange_contest &contest, payload_sizes sizes) {
    contest.add(bare_pair(bare_datagram, SOCK_DGRAM, sizes));
}

void add_peers(exchange_contest &contest, const std::string &directory, payload_sizes sizes) {
    if constexpr (has_peers) {
        contest.add(sd_bus_peer(directory, sizes));
        contest.add(sd_bus_daemon(directory, sizes));
        contest.add(zeromq(directory, sizes));
    }
}

std::string title_of(const std::string &what, payload_sizes sizes) {
    return what + ": " + std::to_string(sizes.request) + " and " + std::to_string(sizes.answer) + " bytes";
}

// How often the time of the first row goes into that of the row whose name begins so; 0 when there is none.
double times_ours(const std::vector<result> &rows, const std::string &name) {
    const auto row = std::ranges::find_if(rows, [&](const result &each) { return each.name.starts_with(name); });
    return row == rows.end() ? 0 : row->took.median / rows.front().took.median;
}

void compare_with_peer(report &report, const std::vector<result> &rows, const std::string &name, double limit) {
    const double ratio = times_ours(rows, name);
    if (ratio > 0) report.at_least(name + ", of our query and parse of one port", ratio, limit);
}

void measure_one_port(report &report, const std::string &directory) {
    const payload_sizes sizes = sizes_of(one_port);
    exchange_contest contest;
    contest.add(our_client("query and parse", query_and_parse, one_port));
    contest.add(our_client("send-only, receive and parse", send_and_receive, one_port));
    contest.add(our_client("get over CMI, parse included", get_over_cmi, one_port));
    contest.add(our_client("transport alone", transport_alone, one_port));
    add_bare_datagram(contest, sizes);
    contest.add(bare_datagrams(named_datagram, directory, sizes));
    add_peers(contest, directory, sizes);
    if constexpr (has_peers) contest.add(netlink_link_query());
    const auto rows = contest.run();
    report.table(title_of("one port", sizes), "ns", rows);
    for (const char *const bare : {bare_datagram, named_datagram})
        report.at_most("query and parse of one port, of " + std::string(bare), 1 / times_ours(rows, bare), 1.15);
    compare_with_peer(report, rows, "sd-bus peer to peer", 1.6);
    compare_with_peer(report, rows, "sd-bus through dbus-daemon", 4);
    compare_with_peer(report, rows, "ZeroMQ", 4);
}

void measure_brief_list(report &report, const std::string &directory) {
    const payload_sizes sizes = sizes_of(brief_list);
    exchange_contest contest;
    contest.add(our_client("query and parse", query_and_parse_brief, brief_list));
    contest.add(our_client("transport alone", transport_alone, brief_list));
    add_bare_datagram(contest, sizes);
    add_peers(contest, directory, sizes);
    report.table(title_of("brief list of 48 ports", sizes), "ns", contest.run());
}

void add_full_queries(exchange_contest &contest, const workload &asked) {
    contest.add(our_client("query, nothing parsed", query, asked));
    contest.add(our_client("query and parse", query_and_parse, asked));
    contest.add(our_client("transport alone", transport_alone, asked));
}

void measure_full_list(report &report, const std::string &directory) {
    const payload_sizes sizes = sizes_of(full_list);
    exchange_contest contest;
    add_full_queries(contest, full_list);
    add_bare_datagram(contest, sizes);
    add_peers(contest, directory, sizes);
    report.table(title_of("528 ports with 12 elements each", sizes), "ns", contest.run());
}

void measure_large_list(report &report, const std::string &directory) {
    const payload_sizes sizes = sizes_of(large_list);
    exchange_contest contest;
    add_full_queries(contest, large_list);
    add_bare_datagram(contest, sizes);
    contest.add(bare_pair("bare sequenced-packet socket pair", SOCK_SEQPACKET, sizes));
    contest.add(bare_pair("bare stream socket pair", SOCK_STREAM, sizes));
    add_peers(contest, directory, sizes);
    const auto rows = contest.run();
    report.table(title_of("200 KB", sizes), "ns", rows);
    const double best = std::min(
        {times_ours(rows, bare_datagram), times_ours(rows, "bare sequenced-packet"), times_ours(rows, "bare stream")});
    report.at_most("query of 200 KB, of the best bare socket pair", 1 / best, 1.2);
}

}  // namespace

void measure_latency(report &report, const std::string &directory) {
    const server_process port_service(serve_ports);
    measure_one_port(report, directory);
    measure_brief_list(report, directory);
    measure_full_list(report, directory);
    measure_large_list(report, directory);
}

}  // namespace bench
