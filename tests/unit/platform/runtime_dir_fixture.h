// SPDX-License-Identifier: Apache-2.0
// runtime_dir_fixture.h: tests in a run-time directory of their own.
#ifndef TESTS_UNIT_PLATFORM_RUNTIME_DIR_FIXTURE_H
#define TESTS_UNIT_PLATFORM_RUNTIME_DIR_FIXTURE_H

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <string>

// Makes an empty run-time directory and names it in the environment; it goes with the object.
class temporary_runtime_dir {
  public:
    temporary_runtime_dir() {
        EXPECT_NE(mkdtemp(path_.data()), nullptr);
        use();
    }
    ~temporary_runtime_dir() { std::filesystem::remove_all(path_); }
    temporary_runtime_dir(const temporary_runtime_dir &) = delete;
    temporary_runtime_dir &operator=(const temporary_runtime_dir &) = delete;

    void use() const { setenv("MTS_RUNTIME_DIR", path_.c_str(), 1); }
    std::string file(const char *name) const { return path_ + "/" + name; }

  private:
    std::string path_ = "/tmp/pm-db-XXXXXX";
};

class runtime_dir_test : public testing::Test {
  protected:
    temporary_runtime_dir directory_;
};

#endif
