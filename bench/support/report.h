// SPDX-License-Identifier: Apache-2.0
// report.h: what a benchmark tells: tables of results and whether goals are met, for readers and as JSON.
#ifndef BENCH_SUPPORT_REPORT_H
#define BENCH_SUPPORT_REPORT_H

#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "bench/support/measure.h"
#include "bench/support/svg_plot.h"

namespace bench {

// Figures of several kinds about one thing.
struct grid_row {
    std::string name;
    std::vector<figure> cells;
};

class report {
  public:
    // Command line: [--json FILE] [--images DIRECTORY]. Ends the program when it is another one.
    report(int argc, char **argv, std::string subject);

    // Prints results of one unit. The first stands for ours: each has its ratio to it beside.
    void table(const std::string &title, const std::string &unit, const std::vector<result> &rows);

    // Prints results that are no rivals: no ratios.
    void list(const std::string &title, const std::string &unit, const std::vector<result> &rows);

    // Prints rows that have one cell for each column; a column names its unit.
    void grid(const std::string &title, const std::vector<std::string> &columns, const std::vector<grid_row> &rows);

    // Prints what is to be reached, and whether it is.
    void at_most(const std::string &what, double value, double limit);
    void at_least(const std::string &what, double value, double limit);

    // Draws results into a file of the directory for images, if one was given.
    void image(const std::string &file, const log_plot &plot) const;

    // Writes the JSON file, if one was asked for.
    void write() const;

  private:
    std::string *option(std::string_view name);
    void goal(const std::string &what, double value, const char *bound, double limit, bool is_met);

    std::string json_file_;
    std::string images_;
    nlohmann::ordered_json document_;
};

}  // namespace bench

#endif
