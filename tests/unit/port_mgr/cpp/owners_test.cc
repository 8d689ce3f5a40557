// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstdlib>
#include <ranges>
#include <type_traits>
#include <utility>

#include "cpp_layer_fixture.h"

namespace {

using port_mgr::message;
using port_mgr::records;
using support::payload;
using testing::ElementsAre;
using testing::IsEmpty;
using unit::calls;
using unit::handle;

// ---- messages

static_assert(!std::is_copy_constructible_v<message>);
static_assert(std::is_nothrow_move_constructible_v<message>);

class cpp_message : public unit::cpp_layer {
  protected:
    message received(const std::optional<support::bytes> &content = support::bytes{1}) {
        return {handle, transport.message(0, content)};
    }
};

TEST_F(cpp_message, is_dropped_once_with_its_handle) {
    transport.will_drop();
    { const message one = received(); }
    EXPECT_THAT(transported(), ElementsAre("mts_drop(0x55667788, message 0x7001)"));
}

TEST_F(cpp_message, that_moves_is_dropped_once_where_it_went) {
    message first = received();
    {
        const message second(std::move(first));
        EXPECT_EQ(second.token(), 0x7001U);
        EXPECT_EQ(second.payload().size(), 1U);
        transport.will_drop();
    }
    EXPECT_THAT(transported(), ElementsAre("mts_drop(0x55667788, message 0x7001)"));
}

TEST_F(cpp_message, that_is_assigned_to_is_dropped_at_once) {
    message first = received();
    message second = received();
    transport.will_drop();
    first = std::move(second);
    EXPECT_THAT(transported(), ElementsAre("mts_drop(0x55667788, message 0x7001)"));
    EXPECT_EQ(first.token(), 0x7002U);
    transport.will_drop();
    first = received();
    EXPECT_THAT(transported(), ElementsAre("mts_drop(0x55667788, message 0x7002)"));
    transport.will_drop();
}

TEST_F(cpp_message, that_is_assigned_to_itself_stays) {
    message one = received();
    message &same = one;
    one = std::move(same);
    EXPECT_EQ(one.token(), 0x7001U);
    EXPECT_THAT(transported(), IsEmpty());
    transport.will_drop();
}

TEST_F(cpp_message, that_moved_away_takes_another) {
    message first = received();
    message second(std::move(first));
    first = received();
    EXPECT_THAT(transported(), IsEmpty());
    EXPECT_EQ(first.token(), 0x7002U);
    EXPECT_EQ(second.token(), 0x7001U);
    transport.will_drop();
    transport.will_drop();
}

TEST_F(cpp_message, shows_its_payload_where_it_lies) {
    const message one = received(support::bytes{7, 8, 9});
    const auto bytes = one.payload();
    EXPECT_THAT(bytes, ElementsAre(std::byte{7}, std::byte{8}, std::byte{9}));
    EXPECT_EQ(static_cast<const void *>(bytes.data()), transport.payload_of(*one.get()));
    transport.will_drop();
}

TEST_F(cpp_message, without_payload_shows_none) {
    const message one = received({});
    EXPECT_EQ(one.payload().data(), nullptr);
    EXPECT_EQ(one.payload().size(), 0U);
    transport.will_drop();
}

TEST_F(cpp_message, of_no_handle_is_nobodys_to_drop) {
    { const message none(0, mts_msg_t{}); }
    EXPECT_THAT(transported(), IsEmpty());
}

// ---- records

using ports = records<pm_port_info_brief_t>;

static_assert(!std::is_copy_constructible_v<ports>);
static_assert(std::is_nothrow_move_constructible_v<ports> && std::is_nothrow_move_assignable_v<ports>);
static_assert(std::ranges::contiguous_range<ports> && std::ranges::sized_range<ports>);
static_assert(std::is_same_v<std::ranges::range_reference_t<ports>, const pm_port_info_brief_t &>);

class cpp_records : public unit::cpp_layer {
  protected:
    // What a call of the C interface hands out: ports 1, 2, ...
    ports of(uint32_t count) {
        auto *const block = static_cast<pm_port_info_brief_t *>(std::calloc(count + 1, sizeof(pm_port_info_brief_t)));
        for (uint32_t i = 0; i < count; ++i) block[i].if_index = i + 1;
        heap.follow(block, "records");
        return {block, count};
    }

    static long freed() { return std::ranges::count(support::call_log::take(), "free(records)"); }
};

TEST_F(cpp_records, are_freed_once) {
    { const ports some = of(2); }
    EXPECT_EQ(freed(), 1);
}

TEST_F(cpp_records, are_a_range_of_what_c_has) {
    const ports some = of(3);
    EXPECT_EQ(unit::indexes_of(some), (std::vector<if_index_t>{1, 2, 3}));
    EXPECT_EQ(some.size(), 3U);
    EXPECT_FALSE(some.empty());
    EXPECT_EQ(some[2].if_index, 3U);
    const std::span<const pm_port_info_brief_t> all = some;
    EXPECT_EQ(all.data(), some.begin());
    EXPECT_EQ(all.size(), 3U);
    EXPECT_EQ(some.all().data() + 3, some.end());
}

TEST_F(cpp_records, that_move_are_freed_once_where_they_went) {
    ports first = of(2);
    {
        const ports second(std::move(first));
        EXPECT_EQ(second.size(), 2U);
        EXPECT_EQ(freed(), 0);
    }
    EXPECT_EQ(freed(), 1);
}

TEST_F(cpp_records, that_moved_away_are_empty) {
    ports first = of(2);
    const ports second(std::move(first));
    EXPECT_TRUE(first.empty());
    EXPECT_EQ(first.size(), 0U);
    EXPECT_EQ(first.begin(), first.end());
    EXPECT_TRUE(first.all().empty());
    EXPECT_EQ(first.release(), nullptr);
}

TEST_F(cpp_records, that_are_assigned_to_are_freed_at_once) {
    ports first = of(2);
    first = of(1);
    EXPECT_EQ(freed(), 1);
    EXPECT_EQ(first.size(), 1U);
    first = {};
    EXPECT_EQ(freed(), 1);
    EXPECT_TRUE(first.empty());
}

TEST_F(cpp_records, that_are_released_are_the_callers_to_free) {
    pm_port_info_brief_t *block = nullptr;
    {
        ports some = of(2);
        block = some.release();
        EXPECT_TRUE(some.empty());
        EXPECT_EQ(some.begin(), some.end());
    }
    EXPECT_EQ(freed(), 0);
    EXPECT_EQ(block[1].if_index, 2U);
    std::free(block);
    EXPECT_EQ(freed(), 1);
}

TEST_F(cpp_records, of_nothing_are_empty_whatever_the_count_was) {
    const ports none;
    const ports of_null(nullptr, 7);
    for (const ports *each : {&none, &of_null}) {
        EXPECT_TRUE(each->empty());
        EXPECT_EQ(each->size(), 0U);
        EXPECT_EQ(each->begin(), each->end());
        EXPECT_TRUE(each->all().empty());
    }
}

TEST_F(cpp_records, without_any_but_with_a_block_are_freed_all_the_same) {
    {
        const ports none = of(0);
        EXPECT_TRUE(none.empty());
        EXPECT_EQ(none.begin(), none.end());
    }
    EXPECT_EQ(freed(), 1);
}

}  // namespace
