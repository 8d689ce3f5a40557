// SPDX-License-Identifier: Apache-2.0
// State files: what is read is written to the same text again.
#include <cctype>
#include <stdexcept>
#include <string_view>

#include "chassis/state_file.h"
#include "support/fuzz.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    std::string written;
    try {
        written = virtual_switch::state_text(virtual_switch::parse_state(text));
    } catch (const std::runtime_error &error) {
        const std::string_view what = error.what();
        FUZZ_REQUIRE(what.find('\n') == std::string_view::npos);
        FUZZ_REQUIRE(!what.empty() && std::isdigit(static_cast<unsigned char>(what.front())));
        return 0;
    }
    FUZZ_REQUIRE(virtual_switch::state_text(virtual_switch::parse_state(written)) == written);
    return 0;
}
