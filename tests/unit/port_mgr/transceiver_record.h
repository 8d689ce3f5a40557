// SPDX-License-Identifier: Apache-2.0
// transceiver_record.h: records of transceivers on the wire and in memory.
#ifndef UNIT_PORT_MGR_TRANSCEIVER_RECORD_H
#define UNIT_PORT_MGR_TRANSCEIVER_RECORD_H

#include <algorithm>
#include <cstring>

#include "bytes.h"
#include "port_mgr/transceiver_info.h"

namespace unit {

inline constexpr size_t transceiver_size = 267;
inline const std::string transceiver_report_start =
    "\\(Error\\) Malloc Failure in infra/port_manager/lib/pm_cmi_common/transceiver_info\\.cc\\[[1-9][0-9]*\\] "
    "for size ";

// A record as it travels. No two bytes within 251 of each other are the same.
inline support::bytes transceiver_on_wire(if_index_t if_index, uint8_t layout) {
    support::bytes wire;
    for (size_t i = 0; i < transceiver_size; ++i) wire.push_back(static_cast<uint8_t>((i * 7 + 3) % 251));
    const support::payload index = support::payload().be32(if_index);
    std::ranges::copy(index.data(), wire.begin());
    wire.back() = layout;
    return wire;
}

// What the record becomes in memory.
inline support::bytes transceiver_in_memory(support::bytes record) {
    const ptrdiff_t pair = record.back() == 1 ? 137 : 254;
    for (const ptrdiff_t word : {ptrdiff_t{0}, ptrdiff_t{4}, pair, pair + 4})
        std::reverse(record.begin() + word, record.begin() + word + 4);
    return record;
}

inline support::bytes bytes_of(const pm_fcot_info_t &record) {
    support::bytes image(sizeof record);
    std::memcpy(image.data(), &record, sizeof record);
    return image;
}

}  // namespace unit

#endif
