// SPDX-License-Identifier: Apache-2.0
// cpp_layer_fixture.h: answers to the calls of the C++ layer, and what they become.
#ifndef UNIT_PORT_MGR_CPP_LAYER_FIXTURE_H
#define UNIT_PORT_MGR_CPP_LAYER_FIXTURE_H

#include <optional>
#include <string>
#include <vector>

#include "../base_record.h"
#include "../parse_outputs.h"
#include "../request_calls.h"
#include "library_test.h"
#include "port_mgr/port_manager.hpp"

namespace unit {

// A full answer about ports.
inline support::bytes full_answer(const std::vector<if_index_t> &ports) {
    support::payload all = answer(0, static_cast<uint32_t>(ports.size()));
    for (const if_index_t port : ports) all.append(base_record_of(port));
    return all;
}

inline constexpr size_t brief_record_size = 51;

// A brief answer about ports; byte n of a record, behind its index, holds n.
inline support::bytes brief_answer(const std::vector<if_index_t> &ports) {
    support::payload all = answer(0, static_cast<uint32_t>(ports.size()));
    for (const if_index_t port : ports) {
        all.be32(port);
        for (uint8_t byte = 4; byte < brief_record_size; ++byte) all.u8(byte);
    }
    return all;
}

// A request for records of ranges, or of all ports, without its ranges.
inline support::payload port_info_request(uint8_t mode, uint32_t count) {
    return support::payload().u8(mode).fill(10, 0).be32(count);
}

inline support::bytes range_request(if_index_t first, if_index_t last) {
    return port_info_request(0, 1).be32(first).be32(last);
}

template <typename Records>
std::vector<if_index_t> indexes_of(Records &&records) {
    std::vector<if_index_t> indexes;
    for (const auto &record : records) indexes.push_back(record.if_index);
    return indexes;
}

class cpp_layer : public support::library_test {
  protected:
    // A blocking query: the request is dropped before the answer is.
    void will_answer(std::optional<support::bytes> content) {
        transport.will_send();
        transport.will_receive_answer(std::move(content));
        transport.will_drop();
        transport.will_drop();
    }

    // What went over the transport since the last call: requests, receives and releases, in order.
    static calls transported() { return log_of({"mts_send", "mts_recv", "mts_drop", "cmi_req_resp"}); }

    // Only the requests.
    static calls sent_requests() { return log_of({"mts_send", "cmi_req_resp"}); }

  private:
    static calls log_of(const std::vector<std::string> &names) {
        calls log = support::call_log::take();
        std::erase_if(log, [&](const std::string &call) {
            return std::ranges::none_of(names, [&](const std::string &name) { return call.starts_with(name); });
        });
        return log;
    }
};

}  // namespace unit

#endif
