// SPDX-License-Identifier: Apache-2.0
// Names of interfaces: one that is read is written so that it is read to the same index again. The first four bytes are
// an index by themselves.
#include <array>
#include <cstring>
#include <string>

#include "platform_dev/if_index_dev.h"
#include "support/fuzz.h"

namespace {

void check_name_of(if_index_t index) {
    std::array<char, 256> name{};
    FUZZ_REQUIRE(sprintf_if_index(name.data(), index) >= 0);
    if_index_t again = ~index;
    FUZZ_REQUIRE(if_index_from_name(name.data(), &again) == 0 && again == index);
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if_index_t index = 0;
    std::memcpy(&index, data, size < sizeof index ? size : sizeof index);
    check_name_of(index);
    const std::string name(reinterpret_cast<const char *>(data), size);
    if_index_t named = 0x5a5a5a5a;
    if (if_index_from_name(name.c_str(), &named) == 0)
        check_name_of(named);
    else
        FUZZ_REQUIRE(named == 0x5a5a5a5a);
    return 0;
}
