// SPDX-License-Identifier: Apache-2.0
// The way to the switch: an open handle, and what it means when a question fails.
#ifndef PMCTL_SWITCH_SWITCH_CONNECTION_H
#define PMCTL_SWITCH_SWITCH_CONNECTION_H

#include <string>

#include "platform/mts.h"

namespace pmctl {

// As long as the transport waits by itself.
inline constexpr uint32_t usual_wait = 0;

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

// A message of the transport, sent or received, released with its owner.
class owned_message {
  public:
    owned_message(mts_handle_t handle, const mts_msg_t &message) : handle_(handle), message_(message) {}
    ~owned_message() { mts_drop(handle_, &message_); }
    owned_message(const owned_message &) = delete;
    owned_message &operator=(const owned_message &) = delete;

    [[nodiscard]] const mts_msg_t *get() const { return &message_; }

  private:
    mts_handle_t handle_;
    mts_msg_t message_;
};

// Every check throws, when the status is not 0, switch_unavailable, or query_refused when only this question was
// answered with no. `subject` is what messages name as asked about.
class switch_connection {
  public:
    [[nodiscard]] mts_handle_t handle() const { return handle_.get(); }

    // Of a request on its way.
    void check_request(const std::string &subject, uint32_t status) const;

    // Of an answer.
    static void check_answer(const std::string &subject, uint32_t status);

    // Of a request that waited for its answer: it may be the transport's or the service's.
    void check_exchange(const std::string &subject, uint32_t status) const;

  private:
    [[nodiscard]] bool port_manager_answers() const;

    open_handle handle_;
};

}  // namespace pmctl

#endif
