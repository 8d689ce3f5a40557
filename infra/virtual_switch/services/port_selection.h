// SPDX-License-Identifier: Apache-2.0
// port_selection.h: which ports a request for port information names.
#ifndef VIRTUAL_SWITCH_SERVICES_PORT_SELECTION_H
#define VIRTUAL_SWITCH_SERVICES_PORT_SELECTION_H

#include <span>

#include "port_mgr/types.h"
#include "protocol/cursor.h"
#include "services/answer.h"

namespace virtual_switch {

// The payload of a request as it came, and the SAP that it came to.
struct port_request {
    std::span<const uint8_t> payload;
    uint32_t sap;
};

pm_if_index_range_t read_range(pm::byte_reader &from);

// Ports that follow one another.
class port_run {
  public:
    using iterator = std::map<if_index_t, port>::const_iterator;
    port_run(iterator begin, iterator end) : begin_(begin), end_(end) {}

    [[nodiscard]] iterator begin() const { return begin_; }
    [[nodiscard]] iterator end() const { return end_; }
    [[nodiscard]] bool empty() const { return begin_ == end_; }

  private:
    iterator begin_;
    iterator end_;
};

// The existing ports of a range; none when it is backwards or of two types.
port_run ports_in(const chassis_model &model, const pm_if_index_range_t &range);

// Selects the ports of ranges that follow one another, each of which must name some. Returns 0, or the status of the
// refusal.
uint32_t select_ranges(const chassis_model &model, pm::byte_reader ranges, uint32_t count, port_list &ports);

// Selects the ports of a request for port information. Returns 0, or the status of the refusal.
uint32_t select_ports(const chassis_model &model, const port_request &request, port_list &ports);

// The same for a request for the configuration, which any service takes when it begins with a port channel: clients may
// ask the owner of the channel or of a member.
uint32_t select_configured_ports(const chassis_model &model, const port_request &request, port_list &ports);

// Selects the interfaces of one type that live in a module. Returns 0, or the status of the refusal.
uint32_t select_module_ports(const chassis_model &model, const port_request &request, port_list &ports);

// Selects the port that follows the one a request names. Returns 0, or the status of the refusal.
uint32_t select_next_port(const chassis_model &model, const port_request &request, port_list &ports);

}  // namespace virtual_switch

#endif
