// SPDX-License-Identifier: Apache-2.0
// request_layout.h: what the requests hold.
#ifndef PROTOCOL_REQUEST_LAYOUT_H
#define PROTOCOL_REQUEST_LAYOUT_H

#include "protocol/cursor.h"

namespace pm {

// A request for port information, full or brief, or for configurations, pm_get_port_info_req_t: this header; in mode 0
// `range_count` ranges follow, a pair of interface indexes each.
struct port_info_request_header {
    uint8_t mode;
    uint32_t selector1;
    uint32_t selector2;
    uint8_t option1;
    uint8_t option2;
    uint32_t range_count;
};

inline constexpr size_t port_info_request_header_size = 15;
inline constexpr size_t wire_range_size = 8;

// A request for the port that follows: one interface index.
inline constexpr size_t next_port_request_size = 4;

// A request for a module's resources: the module and the number of ranges, 16 bits each, and the ranges.
inline constexpr size_t module_resources_header_size = 4;

inline void write_header(byte_writer &to, const port_info_request_header &header) {
    to.put_u8(header.mode);
    to.put_be32(header.selector1);
    to.put_be32(header.selector2);
    to.put_u8(header.option1);
    to.put_u8(header.option2);
    to.put_be32(header.range_count);
}

inline port_info_request_header read_header(byte_reader &from) {
    port_info_request_header header{};
    header.mode = from.get_u8();
    header.selector1 = from.get_be32();
    header.selector2 = from.get_be32();
    header.option1 = from.get_u8();
    header.option2 = from.get_u8();
    header.range_count = from.get_be32();
    return header;
}

}  // namespace pm

#endif
