// SPDX-License-Identifier: Apache-2.0
#include "random_source.h"

#include <algorithm>

namespace model {

uint32_t random_source::word() {
    static const std::vector<uint32_t> edges{0, 1, 2, 0x7f, 0xff, 0xffff, 0x10000, 0x7fffffff, 0x80000000, 0xffffffff};
    return one_in(4) ? pick(edges) : static_cast<uint32_t>(engine_());
}

support::bytes random_source::some_bytes(size_t count) {
    support::bytes all(count);
    std::ranges::generate(all, [this] { return byte(); });
    return all;
}

}  // namespace model
