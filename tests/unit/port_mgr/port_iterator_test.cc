// SPDX-License-Identifier: Apache-2.0
#include <array>
#include <cstring>

#include "library_test.h"
#include "port_mgr/port_mgr_common.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;

using words = std::array<uint32_t, 9>;

words words_of(const pm_iterator_t *iterator) {
    words all{};
    std::memcpy(all.data(), iterator, sizeof all);
    return all;
}

class port_iterator : public support::library_test {
  protected:
    port_iterator() : message(transport.message(324, support::bytes{1, 2, 3})) {
        for (uint32_t i = 2; i < 24; ++i) message.word[i] = 0x04030201 * i;
    }

    void TearDown() override {
        transport.drop(message);
        library_test::TearDown();
    }

    void expect_create_refused(pm_iterator_t **to, const mts_msg_t *from) {
        EXPECT_EQ(pm_iterator_create(to, from), PM_ERR_INVALID_PARAM);
        EXPECT_THAT(assertions.take(), ElementsAre("port_iterator.cc: pm_iterator_create"));
        EXPECT_THAT(support::call_log::take(), IsEmpty());
    }

    void expect_destroy_refused(pm_iterator_t **what) {
        EXPECT_EQ(pm_iterator_destroy(what), PM_ERR_INVALID_PARAM);
        EXPECT_THAT(assertions.take(), ElementsAre("port_iterator.cc: pm_iterator_destroy"));
        EXPECT_THAT(support::call_log::take(), IsEmpty());
    }

    mts_msg_t message;
    pm_iterator_t other{};
    pm_iterator_t *iterator = &other;
};

TEST_F(port_iterator, holds_the_identifier_and_the_first_words_of_its_message) {
    EXPECT_EQ(pm_iterator_create(&iterator, &message), 0U);
    EXPECT_EQ(words_of(iterator),
              (words{1, 0x1d007001, message.word[0], 0x7001, 2 * 0x04030201, 3 * 0x04030201, 4 * 0x04030201, 0, 0}));
    EXPECT_THAT(support::call_log::take(), ElementsAre("malloc(36)", "mts_msg_id_get(message 0x7001)"));
    EXPECT_EQ(pm_iterator_destroy(&iterator), 0U);
}

TEST_F(port_iterator, names_its_words) {
    EXPECT_EQ(pm_iterator_create(&iterator, &message), 0U);
    EXPECT_EQ(iterator->mark, 1U);
    EXPECT_EQ(iterator->message_id, 0x1d007001U);
    EXPECT_EQ(std::memcmp(iterator->message_words, message.word, 20), 0);
    EXPECT_EQ(iterator->reserved[0], 0U);
    EXPECT_EQ(iterator->reserved[1], 0U);
    EXPECT_EQ(pm_iterator_destroy(&iterator), 0U);
}

TEST_F(port_iterator, does_not_refer_to_its_message) {
    EXPECT_EQ(pm_iterator_create(&iterator, &message), 0U);
    const words before = words_of(iterator);
    const mts_msg_t as_it_was = message;
    std::memset(&message, 0x5a, sizeof message);
    EXPECT_EQ(words_of(iterator), before);
    EXPECT_EQ(pm_iterator_destroy(&iterator), 0U);
    message = as_it_was;
}

TEST_F(port_iterator, leaves_its_message_alone) {
    const mts_msg_t as_it_was = message;
    EXPECT_EQ(pm_iterator_create(&iterator, &message), 0U);
    EXPECT_EQ(std::memcmp(&message, &as_it_was, sizeof message), 0);
    EXPECT_EQ(pm_iterator_destroy(&iterator), 0U);
    EXPECT_NE(transport.find(&message), nullptr);
}

TEST_F(port_iterator, is_one_of_many) {
    pm_iterator_t *second = nullptr;
    EXPECT_EQ(pm_iterator_create(&iterator, &message), 0U);
    EXPECT_EQ(pm_iterator_create(&second, &message), 0U);
    EXPECT_NE(iterator, second);
    EXPECT_EQ(pm_iterator_destroy(&iterator), 0U);
    EXPECT_EQ(second->mark, 1U);
    EXPECT_EQ(pm_iterator_destroy(&second), 0U);
}

TEST_F(port_iterator, needs_a_variable_and_a_message) {
    expect_create_refused(nullptr, &message);
    expect_create_refused(&iterator, nullptr);
    EXPECT_EQ(iterator, &other);
    expect_create_refused(nullptr, nullptr);
}

TEST_F(port_iterator, is_null_without_memory) {
    heap.fail_allocation(1);
    EXPECT_EQ(pm_iterator_create(&iterator, &message), 1U);
    EXPECT_EQ(iterator, nullptr);
    EXPECT_THAT(support::call_log::take(), ElementsAre("malloc(36) fails"));
    EXPECT_THAT(output.take(), MatchesRegex("\\(Error\\) Malloc Failure in infra/port_manager/lib/pm_api_common/"
                                            "port_iterator\\.cc\\[[1-9][0-9]*\\] for size 36\n"));
}

TEST_F(port_iterator, is_destroyed_with_its_mark) {
    EXPECT_EQ(pm_iterator_create(&iterator, &message), 0U);
    support::call_log::take();
    EXPECT_EQ(pm_iterator_destroy(&iterator), 0U);
    EXPECT_EQ(iterator, nullptr);
    EXPECT_THAT(support::call_log::take(), ElementsAre("free(36)"));
    ASSERT_EQ(heap.last_freed().size(), 36U);
    EXPECT_EQ(support::hex(heap.last_freed().data(), 8), "010000000170001d");
}

TEST_F(port_iterator, is_not_destroyed_twice) {
    EXPECT_EQ(pm_iterator_create(&iterator, &message), 0U);
    EXPECT_EQ(pm_iterator_destroy(&iterator), 0U);
    support::call_log::take();
    expect_destroy_refused(&iterator);
    EXPECT_EQ(iterator, nullptr);
}

TEST_F(port_iterator, of_a_null_variable_is_not_destroyed) { expect_destroy_refused(nullptr); }

TEST_F(port_iterator, without_its_mark_is_left_alone) {
    for (const uint32_t mark : {0U, 2U, 0x101U, 0x01000000U, 0x10001U, 0xffffffffU}) {
        EXPECT_EQ(pm_iterator_create(&iterator, &message), 0U);
        support::call_log::take();
        iterator->mark = mark;
        pm_iterator_t *const as_it_was = iterator;
        expect_destroy_refused(&iterator);
        EXPECT_EQ(iterator, as_it_was);
        EXPECT_TRUE(heap.is_live(iterator));
        EXPECT_EQ(iterator->mark, mark);
        iterator->mark = 1;
        EXPECT_EQ(pm_iterator_destroy(&iterator), 0U);
    }
}

}  // namespace
