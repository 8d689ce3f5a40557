// SPDX-License-Identifier: Apache-2.0
// paging.cc: what a port costs a caller that wants every port of a chassis in full, by the number of ports: over the
// virtual switch's own services, from the request to decoded records.
//
// One answer: the library asks for all ports at once and parses. Pages: what pmctl does, its first question for which
// ports there are included. Both ends run on one core.
#include <malloc.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include <fmt/core.h>

#include "bench/support/chassis_file.h"
#include "bench/support/report.h"
#include "bench/support/temporary_runtime_dir.h"
#include "bench/support/virtual_switch.h"
#include "platform_dev/mts_dev.h"
#include "port_mgr/port_mgr_common.h"
#include "switch/switch_client.h"

namespace {

using bench::require;
using bench::result;

struct chassis_size {
    unsigned modules;
    unsigned ports_of_module;

    [[nodiscard]] unsigned ports() const { return modules * ports_of_module; }
};

constexpr chassis_size chassis_sizes[] = {{1, 48}, {2, 48}, {4, 48}, {8, 48}, {11, 48}, {11, 96}, {15, 128}, {30, 128}};
constexpr chassis_size compared_size{11, 48};
constexpr unsigned most_ports_in_one_answer = 1056;  // a round of more takes seconds

// A switch in a run-time directory of its own, and both ways to ask it.
class running_switch {
  public:
    explicit running_switch(const chassis_size &size)
        : ports_(size.ports()),
          daemon_(bench::start_virtual_switch(
              PM_VIRTUAL_SWITCH,
              bench::write_chassis_file(directory_.path(), size.modules, size.ports_of_module).c_str())),
          handle_(mts_dev_open()) {
        require(handle_ != 0, "mts_dev_open");
    }
    ~running_switch() { mts_dev_close(handle_); }
    running_switch(const running_switch &) = delete;
    running_switch &operator=(const running_switch &) = delete;

    [[nodiscard]] unsigned ports() const { return ports_; }

    void ask_at_once() const {
        mts_msg_t answer;
        uint32_t count = 0;
        pm_port_info_t *records = nullptr;
        require(pm_get_port_info(handle_, PM_PORT_INFO_MODE_ALL, 0, 0, 0, 0, 0, nullptr, &answer) == 0,
                "pm_get_port_info");
        require(pm_parse_get_port_info(&answer, &count, &records) == 0 && count == ports_, "pm_parse_get_port_info");
        require(mts_drop(handle_, &answer) == 0, "mts_drop");
        std::free(records);
    }

    void ask_in_pages(const port_mgr::paging &by = {}) { require(client_.ports(by).size() == ports_, "ports"); }

  private:
    unsigned ports_;
    bench::temporary_runtime_dir directory_;  // the others find it in the environment
    bench::child_process daemon_;
    mts_handle_t handle_;
    pmctl::switch_client client_;
};

using switches = std::vector<std::unique_ptr<running_switch>>;

std::vector<result> measure_pages(bench::report &report, const switches &all) {
    bench::contest contest;
    for (const auto &each : all)
        contest.add(
            fmt::format("{} ports", each->ports()), [&each] { each->ask_in_pages(); }, each->ports());
    constexpr double many_calls = 0.02;  // also of the largest size
    const auto rows = contest.run(21, many_calls);
    const port_mgr::paging usual;
    report.list(fmt::format("in pages of {}, {} under way", usual.ports_of_page, usual.pages_under_way), "ns a port",
                rows);
    const auto by_cost = [](const result &a, const result &b) { return a.took.median < b.took.median; };
    const auto [least, most] = std::minmax_element(rows.begin(), rows.end(), by_cost);
    report.at_most("cost of a port, between sizes, %", (most->took.median / least->took.median - 1) * 100, 15);
    report.at_most("most that a port costs, ns", most->took.median, 1300);
    return rows;
}

std::vector<result> measure_one_answer(bench::report &report, const switches &all) {
    bench::contest contest;
    for (const auto &each : all) {
        if (each->ports() > most_ports_in_one_answer) continue;
        contest.add(
            fmt::format("{} ports", each->ports()), [&each] { each->ask_at_once(); }, each->ports());
    }
    const auto rows = contest.run(7);
    report.list("in one answer", "ns a port", rows);
    return rows;
}

void compare_both_ways(bench::report &report) {
    running_switch compared(compared_size);
    bench::contest contest;
    contest.add(
        "pages", [&] { compared.ask_in_pages(); }, compared.ports());
    contest.add(
        "one answer", [&] { compared.ask_at_once(); }, compared.ports());
    const auto rows = contest.run();
    report.table(fmt::format("{} ports", compared.ports()), "ns a port", rows);
    report.at_least("one answer, of pages", rows[1].took.median / rows[0].took.median, 8);
}

void sweep(bench::report &report) {
    constexpr size_t page_sizes[] = {4, 6, 8, 12, 16, 24, 32, 64};
    constexpr size_t windows[] = {1, 2, 4, 8};
    running_switch swept(compared_size);
    bench::contest contest;
    for (const size_t page : page_sizes)
        for (const size_t window : windows)
            contest.add(
                "",
                [&swept, page, window] {
                    swept.ask_in_pages({page, window});
                },
                swept.ports());
    const auto results = contest.run(9);
    auto next = results.begin();
    std::vector<bench::grid_row> rows;
    for (const size_t page : page_sizes) {
        bench::grid_row &row = rows.emplace_back(bench::grid_row{fmt::format("pages of {}", page), {}});
        for (size_t i = 0; i < std::size(windows); ++i) row.cells.push_back((next++)->took);
    }
    std::vector<std::string> columns;
    for (const size_t window : windows) columns.push_back(fmt::format("{} under way", window));
    report.grid(fmt::format("{} ports, ns a port", swept.ports()), columns, rows);
}

bench::plot_curve curve_of(const std::string &name, const switches &all, const std::vector<result> &rows) {
    bench::plot_curve curve{name, {}};
    for (size_t i = 0; i < rows.size(); ++i)
        curve.points.push_back({static_cast<double>(all[i]->ports()), rows[i].took.median});
    return curve;
}

// Memory that was used once stays with the program, so that all sizes find theirs alike: else the kernel would hand out
// and take back that of the large ones each time.
void keep_memory() {
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, INT_MAX);
}

}  // namespace

int main(int argc, char **argv) {
    bench::pin_to_one_core();
    keep_memory();
    bench::report report(argc, argv, "every port of a chassis, both ends on one core");
    switches all;
    for (const chassis_size &size : chassis_sizes) all.push_back(std::make_unique<running_switch>(size));
    const auto pages = measure_pages(report, all);
    const auto one_answer = measure_one_answer(report, all);
    compare_both_ways(report);
    sweep(report);
    report.image("paging.svg", {"What a port costs, asked for with all others",
                                "ports of the chassis",
                                "nanoseconds a port, everything included",
                                {curve_of("one answer", all, one_answer), curve_of("in pages", all, pages)}});
    report.write();
    return EXIT_SUCCESS;
}
