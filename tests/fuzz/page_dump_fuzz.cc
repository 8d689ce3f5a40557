// SPDX-License-Identifier: Apache-2.0
// Dumps of transceiver pages, and what is made of the pages.
#include <cctype>
#include <stdexcept>
#include <string_view>

#include "chassis/page_dump.h"
#include "support/fuzz.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    try {
        const std::vector<uint8_t> pages = virtual_switch::parse_page_dump(text);
        FUZZ_REQUIRE(pages.size() == virtual_switch::dumped_page_size ||
                     pages.size() == 2 * virtual_switch::dumped_page_size);
        virtual_switch::transceiver_of(pages);
    } catch (const std::runtime_error &error) {
        const std::string_view what = error.what();
        FUZZ_REQUIRE(!what.empty() && std::isdigit(static_cast<unsigned char>(what.front())));
    }
    return 0;
}
