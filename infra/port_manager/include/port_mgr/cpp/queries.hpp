/* SPDX-License-Identifier: Apache-2.0 */
/** @file
 * The calls of the C interface that wait for their answer, with owned results.
 *
 * Each makes the one call of the C function of its name (pm_ in front) and adds nothing to it; its failures are those
 * of that function and of the parser of its answer. A handle belongs to one thread at a time. */
#ifndef PORT_MGR_CPP_QUERIES_HPP
#define PORT_MGR_CPP_QUERIES_HPP

#include <arpa/inet.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>

#include "port_mgr/cpp/owners.hpp"
#include "port_mgr/cpp/result.hpp"
#include "port_mgr/module_interface_listing.h"
#include "port_mgr/port_config.h"
#include "port_mgr/port_info_request.h"
#include "port_mgr/port_info_response.h"
#include "port_mgr/status.h"
#include "port_mgr/transceiver_info.h"

namespace port_mgr {

/** Ranges of interfaces in host order, both ends included. All of a request goes to the service that owns the first
 *  interface of the first range. */
using ranges = std::span<const pm_if_index_range_t>;

/** As long as the transport waits by itself, where the longest wait is told in seconds. */
inline constexpr uint32_t usual_wait = 0;

/** A parser of the C interface, such as pm_parse_get_port_info. */
template <typename Record>
using parser = uint32_t (*)(const mts_msg_t *message, uint32_t *count, Record **found);

/** Calls a function of the C interface that fills in an array.
 *  @param from  who tells its failures
 *  @param call  called as call(&count, &block); returns the status of the C function
 *  @return the records, or why there are none */
template <typename Record, typename Call>
result<records<Record>> collect(origin from, Call call) {
    uint32_t count = 0;
    Record *block = nullptr;
    if (const uint32_t value = call(&count, &block)) return status(value, from);
    return records<Record>(block, count);
}

/** Reads an answer.
 *  @param answer  a received message
 *  @param parse   the parser of its kind
 *  @return the records, or what the answer told instead */
template <typename Record>
result<records<Record>> parse_answer(const message &answer, parser<Record> parse) {
    return collect<Record>(origin::answer,
                           [&](uint32_t *count, Record **block) { return parse(answer.get(), count, block); });
}

/** Asks with a blocking function of the C interface, and reads the answer.
 *  @param handle  the caller's queue
 *  @param parse   the parser of the answer
 *  @param ask     called as ask(&response); returns the status of the C function
 *  @return the records, or why there are none */
template <typename Record, typename Ask>
result<records<Record>> query(mts_handle_t handle, parser<Record> parse, Ask ask) {
    mts_msg_t response{};
    const uint32_t value = ask(&response);
    // There is an answer beside a failure, too, when the request could not be released.
    const bool is_there = std::ranges::any_of(response.word, [](uint32_t word) { return word != 0; });
    const message answer(is_there ? handle : 0, response);
    if (value != 0) return status(value, origin::exchange);
    return parse_answer(answer, parse);
}

/** The full records of ranges of ports.
 *  @param handle  the caller's queue
 *  @param asked   at least one range
 *  @return the records, or why there are none */
inline result<records<pm_port_info_t>> get_port_info(mts_handle_t handle, ranges asked) {
    return query(handle, pm_parse_get_port_info, [&](mts_msg_t *response) {
        return pm_get_port_info(handle, PM_PORT_INFO_MODE_RANGES, 0, 0, 0, 0, static_cast<uint32_t>(asked.size()),
                                asked.data(), response);
    });
}

/** The full records of one range of ports.
 *  @param handle  the caller's queue
 *  @param first   the first interface of the range
 *  @param last    the last one
 *  @return the records, or why there are none */
inline result<records<pm_port_info_t>> get_port_info_range(mts_handle_t handle, if_index_t first, if_index_t last) {
    return query(handle, pm_parse_get_port_info,
                 [&](mts_msg_t *response) { return pm_get_port_info_range(handle, first, last, response); });
}

/** The brief records of ranges of ports.
 *  @param handle  the caller's queue
 *  @param asked   at least one range
 *  @return the records, or why there are none */
inline result<records<pm_port_info_brief_t>> get_port_info_brief(mts_handle_t handle, ranges asked) {
    return query(handle, pm_parse_get_port_info_brief, [&](mts_msg_t *response) {
        return pm_get_port_info_brief(handle, PM_PORT_INFO_MODE_RANGES, 0, 0, 0, 0, static_cast<uint32_t>(asked.size()),
                                      asked.data(), response);
    });
}

/** Every port of the switch in brief, in one answer. For all of them in full, see all_ports().
 *  @param handle  the caller's queue
 *  @return the records, or why there are none */
inline result<records<pm_port_info_brief_t>> get_all_port_info_brief(mts_handle_t handle) {
    return query(handle, pm_parse_get_port_info_brief, [&](mts_msg_t *response) {
        return pm_get_port_info_brief(handle, PM_PORT_INFO_MODE_ALL, 0, 0, 0, 0, 0, nullptr, response);
    });
}

/** The port that follows in the order of interface indexes.
 *  @param handle    the caller's queue
 *  @param if_index  the port before it; 0 asks for the first
 *  @return one record, or why there is none; none at all after the last port */
inline result<records<pm_port_info_t>> get_next_port_info(mts_handle_t handle, if_index_t if_index) {
    return query(handle, pm_parse_get_next_port_info,
                 [&](mts_msg_t *response) { return pm_get_next_port_info(handle, if_index, response); });
}

/** The configured records of ranges of interfaces.
 *  @param handle  the caller's queue
 *  @param asked   at least one range
 *  @param kind    one of PM_CONFIG_GET_...
 *  @param wait    the longest wait in seconds
 *  @return the records, or why there are none */
inline result<records<pm_port_info_t>> get_port_config(mts_handle_t handle, ranges asked,
                                                       uint32_t kind = PM_CONFIG_GET_FROM_OWNER,
                                                       uint32_t wait = usual_wait) {
    return collect<pm_port_info_t>(origin::exchange, [&](uint32_t *count, pm_port_info_t **block) {
        return pm_cmi_get_port_config(handle, kind, static_cast<uint32_t>(asked.size()), asked.data(), count, block,
                                      wait);
    });
}

/** The records of a module's interfaces of one type.
 *  @param handle    the caller's queue
 *  @param module    the module's number, counted from 1
 *  @param if_index  any interface of the type asked for
 *  @param wait      the longest wait in seconds
 *  @return the records, or why there are none */
inline result<records<pm_port_info_t>> get_module_interface_listing(mts_handle_t handle, uint8_t module,
                                                                    if_index_t if_index, uint32_t wait = usual_wait) {
    return collect<pm_port_info_t>(origin::exchange, [&](uint32_t *count, pm_port_info_t **block) {
        return pm_cmi_get_module_interface_listing(handle, module, if_index, wait, count, block);
    });
}

/** The transceivers of ranges of interfaces, without diagnostics.
 *  @param handle  the caller's queue
 *  @param asked   at least one range
 *  @param wait    the longest wait in seconds
 *  @return the records, or why there are none */
inline result<records<pm_fcot_info_t>> get_fcot_info(mts_handle_t handle, ranges asked, uint32_t wait = usual_wait) {
    return collect<pm_fcot_info_t>(origin::exchange, [&](uint32_t *count, pm_fcot_info_t **block) {
        return pm_cmi_get_fcot_info(handle, 0, static_cast<int32_t>(asked.size()), asked.data(), count, block, wait);
    });
}

/** The same with the diagnostics of the transceivers that have them.
 *  @param handle  the caller's queue
 *  @param asked   at least one range
 *  @param wait    the longest wait in seconds
 *  @return the records, or why there are none; PM_ERR_INVALID_PARAM when the answer was told to be good and no records
 *          came of it */
inline result<records<pm_fcot_info_t>> get_fcot_info_with_ddm(mts_handle_t handle, ranges asked,
                                                              uint32_t wait = usual_wait) {
    return collect<pm_fcot_info_t>(origin::exchange, [&](uint32_t *count, pm_fcot_info_t **block) {
        const uint32_t value = pm_get_next_port_fcot_info_with_ddm(handle, 0, static_cast<int32_t>(asked.size()),
                                                                   asked.data(), count, block, wait);
        return value == 0 && *block == nullptr ? PM_ERR_INVALID_PARAM : value;
    });
}

/** A value as it lies in memory, for set_port_config().
 *  @param value  stays the caller's
 *  @return its bytes */
template <typename Value>
std::span<const std::byte> bytes_of(const Value &value) {
    static_assert(std::is_trivially_copyable_v<Value>);
    return std::as_bytes(std::span(&value, 1));
}

/** What a change tells beside its attribute. */
struct change_options {
    const char *user = nullptr; /**< who makes it; at most 59 characters travel, 39 when there is `from`, too */
    const char *from = nullptr; /**< from where; at most 40 characters travel */
    uint32_t wait = usual_wait; /**< the longest wait in seconds */
};

/** What became of a change: there may be entries beside a status that tells of a failure. */
struct change_outcome {
    status request;                        /**< of the request as a whole */
    records<pm_set_port_result_t> entries; /**< of each interface: status_of() reads theirs */
};

/** Sets an attribute of ranges of interfaces.
 *  @param handle     the caller's queue
 *  @param asked      at least one range
 *  @param attribute  one of PM_ATTR_...
 *  @param value      its value in host memory, as wide as the attribute's kind: bytes_of() a number; 1 to 255 bytes
 *  @param options    what else the switch is told
 *  @return what became of it; PM_ERR_FAILURE without entries for arguments that nothing was sent of */
inline change_outcome set_port_config(mts_handle_t handle, ranges asked, uint8_t attribute,
                                      std::span<const std::byte> value, const change_options &options = {}) {
    std::array<std::byte, UINT8_MAX> room{};  // the C function reads as far as the attribute's kind is wide
    if (value.empty() || value.size() > room.size()) return {status(PM_ERR_FAILURE, origin::exchange), {}};
    std::copy(value.begin(), value.end(), room.begin());
    uint32_t count = 0;
    pm_set_port_result_t *block = nullptr;
    const status request(pm_cmi_set_port_config(handle, options.user, options.from, static_cast<uint32_t>(asked.size()),
                                                asked.data(), attribute, static_cast<uint8_t>(value.size()),
                                                room.data(), &count, &block, options.wait),
                         origin::exchange);
    if (request.is_transport_failure()) block = nullptr;  // nobody's to read or free, then
    return {request, records<pm_set_port_result_t>(block, count)};
}

/** What became of one interface.
 *  @param entry  one of a change's entries
 *  @return its status in host order */
inline status status_of(const pm_set_port_result_t &entry) { return {ntohl(entry.status), origin::answer}; }

}  // namespace port_mgr

#endif
