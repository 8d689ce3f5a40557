// SPDX-License-Identifier: Apache-2.0
// startup.cc: how long a pmctl command takes from its start to its end, beside programs that do less.
//
// The programs, the virtual switch that answers them and this one share one core.
#include "bench/startup/program_run.h"
#include "bench/support/chassis_file.h"
#include "bench/support/report.h"
#include "bench/support/temporary_runtime_dir.h"
#include "bench/support/virtual_switch.h"

namespace {

constexpr unsigned modules = 11;
constexpr unsigned ports_of_module = 48;
constexpr int rounds = 301;

// What one run took is told in microseconds.
std::vector<bench::result> in_microseconds(std::vector<bench::result> results) {
    for (bench::result &each : results) each.took = {each.took.median / 1e3, each.took.spread / 1e3};
    return results;
}

void measure(bench::report &report) {
    const std::vector<std::string> brief = {PMCTL, "show", "interface", "brief"};
    bench::contest contest;
    contest.add("pmctl show interface brief", [&] { bench::run(brief); });
    contest.add("pmctl show interface brief, into a pipe",
                [&] { bench::require(bench::run_and_read(brief) > modules * ports_of_module, PMCTL); });
    contest.add("pmctl --version", [] { bench::run({PMCTL, "--version"}); });
    contest.add("floor: the same bytes exchanged, nothing else", [] { bench::run({FLOOR}); });
    contest.add("empty program, C", [] { bench::run({EMPTY_C}); });
    contest.add("empty program, shared C++ library", [] { bench::run({EMPTY_CXX}); });
    const auto rows = in_microseconds(contest.run(rounds, 0));
    report.table("start to end, " + std::to_string(modules * ports_of_module) + " ports", "us", rows);
    report.at_most("pmctl show interface brief, of the floor", rows[0].took.median / rows[3].took.median, 3);
}

}  // namespace

int main(int argc, char **argv) {
    bench::report report(argc, argv, "start-up of pmctl, with the switch on one core");
    bench::pin_to_one_core();
    const bench::temporary_runtime_dir directory;
    const std::string chassis = bench::write_chassis_file(directory.path(), modules, ports_of_module);
    const bench::child_process daemon = bench::start_virtual_switch(PM_VIRTUAL_SWITCH, chassis.c_str());
    measure(report);
    report.write();
    return EXIT_SUCCESS;
}
