// SPDX-License-Identifier: Apache-2.0
#include "chassis/chassis_file.h"

#include <filesystem>
#include <stdexcept>

#include "chassis/chassis_error.h"
#include "chassis/text_file.h"

namespace virtual_switch {
chassis_model load_chassis(const std::string &path) {
    constexpr size_t most_mib = 1;
    try {
        const std::string text = read_text_file(open_regular_file(path), most_mib);
        return parse_chassis(text, std::filesystem::path(path).parent_path());
    } catch (const chassis_error &error) {
        throw std::runtime_error(path + ":" + error.what());
    }
}

}  // namespace virtual_switch
