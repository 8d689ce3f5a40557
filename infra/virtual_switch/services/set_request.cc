// SPDX-License-Identifier: Apache-2.0
#include "services/set_request.h"

#include <cstring>

#include "port_mgr/status.h"
#include "protocol/config_layout.h"
#include "protocol/config_value_kinds.h"
#include "protocol/request_layout.h"
#include "services/port_selection.h"

namespace virtual_switch {
namespace {

using bytes = std::span<const uint8_t>;

// `value` has the width of the kind.
uint32_t read_value(pm::value_kind kind, bytes value, setting_value &to) {
    pm::byte_reader reader(value);
    switch (kind) {
        case pm::value_kind::byte:
            to = uint32_t{reader.get_u8()};
            return 0;
        case pm::value_kind::short_number:
            to = uint32_t{reader.get_be16()};
            return 0;
        case pm::value_kind::word:
            to = reader.get_be32();
            return 0;
        case pm::value_kind::text: {
            const auto *const text = reinterpret_cast<const char *>(value.data());
            to = std::string(text, strnlen(text, value.size()));
            return 0;
        }
        case pm::value_kind::raw_word:
        case pm::value_kind::raw_pair:
            return 0;
        case pm::value_kind::none:
            break;
    }
    return PM_ERR_TLV;
}

// The element is the rest of the request.
uint32_t read_element(bytes element, set_request &request) {
    if (element.size() < pm::element_header_size) return PM_ERR_INVALID_PARAM;
    const bytes value = element.subspan(pm::element_header_size);
    const uint8_t length = element[1];
    if (value.size() != length) return PM_ERR_INVALID_PARAM;
    request.attribute = element[0];
    const pm::value_kind kind = pm::written_kind(request.attribute);
    return length == pm::width_of(kind) ? read_value(kind, value, request.value) : PM_ERR_TLV;
}

}  // namespace

uint32_t read_set_request(bytes payload, set_request &request) {
    if (payload.size() < pm::set_request_header_size) return PM_ERR_INVALID_PARAM;
    const uint16_t count = pm::load_be16(&payload[pm::set_request_header_size - sizeof(uint16_t)]);
    const bytes rest = payload.subspan(pm::set_request_header_size);
    const size_t ranges_size = count * pm::wire_range_size;
    if (count == 0 || rest.size() < ranges_size) return PM_ERR_INVALID_PARAM;
    pm::byte_reader ranges(rest.first(ranges_size));
    for (uint16_t i = 0; i < count; ++i) request.ranges.push_back(read_range(ranges));
    return read_element(rest.subspan(ranges_size), request);
}

}  // namespace virtual_switch
