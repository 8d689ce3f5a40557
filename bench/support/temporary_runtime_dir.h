// SPDX-License-Identifier: Apache-2.0
// temporary_runtime_dir.h: a run-time directory that lasts as long as the benchmark.
#ifndef BENCH_SUPPORT_TEMPORARY_RUNTIME_DIR_H
#define BENCH_SUPPORT_TEMPORARY_RUNTIME_DIR_H

#include <cstdlib>
#include <filesystem>
#include <string>

#include "bench/support/measure.h"

namespace bench {

class temporary_runtime_dir {
  public:
    temporary_runtime_dir() {
        require(mkdtemp(path_.data()) != nullptr, "mkdtemp");
        require(setenv("MTS_RUNTIME_DIR", path_.c_str(), 1) == 0, "setenv");
    }
    ~temporary_runtime_dir() { std::filesystem::remove_all(path_); }
    temporary_runtime_dir(const temporary_runtime_dir &) = delete;
    temporary_runtime_dir &operator=(const temporary_runtime_dir &) = delete;
    [[nodiscard]] const std::string &path() const { return path_; }

  private:
    std::string path_ = "/tmp/mts-bench-XXXXXX";
};

}  // namespace bench

#endif
