// SPDX-License-Identifier: Apache-2.0
#include "pm_cmi_common/set_request.h"

#include <algorithm>
#include <cstring>

#include "pm_api_common/range_writer.h"
#include "port_mgr/config_attribute.h"
#include "protocol/config_layout.h"
#include "protocol/request_layout.h"

namespace pm {
namespace {

// A first text that is too long is cut where its field ends or, when there is a second text, where that one's field
// would. The second text is cut where its field ends, and then has no NUL.
void write_texts(const char *first_text, const char *second_text, uint8_t *to) {
    const size_t first_length = first_text == nullptr ? 0 : std::strlen(first_text);
    if (first_text != nullptr) std::memcpy(to, first_text, std::min(first_length, first_text_size - 1));
    if (second_text == nullptr) return;
    std::memcpy(to + first_text_size, second_text, strnlen(second_text, second_text_size));
    if (first_length > second_text_size - 1) to[second_text_size - 1] = 0;
}

// The element is encoded aside, where every kind of value has room; what travels is as long as it says.
uint32_t write_attribute(uint8_t type, uint8_t length, const void *value, std::span<uint8_t> to) {
    std::array<uint8_t, element_header_size + UINT8_MAX> element{};
    const uint32_t status = pm_encode_tlv(reinterpret_cast<pm_cfg_tlv_t *>(element.data()), type, length, value);
    std::memcpy(to.data(), element.data(), to.size());
    return status;
}

size_t ranges_size(const set_request &request) { return size_t{request.range_count} * wire_range_size; }

}  // namespace

uint64_t size_of(const set_request &request) {
    return set_request_header_size + uint64_t{request.range_count} * wire_range_size + element_header_size +
           request.length;
}

uint32_t write(const set_request &request, std::span<uint8_t> to) {
    write_texts(request.first_text, request.second_text, to.data());
    byte_writer writer(to.subspan(first_text_size + second_text_size));
    writer.put_be16(static_cast<uint16_t>(request.range_count));
    put_ranges(writer, request.range_count, request.ranges);
    return write_attribute(request.type, request.length, request.value,
                           to.subspan(set_request_header_size + ranges_size(request)));
}

}  // namespace pm
