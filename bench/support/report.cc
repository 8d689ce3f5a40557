// SPDX-License-Identifier: Apache-2.0
#include "bench/support/report.h"

#include <climits>
#include <fstream>

namespace bench {
namespace {

nlohmann::ordered_json json_of(const std::string &title, const std::string &unit, const std::vector<result> &rows) {
    nlohmann::ordered_json table = {{"title", title}, {"unit", unit}, {"rows", nlohmann::ordered_json::array()}};
    for (const auto &[name, took] : rows)
        table["rows"].push_back({{"name", name}, {"median", took.median}, {"spread", took.spread}});
    return table;
}

nlohmann::ordered_json json_of(const std::string &title, const std::vector<std::string> &columns,
                               const std::vector<grid_row> &rows) {
    nlohmann::ordered_json table = {{"title", title}, {"columns", columns}, {"rows", nlohmann::ordered_json::array()}};
    for (const auto &[name, cells] : rows) {
        nlohmann::ordered_json row = {{"name", name}, {"cells", nlohmann::ordered_json::array()}};
        for (const auto &[median, spread] : cells) row["cells"].push_back({{"median", median}, {"spread", spread}});
        table["rows"].push_back(std::move(row));
    }
    return table;
}

[[noreturn]] void refuse_usage(const char *program) {
    std::fprintf(stderr, "usage: %s [--json FILE] [--images DIRECTORY]\n", program);
    std::exit(2);
}

void write_file(const std::string &path, const std::string &text) {
    std::ofstream file(path);
    file << text;
    file.close();
    require(file.good(), path.c_str());
}

void print_row(const result &row) {
    std::printf("  %-66s %12.2f %10.2f", row.name.c_str(), row.took.median, row.took.spread);
}

}  // namespace

report::report(int argc, char **argv, std::string subject) {
    for (int i = 1; i < argc; i += 2) {
        std::string *const value = i + 1 < argc ? option(argv[i]) : nullptr;
        if (value == nullptr) refuse_usage(argv[0]);
        *value = argv[i + 1];
    }
    const size_t width = sizeof(void *) * CHAR_BIT;
    std::printf("\n== %s, %zu bits ==\n", subject.c_str(), width);
    document_ = {{"subject", std::move(subject)},
                 {"width", width},
                 {"tables", nlohmann::ordered_json::array()},
                 {"goals", nlohmann::ordered_json::array()}};
}

// Where the value of an option goes, or null when there is no such option.
std::string *report::option(std::string_view name) {
    if (name == "--json") return &json_file_;
    if (name == "--images") return &images_;
    return nullptr;
}

void report::table(const std::string &title, const std::string &unit, const std::vector<result> &rows) {
    std::printf("\n  %-66s %12s %10s %8s\n", title.c_str(), unit.c_str(), "+-", "ratio");
    for (const result &row : rows) {
        print_row(row);
        std::printf(" %8.2f\n", row.took.median / rows.front().took.median);
    }
    document_["tables"].push_back(json_of(title, unit, rows));
}

void report::list(const std::string &title, const std::string &unit, const std::vector<result> &rows) {
    std::printf("\n  %-66s %12s %10s\n", title.c_str(), unit.c_str(), "+-");
    for (const result &row : rows) {
        print_row(row);
        std::printf("\n");
    }
    document_["tables"].push_back(json_of(title, unit, rows));
}

void report::grid(const std::string &title, const std::vector<std::string> &columns,
                  const std::vector<grid_row> &rows) {
    std::printf("\n  %-40s", title.c_str());
    for (const std::string &column : columns) std::printf(" %18s", column.c_str());
    std::printf("\n");
    for (const auto &[name, cells] : rows) {
        std::printf("  %-40s", name.c_str());
        for (const auto &[median, spread] : cells) std::printf(" %9.2f +-%7.2f", median, spread);
        std::printf("\n");
    }
    document_["tables"].push_back(json_of(title, columns, rows));
}

void report::at_most(const std::string &what, double value, double limit) {
    goal(what, value, "at most", limit, value <= limit);
}

void report::at_least(const std::string &what, double value, double limit) {
    goal(what, value, "at least", limit, value >= limit);
}

void report::goal(const std::string &what, double value, const char *bound, double limit, bool is_met) {
    std::printf("  goal: %s: %.2f, %s %.2f: %s\n", what.c_str(), value, bound, limit, is_met ? "met" : "MISSED");
    document_["goals"].push_back(
        {{"what", what}, {"value", value}, {"bound", bound}, {"limit", limit}, {"met", is_met}});
}

void report::image(const std::string &file, const log_plot &plot) const {
    if (!images_.empty()) write_file(images_ + '/' + file, svg_of(plot));
}

void report::write() const {
    std::fflush(stdout);
    if (!json_file_.empty()) write_file(json_file_, document_.dump(2) + '\n');
}

}  // namespace bench
