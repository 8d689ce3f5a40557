// SPDX-License-Identifier: Apache-2.0
// Answers of line cards about transceivers.
#include "guarded_bytes.h"
#include "library_test.h"
#include "parse_outputs.h"
#include "port_mgr/port_mgr_common.h"
#include "sfp_diagnostics_answer.h"

namespace {

using support::bytes;
using support::payload;
using testing::ElementsAre;
using testing::IsEmpty;
using unit::sfp_answer;
using unit::sfp_header;
using unit::sfp_readings;
using unit::sfp_status_alone;
using unit::sfp_words;
using unit::words_of;

using numbers_of_16_bits = std::vector<uint16_t>;

constexpr const char *as_reported = "sfp_diagnostics.cc: pm_parse_get_sfp_info";
constexpr const char *no_array = "pm_parse_get_sfp_info: tlv_array NULL!\n";

// Sixteen distinct bytes.
const bytes extra_value = payload().be32(0x01020304).be32(0x05060708).be32(0x090a0b0c).be32(0x0d0e0f10);

class sfp_diagnostics_response : public support::library_test {
  protected:
    uint32_t parse(const bytes &content) {
        const support::guarded_bytes wire(content);
        elements.set_origin(wire.data());
        return pm_parse_get_sfp_info(wire.data(), wire.size(), &out.info, &out.extra);
    }

    // Parses an answer with readings and the elements set so far behind them.
    void parse_elements() {
        EXPECT_EQ(parse(sfp_answer().fill(4, 0)), 0U);
        EXPECT_EQ(words_of(out.info), sfp_readings(0));
    }

    void expect_extra(uint32_t alarms, uint32_t warnings, uint64_t age) {
        EXPECT_EQ(out.extra.alarms, alarms);
        EXPECT_EQ(out.extra.warnings, warnings);
        EXPECT_EQ(out.extra.age, age);
    }

    unit::sfp_outputs out;
};

TEST_F(sfp_diagnostics_response, has_its_words_in_host_order) {
    EXPECT_EQ(parse(sfp_answer()), 0U);
    EXPECT_EQ(words_of(out.info), sfp_readings(0));
    EXPECT_EQ(out.info.flags, 0x01020304U);
    EXPECT_EQ(out.info.temperature.value, 0x090a0b0cU);
    EXPECT_EQ(out.info.voltage.high_alarm, 0x21222324U);
    EXPECT_EQ(out.info.rx_power.low_alarm, 0x696a6b6cU);
    EXPECT_EQ(out.info.reserved[15], 0xa9aaabacU);
    EXPECT_EQ(output.take(), no_array);
}

TEST_F(sfp_diagnostics_response, of_176_bytes_has_no_extra) {
    elements.add(80, extra_value);
    EXPECT_EQ(parse(sfp_answer()), 0U);
    EXPECT_TRUE(out.is_extra_untouched());
    EXPECT_EQ(output.take(), no_array);
    EXPECT_THAT(support::call_log::take(), IsEmpty());
}

TEST_F(sfp_diagnostics_response, with_a_status_is_that_alone) {
    for (const uint32_t status : {5U, 1U, 0x100U, 0x10000U, 0x1000000U, 0xffffffffU}) {
        EXPECT_EQ(parse(sfp_answer(status).fill(40, 0xee)), 0U);
        EXPECT_EQ(words_of(out.info), sfp_status_alone(status));
    }
    EXPECT_TRUE(out.is_extra_untouched());
    EXPECT_THAT(support::call_log::take(), IsEmpty());
}

// ---- malformed answers

TEST_F(sfp_diagnostics_response, of_another_type_is_malformed) {
    for (const uint16_t type : numbers_of_16_bits{0, 1, 26, 28, 0x1b00, 0x11b, 0xffff}) {
        out = {};
        EXPECT_EQ(parse(sfp_header(type).fill(172, 1)), PM_ERR_INVALID_PARAM) << type;
        EXPECT_EQ(output.take(), "Returning from 1\n");
        EXPECT_EQ(words_of(out.info), sfp_words{});
    }
    EXPECT_EQ(parse(sfp_header(26, 171)), PM_ERR_INVALID_PARAM);
    EXPECT_EQ(output.take(), "Returning from 1\n");
    EXPECT_TRUE(out.is_extra_untouched());
}

TEST_F(sfp_diagnostics_response, of_another_length_is_malformed) {
    for (const uint16_t length : numbers_of_16_bits{0, 171, 173, 0xac00, 0x1ac, 0xffff}) {
        for (const size_t size : {0, 172, 173}) {
            out = {};
            EXPECT_EQ(parse(sfp_header(27, length).fill(size, 1)), PM_ERR_INVALID_PARAM) << length;
            EXPECT_EQ(output.take(), "Returning from mts_get_sfp_diag_info_t = 172,PM_NTOHS(p_tlv->length) = " +
                                         std::to_string(length) + "\n");
            EXPECT_EQ(words_of(out.info), sfp_words{});
        }
    }
    EXPECT_TRUE(out.is_extra_untouched());
}

TEST_F(sfp_diagnostics_response, cut_short_anywhere_is_malformed) {
    for (const uint32_t status : {0U, 5U}) {
        const bytes good = sfp_answer(status);
        for (size_t size = 0; size < good.size(); ++size) {
            out = {};
            ASSERT_EQ(parse(unit::cut(good, size)), PM_ERR_INVALID_PARAM) << size;
            ASSERT_EQ(words_of(out.info), sfp_words{}) << size;
        }
    }
    EXPECT_TRUE(out.is_extra_untouched());
}

TEST_F(sfp_diagnostics_response, that_is_null_is_reported) {
    EXPECT_EQ(pm_parse_get_sfp_info(nullptr, 0, &out.info, &out.extra), PM_ERR_INVALID_PARAM);
    EXPECT_THAT(assertions.take(), ElementsAre(as_reported));
    EXPECT_EQ(words_of(out.info), sfp_words{});
    EXPECT_EQ(pm_parse_get_sfp_info(nullptr, 300, &out.info, &out.extra), PM_ERR_INVALID_PARAM);
    EXPECT_THAT(assertions.take(), ElementsAre(as_reported));
    EXPECT_TRUE(out.is_extra_untouched());
}

TEST_F(sfp_diagnostics_response, needs_a_record) {
    const support::guarded_bytes wire(sfp_answer());
    EXPECT_EQ(pm_parse_get_sfp_info(wire.data(), wire.size(), nullptr, &out.extra), PM_ERR_INVALID_PARAM);
    EXPECT_THAT(assertions.take(), ElementsAre(as_reported));
    EXPECT_EQ(pm_parse_get_sfp_info(nullptr, 0, nullptr, &out.extra), PM_ERR_INVALID_PARAM);
    EXPECT_THAT(assertions.take(), ElementsAre(as_reported, as_reported));
    EXPECT_TRUE(out.is_extra_untouched());
}

// ---- elements behind the readings

TEST_F(sfp_diagnostics_response, may_have_no_elements) {
    EXPECT_EQ(parse(sfp_answer().u8(0)), 0U);
    EXPECT_EQ(words_of(out.info), sfp_readings(0));
    EXPECT_TRUE(out.is_extra_untouched());
    EXPECT_THAT(support::call_log::take(), ElementsAre("tlv_aligned_array_get_num_tlvs(+176, 1)"));
}

TEST_F(sfp_diagnostics_response, has_its_extra_in_host_order) {
    elements.add(80, extra_value);
    parse_elements();
    expect_extra(0x01020304, 0x05060708, 0x090a0b0c0d0e0f10);
    EXPECT_THAT(support::call_log::take(),
                ElementsAre("tlv_aligned_array_get_num_tlvs(+176, 1)", "tlv_aligned_array_get_next_tlv(+176, 1, 0)"));
}

TEST_F(sfp_diagnostics_response, has_the_upper_half_of_the_long_value_first) {
    elements.add(80, payload().be32(1).be32(2).be32(3).be32(4));
    parse_elements();
    expect_extra(1, 2, 0x0000000300000004);
}

TEST_F(sfp_diagnostics_response, has_its_extra_whatever_the_length_of_the_element_says) {
    for (const uint16_t length : numbers_of_16_bits{0, 4, 15, 17, 0xffff}) {
        out = {};
        elements.clear();
        elements.add(80, extra_value, length);
        parse_elements();
        expect_extra(0x01020304, 0x05060708, 0x090a0b0c0d0e0f10);
    }
}

TEST_F(sfp_diagnostics_response, has_the_latest_of_several_extras) {
    elements.add(80, extra_value);
    elements.add(79, payload().be32(0x01020304));
    elements.add(80, payload().be32(1).be32(2).be32(3).be32(4));
    parse_elements();
    expect_extra(1, 2, 0x0000000300000004);
    EXPECT_THAT(
        support::call_log::take(),
        ElementsAre("tlv_aligned_array_get_num_tlvs(+176, 1)", "tlv_aligned_array_get_next_tlv(+176, 1, 0)",
                    "tlv_aligned_array_get_next_tlv(+176, 1, 1)", "tlv_aligned_array_get_next_tlv(+176, 1, 2)"));
}

TEST_F(sfp_diagnostics_response, ignores_the_interface_in_it) {
    elements.add(79, payload().be32(0x01020304));
    parse_elements();
    EXPECT_TRUE(out.is_extra_untouched());
}

TEST_F(sfp_diagnostics_response, tells_unknown_elements_and_goes_on) {
    std::string expected;
    for (const uint16_t type : numbers_of_16_bits{0, 1, 27, 78, 81, 0x4f00, 0x5000, 0x14f, 0x150, 0xffff}) {
        elements.add(type, extra_value);
        expected += "pm_parse_get_sfp_info: Unknown TLV with type " + std::to_string(type) + "\n";
    }
    parse_elements();
    EXPECT_TRUE(out.is_extra_untouched());
    EXPECT_EQ(output.take(), expected);
    elements.add(80, extra_value);
    parse_elements();
    expect_extra(0x01020304, 0x05060708, 0x090a0b0c0d0e0f10);
    EXPECT_EQ(output.take(), expected);
}

TEST_F(sfp_diagnostics_response, need_not_be_asked_for_its_extra) {
    elements.add(80, extra_value);
    const support::guarded_bytes wire(sfp_answer().u8(0));
    EXPECT_EQ(pm_parse_get_sfp_info(wire.data(), wire.size(), &out.info, nullptr), 0U);
    EXPECT_EQ(words_of(out.info), sfp_readings(0));
}

// ---- elements that cannot be read

TEST_F(sfp_diagnostics_response, whose_first_element_cannot_be_read_goes_on_with_the_next) {
    elements.add_failure(0x40290004);
    elements.add(80, extra_value);
    parse_elements();
    expect_extra(0x01020304, 0x05060708, 0x090a0b0c0d0e0f10);
    EXPECT_EQ(output.take(), "pm_parse_get_sfp_info: Error 0x40290004 in tlv_array_get_next_tlv()\n");
}

TEST_F(sfp_diagnostics_response, whose_only_element_cannot_be_read_has_no_extra) {
    elements.add_failure(1);
    parse_elements();
    EXPECT_TRUE(out.is_extra_untouched());
    EXPECT_EQ(output.take(), "pm_parse_get_sfp_info: Error 0x1 in tlv_array_get_next_tlv()\n");
}

TEST_F(sfp_diagnostics_response, whose_later_element_cannot_be_read_handles_the_one_before_again) {
    elements.add(7, extra_value);
    elements.add_failure(0xffffffff);
    elements.add(80, extra_value);
    elements.add_failure(2);
    elements.add(79, extra_value);
    elements.add_failure(3);
    parse_elements();
    expect_extra(0x01020304, 0x05060708, 0x090a0b0c0d0e0f10);
    EXPECT_EQ(output.take(),
              "pm_parse_get_sfp_info: Unknown TLV with type 7\n"
              "pm_parse_get_sfp_info: Error 0xffffffff in tlv_array_get_next_tlv()\n"
              "pm_parse_get_sfp_info: Unknown TLV with type 7\n"
              "pm_parse_get_sfp_info: Error 0x2 in tlv_array_get_next_tlv()\n"
              "pm_parse_get_sfp_info: Error 0x3 in tlv_array_get_next_tlv()\n");
}

}  // namespace
