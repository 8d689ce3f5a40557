// SPDX-License-Identifier: Apache-2.0
// Questions to the switch: an open handle, and answers as owned arrays of records.
#ifndef PMCTL_SWITCH_SWITCH_CLIENT_H
#define PMCTL_SWITCH_SWITCH_CLIENT_H

#include <cstdlib>
#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "platform/mts.h"
#include "port_mgr/port_info_response.h"
#include "switch/interface_ranges.h"

namespace pmctl {

struct free_block {
    void operator()(void *block) const { free(block); }
};

// An array of records as the library hands it out: one block, freed once.
template <typename Record>
struct record_array {
    std::unique_ptr<Record[], free_block> records;
    uint32_t count = 0;

    [[nodiscard]] std::span<const Record> all() const { return {records.get(), count}; }
};

// A handle of the transport, closed with its owner.
class open_handle {
  public:
    open_handle();  // throws switch_unavailable
    ~open_handle();
    open_handle(const open_handle &) = delete;
    open_handle &operator=(const open_handle &) = delete;

    [[nodiscard]] mts_handle_t get() const { return handle_; }

  private:
    mts_handle_t handle_;
};

// Every query throws switch_unavailable, or query_refused when only this question was answered with no.
class switch_client {
  public:
    // Every port in brief.
    record_array<pm_port_info_brief_t> brief_ports();

    // Every port in full.
    record_array<pm_port_info_t> ports();

    // What exists of a range, asked for in pages. No port at all is a refusal.
    std::vector<pm_port_info_t> ports(const interface_range &range);

  private:
    using request_function = std::function<uint32_t(mts_handle_t, mts_msg_t *response)>;
    template <typename Record>
    using parse_function = uint32_t (*)(const mts_msg_t *, uint32_t *count, Record **records);

    // `subject` is what messages name as asked about.
    template <typename Record>
    record_array<Record> query(const std::string &subject, const request_function &request,
                               parse_function<Record> parse);
    void check_request(const std::string &subject, uint32_t status);
    bool port_manager_answers();

    open_handle handle_;
};

}  // namespace pmctl

#endif
