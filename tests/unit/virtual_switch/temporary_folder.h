// SPDX-License-Identifier: Apache-2.0
// temporary_folder.h: a folder of a test's own, gone with it.
#ifndef TESTS_UNIT_VIRTUAL_SWITCH_TEMPORARY_FOLDER_H
#define TESTS_UNIT_VIRTUAL_SWITCH_TEMPORARY_FOLDER_H

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

class temporary_folder {
  public:
    temporary_folder() : path_("/tmp/switch_test_XXXXXX") {
        if (mkdtemp(path_.data()) == nullptr) std::abort();
    }
    ~temporary_folder() { std::filesystem::remove_all(path_); }
    temporary_folder(const temporary_folder &) = delete;
    temporary_folder &operator=(const temporary_folder &) = delete;

    [[nodiscard]] const std::string &path() const { return path_; }
    [[nodiscard]] std::string file(const std::string &name) const { return path_ + "/" + name; }

    [[nodiscard]] std::string content_of(const std::string &name) const {
        std::ifstream from(file(name));
        return {std::istreambuf_iterator<char>(from), {}};
    }

    // How many files there are.
    [[nodiscard]] size_t size() const {
        const std::filesystem::directory_iterator files(path_);
        return static_cast<size_t>(std::distance(begin(files), end(files)));
    }

  private:
    std::string path_;
};

#endif
