// SPDX-License-Identifier: Apache-2.0
// fake_loader.h: the dynamic loader for the two libraries that are loaded at run time, and the functions in them.
#ifndef SUPPORT_FAKE_LOADER_H
#define SUPPORT_FAKE_LOADER_H

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "platform/types.h"

namespace support {

class fake_loader {
  public:
    fake_loader();
    ~fake_loader();
    fake_loader(const fake_loader &) = delete;
    fake_loader &operator=(const fake_loader &) = delete;

    // Libraries that cannot be loaded.
    std::set<std::string> missing_libraries;

    // How a symbol is looked up, when it does not simply succeed.
    struct look_up {
        bool is_null;
        const char *error;
    };
    std::map<std::string, look_up> look_ups;

    // What the functions of the libraries return.
    int32_t subscribe_result = 0;
    int32_t info_result = 0;
    int32_t port_result = 0;

    // What pcm_get_pc_info stores: the number of members and the first member, and where.
    uint32_t member_count = 0;
    if_index_t member = 0;
    size_t count_offset = 18;
    size_t member_offset = 26;

    // Libraries loaded and not closed, in order of loading.
    std::vector<std::string> open_libraries;
};

}  // namespace support

#endif
