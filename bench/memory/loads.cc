// SPDX-License-Identifier: Apache-2.0
#include "bench/memory/loads.h"

#include <algorithm>
#include <cstdio>
#include <random>
#include <string>

#include "bench/memory/library_files.h"

namespace bench {

namespace {

// What the loader program prints.
std::string run_loader(const std::string &arguments) {
    FILE *const program = popen(("exec " LOADER " " + arguments).c_str(), "re");
    require(program != nullptr, "popen");
    std::string text;
    for (int byte = std::fgetc(program); byte != EOF; byte = std::fgetc(program)) text += static_cast<char>(byte);
    require(pclose(program) == 0, LOADER);
    return text;
}

std::string platform() {
    std::string all;
    for (const char *name : platform_libraries) all += ' ' + library_file(name);
    return all;
}

struct load {
    std::string name;
    std::string arguments;
    std::vector<double> samples{};
};

// Kilobytes behind a word of the kernel's.
double kilobytes_of(const std::string &text, const std::string &word) {
    const size_t at = text.find(word);
    require(at != std::string::npos, word.c_str());
    return std::stod(text.substr(at + word.size()));
}

void report_resident_size(report &report, const char *title, const char *word) {
    const auto row = [word](const char *name, const std::string &libraries) {
        return result{name, {kilobytes_of(run_loader("resident" + libraries), word), 0}};
    };
    const stripped_copy ours(our_library);
    report.list(title, "kB",
                {row("a program in C", ""), row("with the platform's libraries", platform()),
                 row("with this library, too", platform() + ' ' + ours.path())});
}

}  // namespace

void measure_load_time(report &report) {
    const stripped_copy ours(our_library);
    const stripped_copy empty("libbench_empty.so");
    const stripped_copy empty_cxx("libbench_empty_cxx.so");
    load loads[] = {{"our library, its platform's libraries loaded before", ours.path() + platform()},
                    {"an empty object that needs libc, these loaded before", empty.path() + platform()},
                    {"the same in a program without other libraries", empty.path()},
                    {"an empty object that needs libstdc++, in such a program", empty_cxx.path()}};
    constexpr int rounds = 201;
    std::vector<load *> order;
    for (load &each : loads) order.push_back(&each);
    std::minstd_rand
        random;  // what runs before a load leaves the caches to it: that is to be a different one each time
    for (int i = 0; i < rounds; ++i) {
        std::ranges::shuffle(order, random);
        for (load *each : order) each->samples.push_back(std::stod(run_loader("time " + each->arguments)));
    }
    std::vector<result> rows;
    for (const load &each : loads) rows.push_back({each.name, summary_of(each.samples)});
    report.table("loading and closing", "ns", rows);
    if (sizeof(void *) == 4)
        report.at_most("loading, of an empty object", rows[0].took.median / rows[1].took.median, 1.3);
}

void measure_resident_size(report &report) {
    report_resident_size(report, "resident", "Rss:");
    report_resident_size(report, "resident, of its own", "Anonymous:");
}

}  // namespace bench
