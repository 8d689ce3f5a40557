// SPDX-License-Identifier: Apache-2.0
// The way to the switch: an open handle, and what it means when a question fails.
#ifndef PMCTL_SWITCH_SWITCH_CONNECTION_H
#define PMCTL_SWITCH_SWITCH_CONNECTION_H

#include <string>

#include "platform_dev/mts_handle.hpp"
#include "port_mgr/cpp/result.hpp"

namespace pmctl {

// A handle of the transport. Throws switch_unavailable.
platform_dev::mts_handle open_handle();

class switch_connection {
  public:
    [[nodiscard]] mts_handle_t handle() const { return handle_.get(); }

    // Throws, when the status is not 0, switch_unavailable, or query_refused when only this one was answered with no.
    // `subject` is what messages name as asked about.
    void check(const std::string &subject, port_mgr::status status) const;

  private:
    [[nodiscard]] bool port_manager_answers() const;

    platform_dev::mts_handle handle_ = open_handle();
};

// What a question gave; throws as check does when it gave nothing.
template <typename Value>
Value checked(const switch_connection &connection, const std::string &subject, port_mgr::result<Value> given) {
    connection.check(subject, given.why());
    return *std::move(given);
}

}  // namespace pmctl

#endif
