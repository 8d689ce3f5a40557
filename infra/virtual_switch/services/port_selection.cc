// SPDX-License-Identifier: Apache-2.0
#include "services/port_selection.h"

#include <span>

#include "platform/if_index.h"
#include "port_mgr/port_info_request.h"
#include "port_mgr/status.h"
#include "protocol/config_layout.h"
#include "protocol/interface_owner.h"
#include "protocol/request_layout.h"

namespace virtual_switch {
namespace {

// A large chassis does not fit the caches next to a core: so the memory that an answer reads is fetched while further
// ports are being selected.
void fetch_ahead(const port &of) {
    constexpr size_t cache_line = 64;
    const std::span bytes(reinterpret_cast<const volatile uint8_t *>(&of.info), sizeof of.info);
    for (size_t at = 0; at < bytes.size(); at += cache_line) {
        [[maybe_unused]] const uint8_t fetched = bytes[at];
    }
}

uint32_t select_range(const chassis_model &model, const pm_if_index_range_t &range, port_list &ports) {
    const auto found = ports_in(model, range);
    if (found.empty()) return PM_ERR_INVALID_RANGE;
    for (const auto &[if_index, at] : found) {
        fetch_ahead(at);
        ports.push_back(&at);
    }
    return ports.size() > most_records() ? PM_ERR_FAILURE : 0;
}

// Whether the service on a SAP answers for an interface.
using ownership = bool (*)(const chassis_model &model, if_index_t if_index, uint32_t sap);

bool owns(const chassis_model &model, if_index_t if_index, uint32_t sap) { return model.owner_sap(if_index) == sap; }

bool owns_configuration(const chassis_model &model, if_index_t if_index, uint32_t sap) {
    return is_port_channel(if_index) || owns(model, if_index, sap);
}

void select_all(const chassis_model &model, port_list &ports) {
    for (const auto &[if_index, at] : model.ports) ports.push_back(&at);
}

uint32_t select_owned_ports(const chassis_model &model, const port_request &request, ownership is_owner,
                            port_list &ports) {
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
    pm::byte_reader first_range = reader;
    if (!is_owner(model, read_range(first_range).first, request.sap)) return PM_ERR_REJECTED;
    return select_ranges(model, reader, header.range_count, ports);
}

}  // namespace

pm_if_index_range_t read_range(pm::byte_reader &from) {
    const if_index_t first = ntoh_if_index(from.get_wire32());
    const if_index_t last = ntoh_if_index(from.get_wire32());
    return {first, last};
}

port_run ports_in(const chassis_model &model, const pm_if_index_range_t &range) {
    const if_index_t first = range.first;
    const if_index_t last = range.last;
    if (first > last || type_of(first) != type_of(last)) return {model.ports.end(), model.ports.end()};
    return {model.ports.lower_bound(first), model.ports.upper_bound(last)};
}

uint32_t select_ranges(const chassis_model &model, pm::byte_reader ranges, uint32_t count, port_list &ports) {
    for (uint32_t i = 0; i < count; ++i) {
        const uint32_t status = select_range(model, read_range(ranges), ports);
        if (status != 0) return status;
    }
    return 0;
}

uint32_t select_ports(const chassis_model &model, const port_request &request, port_list &ports) {
    return select_owned_ports(model, request, owns, ports);
}

uint32_t select_configured_ports(const chassis_model &model, const port_request &request, port_list &ports) {
    return select_owned_ports(model, request, owns_configuration, ports);
}

uint32_t select_module_ports(const chassis_model &model, const port_request &request, port_list &ports) {
    if (request.payload.size() != pm::module_listing_request_size) return PM_ERR_INVALID_PARAM;
    pm::byte_reader reader(request.payload);
    const auto slot = static_cast<uint8_t>(reader.get_u8() - 1);
    const uint8_t type = reader.get_u8();
    if (!pm::is_port_channel_type(type) && pm::owner_of_type(type) != request.sap) {
        return PM_ERR_REJECTED;
    }
    if (!model.line_cards.contains(slot)) return PM_ERR_INVALID_RANGE;
    for (const auto &[if_index, at] : model.ports) {
        if (at.place.is_in(slot) && type_of(if_index) == type) ports.push_back(&at);
    }
    return 0;
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
