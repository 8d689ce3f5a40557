// SPDX-License-Identifier: Apache-2.0
#include "services/port_selection.h"

#include "platform/if_index.h"
#include "port_mgr/port_info_request.h"
#include "port_mgr/status.h"
#include "protocol/request_layout.h"

namespace virtual_switch {
namespace {

pm_if_index_range_t read_range(pm::byte_reader &from) {
    const if_index_t first = ntoh_if_index(from.get_wire32());
    const if_index_t last = ntoh_if_index(from.get_wire32());
    return {first, last};
}

uint32_t select_range(const chassis_model &model, const pm_if_index_range_t &range, port_list &ports) {
    const if_index_t first = range.first;
    const if_index_t last = range.last;
    if (first > last || type_of(first) != type_of(last)) return PM_ERR_INVALID_RANGE;
    const auto begin = model.ports.lower_bound(first);
    const auto end = model.ports.upper_bound(last);
    if (begin == end) return PM_ERR_INVALID_RANGE;
    for (auto at = begin; at != end; ++at) ports.push_back(&at->second);
    return ports.size() > most_records() ? PM_ERR_FAILURE : 0;
}

uint32_t select_ranges(const chassis_model &model, pm::byte_reader ranges, uint32_t count, uint32_t sap,
                       port_list &ports) {
    pm::byte_reader first_range = ranges;
    if (model.owner_sap(read_range(first_range).first) != sap) return PM_ERR_REJECTED;
    for (uint32_t i = 0; i < count; ++i) {
        const uint32_t status = select_range(model, read_range(ranges), ports);
        if (status != 0) return status;
    }
    return 0;
}

void select_all(const chassis_model &model, port_list &ports) {
    for (const auto &[if_index, at] : model.ports) ports.push_back(&at);
}

}  // namespace

uint32_t select_ports(const chassis_model &model, const port_request &request, port_list &ports) {
    pm::byte_reader reader(request.payload);
    const pm::port_info_request_header header = pm::read_header(reader);
    if (!reader.ok()) return PM_ERR_INVALID_PARAM;
    const size_t ranges_size = reader.rest().size();
    if (header.mode == PM_PORT_INFO_MODE_ALL && ranges_size == 0) {
        select_all(model, ports);
        return 0;
    }
    const bool has_ranges =
        header.range_count != 0 && uint64_t{header.range_count} * pm::wire_range_size == ranges_size;
    if (header.mode != PM_PORT_INFO_MODE_RANGES || !has_ranges) return PM_ERR_INVALID_PARAM;
    return select_ranges(model, reader, header.range_count, request.sap, ports);
}

uint32_t select_next_port(const chassis_model &model, const port_request &request, port_list &ports) {
    if (request.payload.size() != pm::next_port_request_size) return PM_ERR_INVALID_PARAM;
    pm::byte_reader reader(request.payload);
    const port *const next = model.next(ntoh_if_index(reader.get_wire32()));
    if (next == nullptr) return PM_ERR_INVALID_RANGE;
    ports.push_back(next);
    return 0;
}

}  // namespace virtual_switch
