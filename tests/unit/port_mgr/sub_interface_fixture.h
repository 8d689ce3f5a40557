// SPDX-License-Identifier: Apache-2.0
// sub_interface_fixture.h: lists of ranges, and the requests about sub-interfaces that they become.
#ifndef UNIT_PORT_MGR_SUB_INTERFACE_FIXTURE_H
#define UNIT_PORT_MGR_SUB_INTERFACE_FIXTURE_H

#include <fmt/format.h>

#include <array>
#include <vector>

#include "port_config_fixture.h"

namespace unit {

// A list of ranges with rubbish in the words that are not read and nothing behind the last range.
class range_list {
  public:
    explicit range_list(const std::vector<pm_if_index_range_t> &ranges) : place_(image(ranges)) {}

    [[nodiscard]] const pm_if_range_list_t *pointer() const {
        return reinterpret_cast<const pm_if_range_list_t *>(place_.data());
    }

  private:
    static support::bytes image(const std::vector<pm_if_index_range_t> &ranges) {
        std::vector<uint32_t> words{0xeeeeeeee, static_cast<uint32_t>(ranges.size()), 0xdddddddd};
        for (const auto &range : ranges) {
            words.push_back(range.first);
            words.push_back(range.last);
        }
        const auto *const begin = reinterpret_cast<const uint8_t *>(words.data());
        return {begin, begin + 4 * words.size()};
    }

    support::guarded_bytes place_;
};

// An entry on the wire, 536 bytes. The size of the set is as it lies in memory.
inline support::bytes entry_of(if_index_t main, const std::vector<uint32_t> &numbers,
                               const std::array<uint32_t, 3> &words = {}) {
    support::bytes bits(512, 0);
    for (const uint32_t number : numbers)
        bits[number / 8] = static_cast<uint8_t>(bits[number / 8] | 0x80 >> number % 8);
    support::payload entry;
    entry.be32(0).be32(main).be32(words[0]).be32(words[1]).be32(words[2]);
    return entry.append({0, 2, 0, 0}).append(bits);
}

inline support::bytes sent_sub_interfaces(uint32_t operation, const std::vector<support::bytes> &entries) {
    support::payload request;
    request.be32(operation).be32(0).be32(static_cast<uint32_t>(entries.size()));
    for (const auto &entry : entries) request.append(entry);
    return request;
}

inline std::string sub_interfaces_asked(const support::bytes &request) { return queried(2837, 3, request, 175); }

// An answer whose first word is not its status.
inline support::bytes status_answer(uint32_t status) { return support::payload().be32(0xbadbad).be32(status); }

}  // namespace unit

#endif
