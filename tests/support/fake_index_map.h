// SPDX-License-Identifier: Apache-2.0
// fake_index_map.h: the index map, of whose entries only a slot and a port base are more than rubbish.
#ifndef SUPPORT_FAKE_INDEX_MAP_H
#define SUPPORT_FAKE_INDEX_MAP_H

#include <cstdint>
#include <deque>

namespace support {

class fake_index_map {
  public:
    fake_index_map();
    ~fake_index_map();
    fake_index_map(const fake_index_map &) = delete;
    fake_index_map &operator=(const fake_index_map &) = delete;

    // What idxmap_node_by_if_index returns, and the node that it stores even when it fails.
    int32_t node_result = 0;
    uint32_t node = 0x00000502;

    // What idxmap_entry_by_if_index returns, and the entry that it stores even when it fails.
    struct look {
        int32_t result = 0;
        uint8_t slot = 0;
        uint8_t port_base = 0;
    };
    look entry;

    // Look-ups of entries that come before that, in order, whatever their index.
    std::deque<look> entry_looks;
};

}  // namespace support

#endif
