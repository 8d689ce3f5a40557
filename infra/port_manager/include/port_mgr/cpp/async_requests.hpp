/* SPDX-License-Identifier: Apache-2.0 */
/** @file
 * Requests that do not wait: sent from a loop over poll or epoll, answered by calls of its functions. */
#ifndef PORT_MGR_CPP_ASYNC_REQUESTS_HPP
#define PORT_MGR_CPP_ASYNC_REQUESTS_HPP

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

#include "port_mgr/cpp/queries.hpp"

namespace port_mgr {

/** Several requests under way on one handle.
 *
 *  Each is sent at once and ends once: with its answer, its failure or its deadline, when process() calls the function
 *  that was given with it; or without a call, by cancel() and with this object. A loop waits for the handle's
 *  descriptor to be readable (on a development host mts_dev_descriptor() is one), for poll_timeout() milliseconds at
 *  most, and calls process(); it does so after blocking calls on the same handle, too.
 *
 *  The handle's answers are this object's to receive: those to other requests that were sent on it without waiting are
 *  dropped. It belongs to the thread of its handle. What is called may send and cancel requests, and ask how many are
 *  under way, but not end this object.
 *
 *  A limit of clock::duration::max() is none. Give one all the same: when another call on the handle is the first to
 *  reach a service that started again, the requests that the service lost end at their deadlines. */
class async_requests {
  public:
    using clock = std::chrono::steady_clock; /**< of the deadlines */
    using ticket = uint64_t;                 /**< a request's number, never 0 and never used again */

    /** What is called with the records, or why there are none: ETIMEDOUT after the deadline, ECONNRESET when the
     *  service ended first. */
    template <typename Record>
    using done = std::function<void(result<records<Record>>)>;

    /** @param handle  the caller's queue, open for as long as this lives */
    explicit async_requests(mts_handle_t handle) : handle_(handle) {}
    async_requests(const async_requests &) = delete;
    async_requests &operator=(const async_requests &) = delete;

    /** Asks for the full records of ranges of ports.
     *  @param asked  at least one range; they can go after the call
     *  @param limit  how long the answer may take
     *  @param then   what is called at the end
     *  @return a ticket, or why nothing was sent; then nothing is called */
    result<ticket> get_port_info(ranges asked, clock::duration limit, done<pm_port_info_t> then) {
        return send(pm_parse_get_port_info, limit, std::move(then), [&](mts_msg_t *request) {
            return pm_send_get_port_info(handle_, PM_PORT_INFO_MODE_RANGES, 0, 0, 0, 0,
                                         static_cast<uint32_t>(asked.size()), asked.data(), request);
        });
    }

    /** Asks for the full records of one range of ports.
     *  @param asked  the range
     *  @param limit  how long the answer may take
     *  @param then   what is called at the end
     *  @return a ticket, or why nothing was sent; then nothing is called */
    result<ticket> get_port_info_range(const pm_if_index_range_t &asked, clock::duration limit,
                                       done<pm_port_info_t> then) {
        return get_port_info(ranges(&asked, 1), limit, std::move(then));
    }

    /** Asks for the brief records of ranges of ports.
     *  @param asked  at least one range; they can go after the call
     *  @param limit  how long the answer may take
     *  @param then   what is called at the end
     *  @return a ticket, or why nothing was sent; then nothing is called */
    result<ticket> get_port_info_brief(ranges asked, clock::duration limit, done<pm_port_info_brief_t> then) {
        return send(pm_parse_get_port_info_brief, limit, std::move(then), [&](mts_msg_t *request) {
            return pm_send_get_port_info_brief(handle_, PM_PORT_INFO_MODE_RANGES, 0, 0, 0, 0,
                                               static_cast<uint32_t>(asked.size()), asked.data(), request);
        });
    }

    /** Asks for every port of the switch in brief.
     *  @param limit  how long the answer may take
     *  @param then   what is called at the end
     *  @return a ticket, or why nothing was sent; then nothing is called */
    result<ticket> get_all_port_info_brief(clock::duration limit, done<pm_port_info_brief_t> then) {
        return send(pm_parse_get_port_info_brief, limit, std::move(then), [&](mts_msg_t *request) {
            return pm_send_get_port_info_brief(handle_, PM_PORT_INFO_MODE_ALL, 0, 0, 0, 0, 0, nullptr, request);
        });
    }

    /** Asks for the port that follows in the order of interface indexes. After a port channel it waits first: for a
     *  service that names a member, whose owner is asked.
     *  @param if_index  the port before it; 0 asks for the first
     *  @param limit     how long the answer may take
     *  @param then      what is called at the end, with one record
     *  @return a ticket, or why nothing was sent; then nothing is called */
    result<ticket> get_next_port_info(if_index_t if_index, clock::duration limit, done<pm_port_info_t> then) {
        return send(pm_parse_get_next_port_info, limit, std::move(then),
                    [&](mts_msg_t *request) { return pm_send_get_next_port_info(handle_, if_index, request); });
    }

    /** Forgets a request: what was given with it is not called, and its answer is dropped when it comes.
     *  @param which  its ticket
     *  @return whether it was still under way */
    bool cancel(ticket which) {
        return std::erase_if(under_way_, [which](const request_under_way &each) { return each.number == which; }) != 0;
    }

    /** @return how many requests are under way. */
    [[nodiscard]] size_t under_way() const { return under_way_.size(); }

    /** @return how long a loop may wait before it calls process(), in milliseconds as poll and epoll_wait take it:
     * until the first deadline, or -1 when nothing is under way. */
    [[nodiscard]] int poll_timeout() const {
        if (under_way_.empty()) return -1;
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(first_deadline()->deadline - clock::now());
        return static_cast<int>(std::clamp<int64_t>(left.count(), 0, INT_MAX));
    }

    /** Ends requests that can be ended now, and calls what was given with them. Waits for nothing, and comes to its end
     *  although what it calls sends more.
     *  @return how many were ended */
    size_t process() {
        size_t ended = 0;
        uint32_t error = 0;
        for (size_t most = std::max<size_t>(under_way(), 1); most > 0 && error == 0; --most) error = receive(0, ended);
        if (error != 0 && error != ETIMEDOUT && error != EINTR) settle_all(ended);
        end_overdue(ended);
        return ended;
    }

  private:
    struct request_under_way {
        ticket number;
        message request;
        clock::time_point deadline;
        std::function<void(result<message>)> then;
    };

    template <typename Record, typename Send>
    result<ticket> send(parser<Record> parse, clock::duration limit, done<Record> then, Send send_it) {
        mts_msg_t request{};
        if (const uint32_t value = send_it(&request)) return status(value, origin::exchange);
        auto parsed = [parse, then = std::move(then)](result<message> answer) {
            if (answer)
                then(parse_answer(*answer, parse));
            else
                then(answer.why());
        };
        const auto now = clock::now();
        const auto deadline = now + std::min(limit, clock::time_point::max() - now);
        under_way_.push_back({++last_ticket_, message(handle_, request), deadline, std::move(parsed)});
        return last_ticket_;
    }

    using position = std::vector<request_under_way>::iterator;

    [[nodiscard]] std::vector<request_under_way>::const_iterator first_deadline() const {
        return std::min_element(under_way_.begin(), under_way_.end(),
                                [](const auto &left, const auto &right) { return left.deadline < right.deadline; });
    }

    // Called functions find the request gone, and may change the others.
    void end(position at, result<message> with) {
        const auto then = std::move(at->then);
        under_way_.erase(at);
        then(std::move(with));
    }

    // Takes the next answer, or that with the token unless it is 0. Returns 0 or the transport's error number.
    uint32_t receive(uint32_t token, size_t &ended) {
        mts_recv_options_t options{};
        options.word[0] = token != 0 ? 1 : 0;
        options.word[3] = token;
        mts_msg_t response{};
        if (mts_recv(handle_, &response, &options) == -1) return mts_errno_get(handle_);
        message answer(handle_, response);
        const auto at = with_token(answer.token());
        if (at == under_way_.end()) return 0;  // it came late, or the request was cancelled
        end(at, std::move(answer));
        ++ended;
        return 0;
    }

    position with_token(uint32_t token) {
        return std::find_if(under_way_.begin(), under_way_.end(),
                            [token](const request_under_way &each) { return each.request.token() == token; });
    }

    // Ends a request with its answer or a failure of its own, and with `silence` when neither is there, unless it is 0.
    void settle(uint32_t token, uint32_t silence, size_t &ended) {
        uint32_t error = receive(token, ended);
        if (error == ETIMEDOUT || error == EINTR) error = silence;
        if (error == 0) return;
        end(with_token(token), status(error, origin::exchange));
        ++ended;
    }

    // After a failure that names no request each is looked at: some of them will never be answered.
    void settle_all(size_t &ended) {
        std::vector<uint32_t> tokens;
        for (const request_under_way &each : under_way_) tokens.push_back(each.request.token());
        for (const uint32_t token : tokens)
            if (with_token(token) != under_way_.end()) settle(token, 0, ended);
    }

    // An answer that is there was in time, and a service that ended was not slow.
    void end_overdue(size_t &ended) {
        for (size_t most = under_way(); most > 0 && poll_timeout() == 0; --most)
            settle(first_deadline()->request.token(), ETIMEDOUT, ended);
    }

    mts_handle_t handle_;
    ticket last_ticket_ = 0;
    std::vector<request_under_way> under_way_;
};

}  // namespace port_mgr

#endif
