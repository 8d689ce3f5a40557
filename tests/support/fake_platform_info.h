// SPDX-License-Identifier: Apache-2.0
// fake_platform_info.h: the chassis record, of which only the number of module slots is more than rubbish, and the
// record of a module, of which only the card type is.
#ifndef SUPPORT_FAKE_PLATFORM_INFO_H
#define SUPPORT_FAKE_PLATFORM_INFO_H

#include <cstdint>

namespace support {

class fake_platform_info {
  public:
    fake_platform_info();
    ~fake_platform_info();
    fake_platform_info(const fake_platform_info &) = delete;
    fake_platform_info &operator=(const fake_platform_info &) = delete;

    // What get_platform_info returns. It fills in the record even when it fails.
    int32_t result = 0;
    uint8_t slots = 255;

    // The same of pdb_get_mod_info.
    int32_t module_result = 0;
    uint16_t card_type = 0;
};

}  // namespace support

#endif
