/* SPDX-License-Identifier: Apache-2.0 */
/** @file
 * The owner of a handle, for C++. */
#ifndef PLATFORM_DEV_MTS_HANDLE_HPP
#define PLATFORM_DEV_MTS_HANDLE_HPP

#include <utility>

#include "platform_dev/mts_dev.h"

namespace platform_dev {

/** Opens a handle of the transport, and closes it when it ends. Belongs to one thread at a time. */
class mts_handle {
  public:
    /** Opens a handle; errno tells why when there is none. */
    mts_handle() : handle_(mts_dev_open()) {}
    /** Takes over a handle.
     *  @param other  its owner so far, which is left without one */
    mts_handle(mts_handle &&other) noexcept : handle_(std::exchange(other.handle_, 0)) {}
    /** Closes its own handle in favour of another.
     *  @param other  its owner so far
     *  @return this */
    mts_handle &operator=(mts_handle other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~mts_handle() {
        if (handle_ != 0) mts_dev_close(handle_);
    }

    /** @return whether there is a handle. */
    explicit operator bool() const { return handle_ != 0; }
    /** @return the handle for functions of the C interface; 0 when there is none. */
    [[nodiscard]] mts_handle_t get() const { return handle_; }
    /** @return a descriptor for poll and epoll: mts_dev_descriptor(). */
    [[nodiscard]] int descriptor() const { return mts_dev_descriptor(handle_); }

  private:
    mts_handle_t handle_;
};

}  // namespace platform_dev

#endif
