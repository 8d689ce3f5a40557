// SPDX-License-Identifier: Apache-2.0
// Sub-interfaces by bitmap.
#include <cstring>

#include "sub_interface_fixture.h"

namespace {

using support::bytes;
using support::guarded_bytes;
using support::payload;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;
using unit::blocks_and_exchanges;
using unit::calls;
using unit::cmi_report_start;
using unit::entry_of;
using unit::handle;
using unit::sent_sub_interfaces;
using unit::status_answer;
using unit::wait;

constexpr if_index_t main_a = 0x02011000;

class sub_interface_bitmap : public support::library_test {
  protected:
    sub_interface_bitmap() : record{main_a, {0x01020304, 0x05060708, 0x090a0b0c}, {}} {}

    [[nodiscard]] uint32_t configure() const { return pm_snmp_config_sub_interface(handle, &record, wait); }

    calls configured() {
        transport.will_answer_query(0, status_answer(0));
        EXPECT_EQ(configure(), 0U);
        return support::call_log::take();
    }

    void set(uint32_t number) {
        record.bitmap[number / 8] = static_cast<uint8_t>(record.bitmap[number / 8] | 0x80 >> number % 8);
    }

    [[nodiscard]] std::string asked(const std::vector<uint32_t> &bits) const {
        return unit::sub_interfaces_asked(
            sent_sub_interfaces(3, {entry_of(record.main, bits, {record.word[0], record.word[1], record.word[2]})}));
    }

    void expect_refused(uint32_t status) {
        EXPECT_EQ(configure(), status);
        EXPECT_THAT(blocks_and_exchanges(support::call_log::take()), IsEmpty());
    }

    pm_snmp_sub_intf_t record;
};

TEST_F(sub_interface_bitmap, has_these_bytes) {
    record.bitmap[0] = 0x80;
    record.bitmap[1] = 0x01;
    record.bitmap[511] = 0x03;
    payload request;
    request.be32(3).be32(0).be32(1);
    request.be32(0).append({2, 1, 0x10, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
    request.append({0, 2, 0, 0}).append({0x80, 0x01}).fill(509, 0).append({0x03});
    EXPECT_EQ(request.data().size(), 548U);
    EXPECT_EQ(blocks_and_exchanges(configured()),
              (calls{"malloc(548)", unit::sub_interfaces_asked(request), "free(answer)", "free(548)"}));
}

TEST_F(sub_interface_bitmap, clears_the_set_and_sets_its_bits_in_order) {
    for (const uint32_t number : {0U, 15U, 16U, 4095U}) set(number);
    calls log = configured();
    std::erase_if(log, [](const std::string &call) { return !call.starts_with("bitset"); });
    EXPECT_THAT(log, ElementsAre("bitset_clear(size 512)", "bitset_set_bit(0)", "bitset_set_bit(15)",
                                 "bitset_set_bit(16)", "bitset_set_bit(4095)"));
}

TEST_F(sub_interface_bitmap, has_a_bit_for_each_number) {
    for (uint32_t number = 0; number < 4096; ++number) {
        std::memset(record.bitmap, 0, sizeof record.bitmap);
        set(number);
        const calls log = configured();
        EXPECT_THAT(log, testing::Contains(fmt::format("bitset_set_bit({})", number)));
        EXPECT_THAT(log, testing::Contains(asked({number})));
    }
}

TEST_F(sub_interface_bitmap, may_be_empty_or_full) {
    EXPECT_THAT(configured(), testing::Contains(asked({})));
    std::memset(record.bitmap, 0xff, sizeof record.bitmap);
    std::vector<uint32_t> all;
    for (uint32_t number = 0; number < 4096; ++number) all.push_back(number);
    EXPECT_THAT(configured(), testing::Contains(asked(all)));
}

TEST_F(sub_interface_bitmap, puts_the_main_interface_on_the_wire_by_a_plain_swap) {
    interfaces.wire_mask = 0xffffffff;
    EXPECT_THAT(configured(), testing::Contains(asked({})));
}

TEST_F(sub_interface_bitmap, is_of_a_type_with_sub_interfaces) {
    for (uint32_t type = 0; type < 256; ++type) {
        record.main = type << 24 | 0x5000;
        if (type == 2 || type == 4 || type == 22 || type == 26) {
            EXPECT_THAT(configured(), testing::Contains(asked({}))) << type;
        } else {
            expect_refused(PM_ERR_REJECTED);
        }
    }
}

TEST_F(sub_interface_bitmap, without_a_type_is_rejected) {
    interfaces.without_type = {main_a};
    expect_refused(PM_ERR_REJECTED);
    interfaces.stores_untold_types = true;
    interfaces.without_type_result = 3;
    expect_refused(PM_ERR_REJECTED);
}

TEST_F(sub_interface_bitmap, is_of_a_main_interface) {
    for (const uint32_t number : {1U, 255U, 256U, 4095U}) {
        record.main = main_a + number;
        expect_refused(PM_ERR_REJECTED);
    }
    numbers.special_sub_interfaces = {{main_a, 0x8000}};
    record.main = main_a;
    expect_refused(PM_ERR_REJECTED);
}

TEST_F(sub_interface_bitmap, of_an_interface_whose_number_cannot_be_told_is_rejected) {
    for (const bool stores : {false, true}) {
        numbers.stores_on_failure = stores;
        numbers.without_sub_interface = {main_a};
        expect_refused(PM_ERR_REJECTED);
    }
    numbers.failure = 1;
    expect_refused(PM_ERR_REJECTED);
}

TEST_F(sub_interface_bitmap, without_memory_sends_nothing) {
    heap.fail_allocation(1);
    EXPECT_EQ(configure(), 1U);
    EXPECT_THAT(output.take(), MatchesRegex(cmi_report_start + std::string("548\n")));
    EXPECT_THAT(blocks_and_exchanges(support::call_log::take()), ElementsAre("malloc(548) fails"));
}

TEST_F(sub_interface_bitmap, is_read_to_the_end_of_its_record_and_no_further) {
    bytes image(sizeof record, 0);
    std::memcpy(image.data(), &record, sizeof record);
    const guarded_bytes place(image);
    transport.will_answer_query(0, status_answer(0));
    EXPECT_EQ(pm_snmp_config_sub_interface(handle, reinterpret_cast<pm_snmp_sub_intf_t *>(place.data()), wait), 0U);
    EXPECT_THAT(support::call_log::take(), testing::Contains(asked({})));
}

TEST_F(sub_interface_bitmap, that_is_missing_is_refused) {
    EXPECT_EQ(pm_snmp_config_sub_interface(handle, nullptr, wait), PM_ERR_FAILURE);
    EXPECT_THAT(support::call_log::take(), IsEmpty());
}

}  // namespace
