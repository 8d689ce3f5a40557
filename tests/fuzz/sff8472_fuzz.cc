// SPDX-License-Identifier: Apache-2.0
// The pages of a transceiver: the serial-id page, then the diagnostic page. Shorter inputs are filled up with zeros.
#include <algorithm>
#include <array>

#include "sff8472/diagnostics.h"
#include "sff8472/identification.h"
#include "support/fuzz.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    std::array<uint8_t, sff8472::serial_id::page_size + sff8472::diagnostic::page_size> pages{};
    std::copy_n(data, std::min(size, pages.size()), pages.begin());
    const sff8472::serial_id_page serial_id(pages.data(), sff8472::serial_id::page_size);
    const sff8472::diagnostic_page diagnostic(&pages[sff8472::serial_id::page_size], sff8472::diagnostic::page_size);
    const sff8472::identification identity = sff8472::identify(serial_id);
    FUZZ_REQUIRE(identity.vendor.size() <= 16 && identity.date.size() <= 10);
    for (const sff8472::reach &each : sff8472::reaches_of(serial_id)) FUZZ_REQUIRE(each.medium != nullptr);
    for (const bool is_external : {false, true}) {
        const sff8472::raised_flags raised = sff8472::flags_of(sff8472::read_diagnostics(diagnostic, is_external));
        for (size_t i = 0; i < sff8472::quantities; ++i) level_of(raised, static_cast<sff8472::quantity>(i));
    }
    return 0;
}
