// SPDX-License-Identifier: Apache-2.0
// async_requests_fixture.h: requests that do not wait, and how they ended.
#ifndef UNIT_PORT_MGR_CPP_ASYNC_REQUESTS_FIXTURE_H
#define UNIT_PORT_MGR_CPP_ASYNC_REQUESTS_FIXTURE_H

#include <fmt/format.h>

#include <cerrno>
#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "cpp_layer_fixture.h"

namespace unit {

using port_mgr::async_requests;
using clock_type = async_requests::clock;
using ticket = async_requests::ticket;

inline constexpr clock_type::duration long_limit = std::chrono::hours(1);
inline constexpr pm_if_index_range_t one_range{0x02000001, 0x02000002};
inline const std::string received_any = "mts_recv(0x55667788, 0x0 0x0 0x0 0x0 0x0 0x0 0x0 0x0 0x0)";

inline std::string received_answer_to(uint32_t token) {
    return fmt::format("mts_recv(0x55667788, 0x1 0x0 0x0 {:#x} 0x0 0x0 0x0 0x0 0x0)", token);
}
inline std::string dropped_message(uint32_t token) { return fmt::format("mts_drop(0x55667788, message {:#x})", token); }

// Keeps how a request ended, by a name.
inline auto kept_in(calls &ended, const std::string &name) {
    return [&ended, name](const auto &told) {
        std::string line = name + ":";
        if (!told) line += " " + told.why().words();
        if (told)
            for (const auto &port : *told) line += fmt::format(" {:#x}", uint32_t{port.if_index});
        ended.push_back(line);
    };
}

class cpp_async : public cpp_layer {
  protected:
    ~cpp_async() override { EXPECT_THAT(ended, testing::IsEmpty()); }

    auto as(const std::string &name) { return kept_in(ended, name); }

    ticket send(const std::string &name, clock_type::duration limit = long_limit) { return send_then(as(name), limit); }

    ticket send_then(async_requests::done<pm_port_info_t> then, clock_type::duration limit = long_limit) {
        transport.will_send();
        const auto number = requests->get_port_info_range(one_range, limit, std::move(then));
        EXPECT_TRUE(number);
        return number ? *number : 0;
    }

    // An answer to a request under way; the request is dropped, and then the answer.
    void will_receive(uint32_t token, const std::vector<if_index_t> &ports) {
        transport.will_receive_answer_to(token, full_answer(ports));
        will_drop(2);
    }
    void will_fail(uint32_t error) { transport.will_receive(-1, error); }
    void will_drop(int times) {
        for (int i = 0; i < times; ++i) transport.will_drop();
    }

    // Ends what is under way without calls.
    void give_up() {
        will_drop(static_cast<int>(requests->under_way()));
        requests.reset();
    }

    // How requests ended since the last call.
    calls take_ended() { return std::exchange(ended, {}); }

    std::optional<async_requests> requests{handle};
    calls ended;
};

}  // namespace unit

#endif
