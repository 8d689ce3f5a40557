// SPDX-License-Identifier: Apache-2.0
// Requests to the services of the virtual switch, one after the other, for the chassis of the director example.
#include <algorithm>

#include "support/virtual_chassis.h"

// The input is a list of requests: two bytes choose service and opcode, two are the length, then follows the payload.
int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    fuzz::virtual_chassis chassis(fuzz::director);
    fuzz::bytes rest(data, size);
    for (int requests = 0; rest.size() >= 4 && requests < 8; ++requests) {
        const size_t length = std::min<size_t>(rest[2] * 256u + rest[3], rest.size() - 4);
        chassis.ask({rest[0], rest[1]}, rest.subspan(4, length));
        rest = rest.subspan(4 + length);
    }
    return 0;
}
