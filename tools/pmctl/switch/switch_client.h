// SPDX-License-Identifier: Apache-2.0
// Questions to the switch, and answers as owned arrays of records.
#ifndef PMCTL_SWITCH_SWITCH_CLIENT_H
#define PMCTL_SWITCH_SWITCH_CLIENT_H

#include <functional>
#include <vector>

#include "port_mgr/port_info_response.h"
#include "switch/interface_ranges.h"
#include "switch/port_pages.h"
#include "switch/record_array.h"
#include "switch/switch_connection.h"

namespace pmctl {

// Every query throws switch_unavailable, or query_refused when only this question was answered with no.
class switch_client {
  public:
    // Every port in brief.
    record_array<pm_port_info_brief_t> brief_ports();

    // The index of every port.
    std::vector<if_index_t> interfaces();

    // Every port in full, in the order of their indexes.
    std::vector<pm_port_info_t> ports(const paging &by = {});

    // What exists of a range. No port at all is a refusal.
    std::vector<pm_port_info_t> ports(const interface_range &range);

    // The ports of a module, in the order of their indexes. A module that is not there is a refusal.
    std::vector<pm_port_info_t> ports_of_module(uint8_t module);

  private:
    using request_function = std::function<uint32_t(mts_handle_t, mts_msg_t *response)>;
    template <typename Record>
    using parse_function = uint32_t (*)(const mts_msg_t *, uint32_t *count, Record **records);

    // `subject` is what messages name as asked about.
    template <typename Record>
    record_array<Record> query(const std::string &subject, const request_function &request,
                               parse_function<Record> parse);

    switch_connection connection_;
};

}  // namespace pmctl

#endif
