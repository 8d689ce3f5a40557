// SPDX-License-Identifier: Apache-2.0
// Chassis files. Page dumps that they name are not there: the folder is empty.
#include <cctype>
#include <stdexcept>
#include <string_view>

#include "chassis/chassis_file.h"
#include "support/fuzz.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    try {
        const virtual_switch::chassis_model model = virtual_switch::parse_chassis(text, "/nonexistent");
        for (const auto &[if_index, port] : model.ports) FUZZ_REQUIRE(port.info.if_index == if_index);
    } catch (const std::runtime_error &error) {
        const std::string_view what = error.what();
        FUZZ_REQUIRE(what.find('\n') == std::string_view::npos);
        FUZZ_REQUIRE(!what.empty() && (std::isdigit(static_cast<unsigned char>(what.front())) || what.front() == '/'));
    }
    return 0;
}
