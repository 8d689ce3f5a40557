// SPDX-License-Identifier: Apache-2.0
// The parts of requests about sub-interfaces that callers use alone: the exchange, the entries, the reserved numbers.
#include <cstring>

#include "sub_interface_fixture.h"

namespace {

using support::bytes;
using support::guarded_bytes;
using support::payload;
using testing::ElementsAre;
using testing::IsEmpty;
using unit::calls;
using unit::handle;
using unit::status_answer;

constexpr if_index_t main_a = 0x02011000;
constexpr if_index_t main_b = 0x02022000;

// ---- the exchange

class sub_interface_exchange : public support::library_test {
  protected:
    static uint32_t send() { return pm_cmi_config_sub_interface(handle, "abc", 3, unit::wait); }
};

TEST_F(sub_interface_exchange, sends_what_it_is_given) {
    transport.will_answer_query(0, status_answer(0));
    EXPECT_EQ(send(), 0U);
    EXPECT_THAT(support::call_log::take(), ElementsAre(unit::queried(2837, 3, {'a', 'b', 'c'}, 175), "free(answer)"));
}

TEST_F(sub_interface_exchange, passes_handle_and_last_argument_on) {
    transport.will_answer_query(0, status_answer(0));
    EXPECT_EQ(pm_cmi_config_sub_interface(0xfffffffd, "abc", 3, 0xfffffffe), 0U);
    EXPECT_THAT(support::call_log::take(),
                ElementsAre("cmi_req_resp(2837, 3, <616263>, 3, 0, 0, 175, 0xfffffffd, 4294967294)", "free(answer)"));
}

TEST_F(sub_interface_exchange, returns_the_second_word_of_the_answer) {
    for (const uint32_t status : {1U, 0x01020304U, PM_ERR_INVALID_RANGE, 0xffffffffU}) {
        transport.will_answer_query(0, status_answer(status));
        EXPECT_EQ(send(), status);
        transport.will_answer_query(0, payload().be32(7).be32(status).be32(9));
        EXPECT_EQ(send(), status);
    }
}

TEST_F(sub_interface_exchange, refuses_an_answer_that_is_empty_or_too_short) {
    transport.will_answer_query(0, {});
    EXPECT_EQ(send(), PM_ERR_NO_PAYLOAD);
    for (uint32_t size = 0; size < 8; ++size) {
        transport.will_answer_query(0, bytes(size, 1));
        EXPECT_EQ(send(), PM_ERR_INVALID_PARAM) << size;
        EXPECT_EQ(heap.live_blocks(), 0);
    }
    transport.will_answer_query(0, status_answer(0), 7);
    EXPECT_EQ(send(), PM_ERR_INVALID_PARAM);
}

TEST_F(sub_interface_exchange, returns_the_status_of_a_failed_exchange) {
    for (const uint32_t status : {1U, 113U, 0xffffffffU}) {
        transport.will_answer_query(status, {});
        EXPECT_EQ(send(), status);
    }
}

TEST_F(sub_interface_exchange, frees_the_answer_of_a_failed_exchange_unread) {
    transport.will_answer_query(113, status_answer(5));
    EXPECT_EQ(send(), 113U);
    EXPECT_EQ(heap.live_blocks(), 0);
}

TEST_F(sub_interface_exchange, has_an_answer_whose_second_word_is_the_status) {
    const guarded_bytes answer(payload().be32(1).be32(0x01020304));
    EXPECT_EQ(pm_cmi_parse_config_sub_intf_resp(answer.data()), 0x01020304U);
    const bytes unaligned = payload().u8(0).be32(1).be32(0x05060708);
    EXPECT_EQ(pm_cmi_parse_config_sub_intf_resp(&unaligned[1]), 0x05060708U);
    EXPECT_EQ(pm_cmi_parse_config_sub_intf_resp(nullptr), PM_ERR_NO_PAYLOAD);
}

// ---- the entries

class sub_interface_entries : public support::library_test {
  protected:
    // A request with room for three entries, with rubbish in every byte but the count and the first index.
    sub_interface_entries() : image(12 + 3 * sizeof(pm_sub_intf_entry_t), 0xcc) {
        store(8, 0);
        store(16, main_a);
    }

    void store(size_t offset, uint32_t word) { std::memcpy(&image[offset], &word, sizeof word); }

    uint32_t find(if_index_t main, uint32_t max_entries) {
        return pm_get_index_for_intf_in_config_sub_intf_payload(
            reinterpret_cast<pm_config_sub_intf_req_t *>(image.data()), main, max_entries, &index);
    }

    bytes image;
    uint32_t index = 77;
};

TEST_F(sub_interface_entries, are_added_while_there_is_room) {
    bytes expected = image;
    for (uint32_t i = 0; i < 3; ++i) {
        const if_index_t main = main_b + (i << 12);
        EXPECT_EQ(find(main, 3), 0U);
        EXPECT_EQ(index, i);
        EXPECT_THAT(support::call_log::take(), ElementsAre("bitset_clear(size 512)"));
        const size_t entry = 12 + 536 * i;
        const uint32_t words[] = {i + 1, main, 512};
        std::memcpy(&expected[8], &words[0], 4);
        std::memcpy(&expected[entry + 4], &words[1], 4);
        std::memcpy(&expected[entry + 20], &words[2], 4);
        std::memset(&expected[entry + 24], 0, 512);
        EXPECT_EQ(support::hex(image), support::hex(expected));
    }
    index = 77;
    EXPECT_EQ(find(main_a, 3), PM_ERR_FAILURE);
    EXPECT_EQ(index, 77U);
    EXPECT_EQ(support::hex(image), support::hex(expected));
    EXPECT_THAT(support::call_log::take(), IsEmpty());
}

TEST_F(sub_interface_entries, are_found_when_they_are_the_first) {
    for (const uint32_t count : {1U, 2U, 3U}) {
        store(8, count);
        const bytes before = image;
        index = 77;
        EXPECT_EQ(find(main_a, 3), 0U);
        EXPECT_EQ(index, 0U);
        EXPECT_EQ(support::hex(image), support::hex(before));
    }
    EXPECT_THAT(support::call_log::take(), IsEmpty());
}

TEST_F(sub_interface_entries, are_found_also_when_there_is_no_more_room) {
    store(8, 1);
    for (const uint32_t max_entries : {0U, 1U}) {
        index = 77;
        EXPECT_EQ(find(main_a, max_entries), 0U);
        EXPECT_EQ(index, 0U);
    }
}

TEST_F(sub_interface_entries, are_not_found_when_there_are_none) {
    EXPECT_EQ(find(main_a, 1), 0U);
    EXPECT_THAT(support::call_log::take(), ElementsAre("bitset_clear(size 512)"));
}

TEST_F(sub_interface_entries, are_not_found_behind_the_first) {
    store(8, 2);
    store(12 + 536 + 4, main_b);
    EXPECT_EQ(find(main_b, 3), 0U);
    EXPECT_EQ(index, 2U);
    EXPECT_EQ(find(main_b, 3), PM_ERR_FAILURE);
}

TEST_F(sub_interface_entries, are_not_added_beyond_the_most_there_may_be) {
    for (const uint32_t max_entries : {0U, 1U, 2U}) {
        store(8, max_entries);
        const bytes before = image;
        EXPECT_EQ(find(main_b, max_entries), PM_ERR_FAILURE);
        EXPECT_EQ(index, 77U);
        EXPECT_EQ(support::hex(image), support::hex(before));
    }
    EXPECT_THAT(support::call_log::take(), IsEmpty());
}

TEST_F(sub_interface_entries, without_a_place_for_the_index_or_a_request_are_refused) {
    auto *const request = reinterpret_cast<pm_config_sub_intf_req_t *>(image.data());
    const bytes before = image;
    EXPECT_EQ(pm_get_index_for_intf_in_config_sub_intf_payload(request, main_a, 3, nullptr), PM_ERR_FAILURE);
    EXPECT_EQ(pm_get_index_for_intf_in_config_sub_intf_payload(nullptr, main_a, 3, &index), PM_ERR_FAILURE);
    EXPECT_EQ(support::hex(image), support::hex(before));
    EXPECT_EQ(index, 77U);
}

// ---- the reserved numbers

class reserved_numbers : public support::library_test {
  protected:
    reserved_numbers() { set.size = 512; }

    void add(uint32_t number) {
        set.bits[number / 8] = static_cast<uint8_t>(set.bits[number / 8] | 0x80 >> number % 8);
    }

    // The answer, and the numbers looked at.
    int32_t check(const calls &looks) {
        const int32_t answer = pm_check_is_valid_sub_intf_bitset(&set);
        EXPECT_EQ(support::call_log::take(), looks);
        return answer;
    }

    const calls all{"bitset_is_bit_set(0)", "bitset_is_bit_set(1)", "bitset_is_bit_set(4094)",
                    "bitset_is_bit_set(4095)"};
    bitset_t set{};
};

TEST_F(reserved_numbers, are_looked_at_in_order_up_to_the_first_that_is_set) {
    const uint32_t reserved[] = {0, 1, 4094, 4095};
    for (uint32_t pattern = 0; pattern < 16; ++pattern) {
        set = {512, {}};
        size_t looked_at = 4;
        for (uint32_t i = 4; i-- > 0;) {
            if ((pattern >> i & 1) == 0) continue;
            add(reserved[i]);
            looked_at = i + 1;
        }
        const calls looks(all.begin(), all.begin() + static_cast<ptrdiff_t>(looked_at));
        EXPECT_EQ(check(looks), pattern == 0 ? 1 : 0) << pattern;
    }
}

TEST_F(reserved_numbers, are_four_and_no_others) {
    for (uint32_t number = 2; number < 4094; ++number) {
        set = {512, {}};
        add(number);
        EXPECT_EQ(check(all), 1) << number;
    }
    for (uint32_t number = 2; number < 4094; ++number) add(number);
    EXPECT_EQ(check(all), 1);
}

}  // namespace
