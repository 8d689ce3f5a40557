// SPDX-License-Identifier: Apache-2.0
#include "chassis/chassis_file.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <stdexcept>

#include "chassis/chassis_error.h"

namespace virtual_switch {
namespace {

constexpr size_t largest_file = 1024 * 1024;

struct file_closer {
    void operator()(std::FILE *file) const { std::fclose(file); }
};

std::string read_file(const std::string &path) {
    const std::unique_ptr<std::FILE, file_closer> file(std::fopen(path.c_str(), "re"));
    if (file == nullptr) throw chassis_error(1, "file", std::strerror(errno));
    std::string text(largest_file + 1, '\0');
    text.resize(std::fread(text.data(), 1, text.size(), file.get()));
    if (std::ferror(file.get()) != 0) throw chassis_error(1, "file", std::strerror(errno));
    if (text.size() > largest_file) throw chassis_error(1, "file", "is larger than 1 MiB");
    return text;
}

}  // namespace

chassis_model load_chassis(const std::string &path) {
    try {
        return parse_chassis(read_file(path));
    } catch (const chassis_error &error) {
        throw std::runtime_error(path + ":" + error.what());
    }
}

}  // namespace virtual_switch
