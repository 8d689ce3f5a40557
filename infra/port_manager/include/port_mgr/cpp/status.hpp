/* SPDX-License-Identifier: Apache-2.0 */
/** @file
 * What became of a call, with words for people. */
#ifndef PORT_MGR_CPP_STATUS_HPP
#define PORT_MGR_CPP_STATUS_HPP

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <string>
#include <system_error>

#include "port_mgr/status.h"

namespace port_mgr {

/** Who told a status. Small numbers of the exchange are system error numbers; those of an answer the service's own. */
enum class origin : uint8_t {
    exchange, /**< the library, or the transport, before there was an answer */
    answer    /**< the service, in its answer, or the library about what the answer holds */
};

/** A status of the C interface: 0 for success. A plain value; comparing looks at the number alone. */
class [[nodiscard]] status {
  public:
    /** Success. */
    constexpr status() = default;

    /** @param value  what a function of the C interface returned
     *  @param from   who told it */
    constexpr status(uint32_t value, origin from) : value_(value), from_(from) {}

    /** @return whether nothing failed. */
    [[nodiscard]] constexpr bool ok() const { return value_ == 0; }

    /** @return the number as the C interface has it. */
    [[nodiscard]] constexpr uint32_t value() const { return value_; }

    /** @return who told it. */
    [[nodiscard]] constexpr origin from() const { return from_; }

    /** @return whether no answer came of an exchange: it is a system error number of the transport, or 1 since memory
     *          ran out. A service's own small numbers look the same where one call exchanges and parses. */
    [[nodiscard]] constexpr bool is_transport_failure() const {
        return from_ == origin::exchange && !ok() && value_ <= last_error_number;
    }

    /** @return the name of the code in status.h, such as "PM_ERR_REJECTED", or null when it has none. */
    [[nodiscard]] constexpr const char *name() const {
        const code *known = find();
        return known ? known->name : nullptr;
    }

    /** @return what it means, for people: "request rejected (PM_ERR_REJECTED, 0x40290009)", "Connection timed out",
     *  "out of memory", "success"; "status 0x..." for a number of a service's own. */
    [[nodiscard]] std::string words() const {
        if (ok()) return "success";
        if (const code *known = find()) return std::string(known->words) + " (" + known->name + ", " + number() + ")";
        if (value_ == no_memory) return is_transport_failure() ? "out of memory, or not permitted" : "out of memory";
        if (is_transport_failure()) return std::generic_category().message(static_cast<int>(value_));
        return "status " + number();
    }

    /** Compares the numbers. */
    friend constexpr bool operator==(status left, status right) { return left.value_ == right.value_; }

  private:
    static constexpr uint32_t no_memory = 1;             // and the transport's EPERM
    static constexpr uint32_t last_error_number = 4095;  // the kernel's bound

    struct code {
        uint32_t value;
        const char *name;
        const char *words;
    };

    static constexpr std::array<code, 6> codes{{
        {PM_ERR_FAILURE, "PM_ERR_FAILURE", "missing or invalid arguments"},
        {PM_ERR_INVALID_PARAM, "PM_ERR_INVALID_PARAM", "invalid parameter, or malformed answer"},
        {PM_ERR_TLV, "PM_ERR_TLV", "attribute that cannot be encoded"},
        {PM_ERR_NO_PAYLOAD, "PM_ERR_NO_PAYLOAD", "answer without payload"},
        {PM_ERR_REJECTED, "PM_ERR_REJECTED", "request rejected"},
        {PM_ERR_INVALID_RANGE, "PM_ERR_INVALID_RANGE", "no such interface or range"},
    }};

    [[nodiscard]] constexpr const code *find() const {
        for (const code &known : codes)
            if (known.value == value_) return &known;
        return nullptr;
    }

    [[nodiscard]] std::string number() const {
        std::array<char, 11> text{};
        std::snprintf(text.data(), text.size(), "0x%x", value_);
        return text.data();
    }

    uint32_t value_ = 0;
    origin from_ = origin::exchange;
};

}  // namespace port_mgr

#endif
