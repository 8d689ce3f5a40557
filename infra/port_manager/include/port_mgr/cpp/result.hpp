/* SPDX-License-Identifier: Apache-2.0 */
/** @file
 * What a call gave, or why it gave nothing. */
#ifndef PORT_MGR_CPP_RESULT_HPP
#define PORT_MGR_CPP_RESULT_HPP

#include <optional>
#include <utility>

#include "port_mgr/cpp/status.hpp"

namespace port_mgr {

/** A value, or the status of the failure. Throws nothing: ask whether it holds a value before looking at it. */
template <typename Value>
class [[nodiscard]] result {
  public:
    /** @param value  what the call gave */
    result(Value value) : value_(std::move(value)) {}

    /** @param failure  why there is no value; not 0 */
    result(status failure) : failure_(failure) {}

    /** @return whether there is a value. */
    explicit operator bool() const { return value_.has_value(); }

    /** @return the value, which must be there. */
    Value &operator*() & { return *value_; }
    /** @return the value, which must be there. */
    const Value &operator*() const & { return *value_; }
    /** @return the value, which must be there; it moves out, and lives as long as a loop over it. */
    Value operator*() && { return *std::move(value_); }
    /** @return the value, which must be there. */
    Value *operator->() { return &*value_; }
    /** @return the value, which must be there. */
    const Value *operator->() const { return &*value_; }

    /** @return why there is no value; success when there is one. */
    [[nodiscard]] status why() const { return failure_; }

  private:
    std::optional<Value> value_;
    status failure_;
};

}  // namespace port_mgr

#endif
