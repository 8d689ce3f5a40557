// SPDX-License-Identifier: Apache-2.0
// chassis_file.h: a chassis of as many ports as a benchmark wants.
#ifndef BENCH_SUPPORT_CHASSIS_FILE_H
#define BENCH_SUPPORT_CHASSIS_FILE_H

#include <fstream>
#include <string>

#include "bench/support/measure.h"

namespace bench {

// Writes the file of a chassis whose modules have Ethernet ports into the directory. Returns its path. They send 13
// elements each, next to the 12 of the answers that other benchmarks decode.
inline std::string write_chassis_file(const std::string &directory, unsigned modules, unsigned ports_of_module) {
    std::string path = directory + "/chassis.toml";
    std::ofstream file(path);
    file << "[chassis]\nname = \"bench\"\ntype = 6\nslots = " << modules << '\n';
    for (unsigned slot = 1; slot <= modules; ++slot)
        file << "[[module]]\nslot = " << slot << "\nkind = \"ethernet\"\nports = " << ports_of_module << '\n';
    file.close();
    require(file.good(), path.c_str());
    return path;
}

}  // namespace bench

#endif
