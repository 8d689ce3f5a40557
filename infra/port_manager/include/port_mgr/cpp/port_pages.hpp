/* SPDX-License-Identifier: Apache-2.0 */
/** @file
 * Full records of many ports, asked for in pages. */
#ifndef PORT_MGR_CPP_PORT_PAGES_HPP
#define PORT_MGR_CPP_PORT_PAGES_HPP

#include <algorithm>
#include <cstddef>
#include <deque>
#include <iterator>
#include <utility>
#include <vector>

#include "platform/if_index.h"
#include "port_mgr/cpp/queries.hpp"
#include "port_mgr/service_selection.h"

namespace port_mgr {

/** How ports are asked for. A port costs its share of its page's round trip, and a look at every element of its page:
 *  so small pages cost round trips and large ones the square of their size. Requests ahead of the answers spare both
 *  sides the waiting. */
struct paging {
    size_t ports_of_page = 16;  /**< the most that one request names; at least 1 */
    size_t pages_under_way = 4; /**< requests that are sent before the first is answered; at least 1 */
    uint32_t wait = 10;         /**< the longest wait for one answer in seconds */
};

/** Where ports are at home: pages hold ports of one home. */
struct port_home {
    uint32_t service; /**< the SAP of the service that owns them */
    uint8_t type;     /**< their interface type */
    uint8_t slot;     /**< the slot of their module; 0 for those of none */

    /** @param index  a port
     *  @return its home */
    static port_home of(if_index_t index) {
        port_home home{pm_get_mts_sap(index), IF_TYPE_NONE, 0};
        if_index_get_type(index, &home.type);
        if_index_get_slot(index, &home.slot);
        return home;
    }

    /** Compares all of it.
     *  @return whether both are the same */
    bool operator==(const port_home &) const = default;
};

/** Ranges over ports that exist, module by module in the order of their indexes.
 *  @param ports  their interface indexes, in any order
 *  @param most   how many of them a range holds at most
 *  @return the ranges; those that a request for each finds are the ports, each once */
inline std::vector<pm_if_index_range_t> module_pages(std::vector<if_index_t> ports, size_t most) {
    std::sort(ports.begin(), ports.end());
    std::vector<pm_if_index_range_t> pages;
    port_home home{};
    size_t held = 0;
    for (const if_index_t index : ports) {
        const port_home own = port_home::of(index);
        if (held == 0 || held == most || own != home) {
            pages.push_back({index, index});
            home = own;
            held = 0;
        }
        pages.back().last = index;
        ++held;
    }
    return pages;
}

/** The full records of pages, one after the other, with several requests under way on one handle. A range to go
 *  through once:
 *
 *      port_mgr::port_pages ports(handle, pages);
 *      for (const pm_port_info_t &port : ports) ...
 *      if (!ports.why().ok()) ...
 *
 *  Pages of which nothing exists any more add nothing. At the first failure it ends. As in every answer about several
 *  ports, those of a page have the same text for their owner. Belongs to the thread of its handle, and other answers
 *  may be awaited on that meanwhile. */
class port_pages {
  public:
    /** Sends nothing yet.
     *  @param handle  the caller's queue
     *  @param pages   what is asked for, a request each
     *  @param by      how; of it, ports_of_page is a hint only */
    port_pages(mts_handle_t handle, std::vector<pm_if_index_range_t> pages, const paging &by = {})
        : handle_(handle), by_(by), pages_(std::move(pages)) {}

    /** No ports.
     *  @param failure  why there are none */
    explicit port_pages(status failure) : handle_(0), failure_(failure) {}

    port_pages(const port_pages &) = delete;
    port_pages &operator=(const port_pages &) = delete;

    /** @return the next port, which lives until the next call; null after the last one and after a failure. */
    [[nodiscard]] const pm_port_info_t *next() {
        while (position_ == page_.size())
            if (!turn_page()) return nullptr;
        return &page_[position_++];
    }

    /** @return how many ports there are at most, if no page has more than paging::ports_of_page: room to set aside. */
    [[nodiscard]] size_t reserve_hint() const { return pages_.size() * by_.ports_of_page; }

    /** @return why it ended: success after the last port. */
    [[nodiscard]] status why() const { return failure_; }

    /** Goes from port to port. A port lives until the iterator moves on. */
    class iterator {
      public:
        using value_type = pm_port_info_t;      /**< of C */
        using difference_type = std::ptrdiff_t; /**< of no use: nothing can be skipped */

        /** @param of  the pages to take from */
        explicit iterator(port_pages *of) : of_(of), port_(of->next()) {}
        /** @return the port. */
        const pm_port_info_t &operator*() const { return *port_; }
        /** @return the port. */
        const pm_port_info_t *operator->() const { return port_; }
        /** Asks for the next port. @return this */
        iterator &operator++() {
            port_ = of_->next();
            return *this;
        }
        /** Asks for the next port. */
        void operator++(int) { ++*this; }
        /** @return whether there are no more ports. */
        friend bool operator==(const iterator &at, std::default_sentinel_t) { return at.port_ == nullptr; }

      private:
        port_pages *of_;
        const pm_port_info_t *port_;
    };

    /** Asks for the first port. @return an iterator at it */
    [[nodiscard]] iterator begin() { return iterator(this); }
    /** @return what an iterator equals after the last port. */
    [[nodiscard]] std::default_sentinel_t end() const { return {}; }

  private:
    bool turn_page() {
        position_ = 0;
        page_ = {};
        send_ahead();
        return !under_way_.empty() && receive();
    }

    // A request that cannot be sent waits for an answer: that makes room in a queue that is full, and tells first what
    // went wrong with an earlier one.
    void send_ahead() {
        while (next_page_ < pages_.size() && under_way_.size() < by_.pages_under_way) {
            mts_msg_t request{};
            const uint32_t value =
                pm_send_get_port_info(handle_, PM_PORT_INFO_MODE_RANGES, 0, 0, 0, 0, 1, &pages_[next_page_], &request);
            if (value != 0 && under_way_.empty()) fail(status(value, origin::exchange));
            if (value != 0) return;
            under_way_.emplace_back(handle_, request);
            ++next_page_;
        }
    }

    bool receive() {
        mts_recv_options_t options{};
        options.word[0] = 1;
        options.word[2] = by_.wait;
        options.word[3] = under_way_.front().token();
        mts_msg_t response{};
        if (mts_recv(handle_, &response, &options) == -1) return fail(status(mts_errno_get(handle_), origin::exchange));
        under_way_.pop_front();
        auto found = parse_answer(message(handle_, response), pm_parse_get_port_info);
        if (found)
            page_ = *std::move(found);
        else if (found.why().value() != PM_ERR_INVALID_RANGE)
            return fail(found.why());
        return true;
    }

    bool fail(status failure) {
        failure_ = failure;
        under_way_.clear();
        next_page_ = pages_.size();
        return false;
    }

    mts_handle_t handle_;
    paging by_;
    std::vector<pm_if_index_range_t> pages_;
    size_t next_page_ = 0;
    std::deque<message> under_way_;
    records<pm_port_info_t> page_;
    size_t position_ = 0;
    status failure_;
};

/** Every port of the switch in full, module by module: those that a first request for all of them in brief names.
 *
 *      auto ports = port_mgr::all_ports(handle);
 *      for (const pm_port_info_t &port : ports) ...
 *      if (!ports.why().ok()) ...
 *
 *  @param handle  the caller's queue
 *  @param by      how they are asked for
 *  @return the ports, a range to go through once */
inline port_pages all_ports(mts_handle_t handle, const paging &by = {}) {
    const auto brief = get_all_port_info_brief(handle);
    if (!brief) return port_pages(brief.why());
    std::vector<if_index_t> indexes;
    indexes.reserve(brief->size());
    for (const pm_port_info_brief_t &port : *brief) indexes.push_back(port.if_index);
    return port_pages(handle, module_pages(std::move(indexes), by.ports_of_page), by);
}

}  // namespace port_mgr

#endif
