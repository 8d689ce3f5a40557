// SPDX-License-Identifier: Apache-2.0
// Every port in pages: what is asked for, in which order, and how it ends. Below its type, a faked index is a slot, a
// port and a sub-interface of one byte each.
#include <fmt/format.h>

#include <cerrno>
#include <iterator>
#include <ranges>

#include "cpp_layer_fixture.h"

namespace {

using port_mgr::module_pages;
using port_mgr::origin;
using port_mgr::paging;
using port_mgr::port_pages;
using testing::ElementsAre;
using testing::IsEmpty;
using unit::calls;
using unit::full_answer;
using unit::handle;
using unit::range_request;
using unit::sent;

using indexes = std::vector<if_index_t>;
using pages = std::vector<pm_if_index_range_t>;

static_assert(std::input_iterator<port_pages::iterator>);
static_assert(std::ranges::input_range<port_pages>);
static_assert(!std::is_copy_constructible_v<port_pages> && !std::is_move_constructible_v<port_pages>);

// ---- how ports become pages

class cpp_module_pages : public unit::cpp_layer {
  protected:
    using page = std::pair<if_index_t, if_index_t>;

    static std::vector<page> of(indexes ports, size_t most = 16) {
        std::vector<page> made;
        for (const auto &range : module_pages(std::move(ports), most)) made.emplace_back(range.first, range.last);
        return made;
    }
};

TEST_F(cpp_module_pages, of_no_port_are_none) { EXPECT_THAT(of({}), IsEmpty()); }

TEST_F(cpp_module_pages, hold_as_many_ports_as_they_may) {
    indexes ports;
    for (if_index_t port = 0; port < 33; ++port) ports.push_back(0x01000000 + (port << 8));
    EXPECT_THAT(of(ports),
                ElementsAre(page(0x01000000, 0x01000f00), page(0x01001000, 0x01001f00), page(0x01002000, 0x01002000)));
    EXPECT_THAT(of(ports, 33), ElementsAre(page(0x01000000, 0x01002000)));
    EXPECT_EQ(of(ports, 1).size(), 33U);
}

TEST_F(cpp_module_pages, hold_ports_of_one_slot) {
    EXPECT_THAT(of({0x01000000, 0x01000100, 0x01010000, 0x01010100}),
                ElementsAre(page(0x01000000, 0x01000100), page(0x01010000, 0x01010100)));
}

TEST_F(cpp_module_pages, hold_ports_of_one_type) {
    // Both are the port manager's, and have no slot.
    numbers.without_slot = {0x0a000001, 0x0a000002, 0xfe000001};
    EXPECT_THAT(of({0x0a000001, 0x0a000002, 0xfe000001}),
                ElementsAre(page(0x0a000001, 0x0a000002), page(0xfe000001, 0xfe000001)));
}

TEST_F(cpp_module_pages, hold_ports_of_one_service) {
    numbers.without_slot = {0x04000001, 0x04000002, 0x04000003};
    interfaces.channel_sub_interfaces = {0x04000002};
    EXPECT_THAT(of({0x04000001, 0x04000002, 0x04000003}),
                ElementsAre(page(0x04000001, 0x04000001), page(0x04000002, 0x04000002), page(0x04000003, 0x04000003)));
}

TEST_F(cpp_module_pages, are_in_the_order_of_the_indexes_whatever_that_of_the_ports_is) {
    EXPECT_THAT(of({0x01010000, 0x01000200, 0x01000000, 0x01000100}, 2),
                ElementsAre(page(0x01000000, 0x01000100), page(0x01000200, 0x01000200), page(0x01010000, 0x01010000)));
}

// ---- going through them

class cpp_port_pages : public unit::cpp_layer {
  protected:
    static std::string asked(if_index_t first, if_index_t last) { return sent(43, 324, range_request(first, last)); }
    static std::string received(uint32_t token, uint32_t wait = 10) {
        return fmt::format("mts_recv(0x55667788, 0x1 0x0 {:#x} {:#x} 0x0 0x0 0x0 0x0 0x0)", wait, token);
    }
    static std::string dropped(uint32_t token) { return fmt::format("mts_drop(0x55667788, message {:#x})", token); }

    void will_send(int times) {
        for (int i = 0; i < times; ++i) transport.will_send();
    }
    void will_drop(int times) {
        for (int i = 0; i < times; ++i) transport.will_drop();
    }

    // The next page comes; its request is dropped, and its answer once it is read.
    void will_receive_page(const indexes &ports) {
        transport.will_receive_answer(full_answer(ports));
        will_drop(2);
    }

    // The next page is answered with a status alone.
    void will_receive_status(uint32_t status) {
        transport.will_receive_answer(support::bytes(unit::answer(status, 0)));
        will_drop(2);
    }

    static indexes through(port_pages &ports) { return unit::indexes_of(ports); }

    const pages three_pages{{0x01000000, 0x01000100}, {0x01000200, 0x01000300}, {0x01000400, 0x01000400}};
};

TEST_F(cpp_port_pages, send_nothing_before_the_first_port_is_asked_for) {
    const port_pages ports(handle, three_pages);
    EXPECT_TRUE(ports.why().ok());
    EXPECT_THAT(transported(), IsEmpty());
}

TEST_F(cpp_port_pages, tell_how_much_room_they_take) {
    const std::vector<pm_if_index_range_t> three(3);
    EXPECT_EQ(port_pages(handle, three).reserve_hint(), 3u * 16);
    EXPECT_EQ(port_pages(handle, three, {.ports_of_page = 4}).reserve_hint(), 3u * 4);
    EXPECT_EQ(port_pages(port_mgr::status(ETIMEDOUT, port_mgr::origin::exchange)).reserve_hint(), 0u);
}

TEST_F(cpp_port_pages, of_no_page_end_at_once) {
    port_pages ports(handle, {});
    EXPECT_EQ(ports.next(), nullptr);
    EXPECT_TRUE(ports.why().ok());
    EXPECT_THAT(transported(), IsEmpty());
}

TEST_F(cpp_port_pages, are_asked_for_one_after_the_other_without_requests_ahead) {
    for (const indexes &page : {indexes{1, 2}, indexes{3, 4}, indexes{5}}) {
        will_send(1);
        will_receive_page(page);
    }
    port_pages ports(handle, three_pages, {.pages_under_way = 1, .wait = 7});
    EXPECT_EQ(through(ports), (indexes{1, 2, 3, 4, 5}));
    EXPECT_TRUE(ports.why().ok());
    EXPECT_THAT(transported(),
                ElementsAre(asked(0x01000000, 0x01000100), received(0x7001, 7), dropped(0x7001), dropped(0x7002),
                            asked(0x01000200, 0x01000300), received(0x7003, 7), dropped(0x7003), dropped(0x7004),
                            asked(0x01000400, 0x01000400), received(0x7005, 7), dropped(0x7005), dropped(0x7006)));
}

TEST_F(cpp_port_pages, are_asked_for_ahead_and_received_in_their_order) {
    will_send(2);
    will_receive_page({1, 2});
    will_send(1);
    will_receive_page({3, 4});
    will_receive_page({5});
    port_pages ports(handle, three_pages, {.pages_under_way = 2});
    EXPECT_EQ(through(ports), (indexes{1, 2, 3, 4, 5}));
    EXPECT_THAT(transported(),
                ElementsAre(asked(0x01000000, 0x01000100), asked(0x01000200, 0x01000300), received(0x7001),
                            dropped(0x7001), dropped(0x7003), asked(0x01000400, 0x01000400), received(0x7002),
                            dropped(0x7002), dropped(0x7005), received(0x7004), dropped(0x7004), dropped(0x7006)));
}

TEST_F(cpp_port_pages, are_four_ahead_unless_told) {
    will_send(4);
    will_receive_page({1});
    will_drop(3);
    port_pages ports(handle, pages(9, {0x01000000, 0x01000000}));
    EXPECT_NE(ports.next(), nullptr);
    EXPECT_EQ(sent_requests().size(), 4U);
}

TEST_F(cpp_port_pages, have_no_more_ahead_than_there_are) {
    will_send(3);
    for (const indexes &page : {indexes{1}, indexes{2}, indexes{3}}) will_receive_page(page);
    port_pages ports(handle, three_pages, {.pages_under_way = 100});
    EXPECT_EQ(through(ports), (indexes{1, 2, 3}));
    EXPECT_EQ(ports.next(), nullptr);
}

TEST_F(cpp_port_pages, that_find_the_queue_full_wait_for_an_answer_and_go_on) {
    will_send(1);
    transport.will_send(-1, EAGAIN);
    will_receive_page({1, 2});
    transport.will_send();
    transport.will_send(-1, EAGAIN);
    will_receive_page({3, 4});
    transport.will_send();
    will_receive_page({5});
    port_pages ports(handle, three_pages, {.pages_under_way = 3});
    EXPECT_EQ(through(ports), (indexes{1, 2, 3, 4, 5}));
    EXPECT_TRUE(ports.why().ok());
    EXPECT_THAT(sent_requests(),
                ElementsAre(asked(0x01000000, 0x01000100), asked(0x01000200, 0x01000300), asked(0x01000200, 0x01000300),
                            asked(0x01000400, 0x01000400), asked(0x01000400, 0x01000400)));
}

TEST_F(cpp_port_pages, that_cannot_be_sent_with_nothing_under_way_end) {
    transport.will_send(-1, EHOSTUNREACH);
    port_pages ports(handle, three_pages);
    EXPECT_EQ(ports.next(), nullptr);
    EXPECT_EQ(ports.why().value(), uint32_t{EHOSTUNREACH});
    EXPECT_TRUE(ports.why().is_transport_failure());
    EXPECT_EQ(ports.next(), nullptr);
    EXPECT_EQ(sent_requests().size(), 1U);
}

TEST_F(cpp_port_pages, of_which_nothing_exists_any_more_add_nothing) {
    will_send(3);
    will_receive_status(PM_ERR_INVALID_RANGE);
    will_receive_page({3});
    will_receive_status(PM_ERR_INVALID_RANGE);
    port_pages ports(handle, three_pages);
    EXPECT_EQ(through(ports), (indexes{3}));
    EXPECT_TRUE(ports.why().ok());
}

TEST_F(cpp_port_pages, without_records_add_nothing) {
    will_send(3);
    for (const indexes &page : {indexes{}, indexes{}, indexes{5}}) will_receive_page(page);
    port_pages ports(handle, three_pages);
    EXPECT_EQ(through(ports), (indexes{5}));
}

TEST_F(cpp_port_pages, end_at_a_status_and_give_up_what_is_under_way) {
    will_send(3);
    will_receive_page({1});
    will_receive_status(PM_ERR_REJECTED);
    will_drop(1);
    port_pages ports(handle, three_pages);
    EXPECT_EQ(through(ports), (indexes{1}));
    EXPECT_EQ(ports.why().value(), PM_ERR_REJECTED);
    EXPECT_EQ(ports.why().from(), origin::answer);
    EXPECT_EQ(ports.next(), nullptr);
}

TEST_F(cpp_port_pages, end_when_an_answer_does_not_come) {
    for (const uint32_t error : {ETIMEDOUT, ECONNRESET, EINTR}) {
        will_send(3);
        will_receive_page({1});
        transport.will_receive(-1, error);
        will_drop(2);
        port_pages ports(handle, three_pages);
        EXPECT_EQ(through(ports), (indexes{1}));
        EXPECT_EQ(ports.why().value(), error);
        EXPECT_EQ(ports.why().from(), origin::exchange);
    }
}

TEST_F(cpp_port_pages, end_without_memory_for_a_page) {
    will_send(3);
    will_receive_page({1});
    will_drop(2);
    heap.fail_allocation(4);
    port_pages ports(handle, three_pages);
    EXPECT_EQ(ports.next(), nullptr);
    EXPECT_EQ(ports.why().words(), "out of memory");
    output.take();
}

TEST_F(cpp_port_pages, that_are_left_half_way_drop_what_they_hold) {
    {
        will_send(3);
        will_receive_page({1, 2});
        port_pages ports(handle, three_pages);
        for (const pm_port_info_t &port : ports) {
            EXPECT_EQ(port.if_index, 1U);
            break;
        }
        EXPECT_EQ(heap.live_blocks(), 1);
        will_drop(2);
    }
    EXPECT_EQ(heap.live_blocks(), 0);
}

TEST_F(cpp_port_pages, hold_one_page_at_a_time) {
    will_send(3);
    for (const indexes &page : {indexes{1}, indexes{2}, indexes{3}}) will_receive_page(page);
    port_pages ports(handle, three_pages);
    while (ports.next() != nullptr) EXPECT_EQ(heap.live_blocks(), 1);
    EXPECT_EQ(heap.live_blocks(), 0);
}

TEST_F(cpp_port_pages, are_gone_through_by_hand_too) {
    will_send(1);
    will_receive_page({1, 2, 3});
    port_pages ports(handle, {{0x01000000, 0x01000200}});
    port_pages::iterator at = ports.begin();
    EXPECT_EQ(at->if_index, 1U);
    at++;
    EXPECT_EQ((*at).if_index, 2U);
    ++at;
    EXPECT_EQ(at->if_index, 3U);
    EXPECT_NE(at, ports.end());
    EXPECT_EQ(++at, ports.end());
}

// ---- all ports

class cpp_all_ports : public cpp_port_pages {};

TEST_F(cpp_all_ports, are_those_that_the_brief_answer_names_in_pages) {
    will_answer(unit::brief_answer({0x01010000, 0x01000100, 0x01000000, 0x01000200}));
    will_send(3);
    for (const indexes &page : {indexes{0x01000000, 0x01000100}, indexes{0x01000200}, indexes{0x01010000}})
        will_receive_page(page);
    auto ports = port_mgr::all_ports(handle, {.ports_of_page = 2});
    EXPECT_EQ(through(ports), (indexes{0x01000000, 0x01000100, 0x01000200, 0x01010000}));
    EXPECT_TRUE(ports.why().ok());
    EXPECT_THAT(sent_requests(),
                ElementsAre(sent(43, 3141, unit::port_info_request(1, 0)), asked(0x01000000, 0x01000100),
                            asked(0x01000200, 0x01000200), asked(0x01010000, 0x01010000)));
}

TEST_F(cpp_all_ports, are_sixteen_a_page_unless_told) {
    indexes brief;
    for (if_index_t port = 0; port < 17; ++port) brief.push_back(0x01000000 + (port << 8));
    will_answer(unit::brief_answer(brief));
    will_send(2);
    will_receive_page({1});
    will_drop(1);
    auto ports = port_mgr::all_ports(handle);
    EXPECT_NE(ports.next(), nullptr);
    EXPECT_THAT(sent_requests(), ElementsAre(testing::_, asked(0x01000000, 0x01000f00), asked(0x01001000, 0x01001000)));
}

TEST_F(cpp_all_ports, of_a_switch_without_any_are_none) {
    will_answer(unit::brief_answer({}));
    auto ports = port_mgr::all_ports(handle);
    EXPECT_EQ(ports.begin(), ports.end());
    EXPECT_TRUE(ports.why().ok());
}

TEST_F(cpp_all_ports, that_nobody_names_are_none_and_tell_why) {
    will_answer(support::bytes(unit::answer(PM_ERR_REJECTED, 0)));
    auto ports = port_mgr::all_ports(handle);
    EXPECT_EQ(ports.next(), nullptr);
    EXPECT_EQ(ports.why().value(), PM_ERR_REJECTED);
    EXPECT_EQ(ports.why().from(), origin::answer);
    EXPECT_EQ(sent_requests().size(), 1U);
}

}  // namespace
