// SPDX-License-Identifier: Apache-2.0
#include <cstring>

#include "config_attribute_expectations.h"
#include "guarded_bytes.h"
#include "library_test.h"
#include "port_mgr/port_mgr_common.h"

namespace {

using support::bytes;
using support::guarded_bytes;
using support::hex;
using testing::ElementsAre;
using testing::IsEmpty;
using unit::attribute_width;
using unit::element_of;
using unit::host_value;
using unit::is_read;
using unit::is_written;

constexpr const char *reported = "config_attribute.cc: pm_encode_tlv";
constexpr uint8_t any_length = 0xd7;
constexpr uint8_t untouched = 0x99;

class config_attribute : public support::library_test {
  protected:
    static pm_cfg_tlv_t *element_at(void *address) { return static_cast<pm_cfg_tlv_t *>(address); }

    // Writes an element at the end of readable memory, from a value at the end of readable memory.
    static void expect_written(uint8_t type, uint8_t length) {
        const guarded_bytes element(bytes(2 + attribute_width(type), untouched));
        const guarded_bytes value(host_value(type));
        EXPECT_EQ(pm_encode_tlv(element_at(element.data()), type, length, value.data()), 0U) << int{type};
        EXPECT_EQ(hex(element.data(), element.size()), hex(element_of(type, length))) << int{type};
        EXPECT_EQ(hex(value.data(), value.size()), hex(host_value(type))) << int{type};
    }

    static void expect_read(uint8_t type, uint8_t length) {
        const guarded_bytes element(element_of(type, length));
        const guarded_bytes value(bytes(attribute_width(type), untouched));
        const guarded_bytes read_type({static_cast<uint8_t>(~type)});
        const guarded_bytes read_length({static_cast<uint8_t>(~length)});
        EXPECT_EQ(pm_decode_tlv(element_at(element.data()), read_type.data(), read_length.data(), value.data()), 0U);
        EXPECT_EQ(*read_type.data(), type);
        EXPECT_EQ(*read_length.data(), length);
        EXPECT_EQ(hex(value.data(), value.size()), hex(host_value(type))) << int{type};
    }

    // Two bytes are all of an element whose attribute is not known.
    static void expect_unread(uint8_t type) {
        const guarded_bytes element({type, any_length});
        uint8_t read_type = static_cast<uint8_t>(~type);
        uint8_t read_length = 0;
        bytes value(81, untouched);
        EXPECT_EQ(pm_decode_tlv(element_at(element.data()), &read_type, &read_length, value.data()), PM_ERR_TLV);
        EXPECT_EQ(read_type, type);
        EXPECT_EQ(read_length, any_length);
        EXPECT_EQ(hex(value), hex(bytes(81, untouched))) << int{type};
    }

    void expect_refused(uint8_t type, const void *value, int reports) {
        bytes element(2 + 81, untouched);
        EXPECT_EQ(pm_encode_tlv(element_at(element.data()), type, any_length, value), PM_ERR_TLV) << int{type};
        bytes expected(2 + 81, untouched);
        expected[0] = type;
        expected[1] = any_length;
        EXPECT_EQ(hex(element), hex(expected)) << int{type};
        EXPECT_EQ(output.take(), "pm_encode_tlv: Type not handled - " + std::to_string(type) + "\n");
        EXPECT_EQ(assertions.take(), std::vector<std::string>(static_cast<size_t>(reports), reported)) << int{type};
    }
};

// ---- writing

TEST_F(config_attribute, is_written_as_wide_and_in_the_order_of_its_kind) {
    for (uint32_t type = 0; type < 256; ++type) {
        if (is_written(type)) expect_written(static_cast<uint8_t>(type), any_length);
    }
    EXPECT_THAT(support::call_log::take(), IsEmpty());
}

TEST_F(config_attribute, is_written_whole_whatever_its_length_says) {
    for (const uint32_t type : {1U, 7U, 2U, 18U, 9U, 6U}) {
        for (uint32_t length = 0; length < 256; ++length) {
            expect_written(static_cast<uint8_t>(type), static_cast<uint8_t>(length));
        }
    }
}

TEST_F(config_attribute, is_written_from_and_to_any_address) {
    for (uint32_t type = 0; type < 256; ++type) {
        if (!is_written(type)) continue;
        for (size_t shift = 0; shift < 8; ++shift) {
            alignas(8) uint8_t element[8 + 2 + 81] = {};
            alignas(8) uint8_t value[8 + 81] = {};
            const bytes host = host_value(type);
            std::memcpy(value + 7 - shift, host.data(), host.size());
            EXPECT_EQ(
                pm_encode_tlv(element_at(element + shift), static_cast<uint8_t>(type), any_length, value + 7 - shift),
                0U);
            EXPECT_EQ(hex(element + shift, 2 + attribute_width(type)),
                      hex(element_of(static_cast<uint8_t>(type), any_length)));
        }
    }
}

TEST_F(config_attribute, of_each_kind_has_these_bytes) {
    const auto written = [](uint8_t type, uint8_t length, const auto &value) {
        uint8_t element[2 + 81] = {};
        EXPECT_EQ(pm_encode_tlv(element_at(element), type, length, &value), 0U);
        return hex(element, 2 + attribute_width(type));
    };
    EXPECT_EQ(written(1, 1, uint8_t{0xab}), "0101ab");
    EXPECT_EQ(written(7, 2, uint16_t{0x0102}), "07020102");
    EXPECT_EQ(written(2, 4, uint32_t{0x01020304}), "020401020304");
    EXPECT_EQ(written(18, 4, uint32_t{0x01020304}), "120404030201");
    const uint32_t pair[2] = {0x01020304, 0x05060708};
    EXPECT_EQ(written(9, 4, pair), "09040403020108070605");
    EXPECT_EQ(written(30, 8, pair), "1e080403020108070605");
    char text[81];
    std::memset(text, 'x', sizeof text);
    EXPECT_EQ(written(6, 0, text), "0600" + hex(text, sizeof text));
}

TEST_F(config_attribute, without_a_kind_is_refused_printed_and_reported) {
    for (uint32_t type = 0; type < 256; ++type) {
        if (!is_written(type)) expect_refused(static_cast<uint8_t>(type), host_value(6).data(), 1);
    }
    EXPECT_THAT(support::call_log::take(), IsEmpty());
}

TEST_F(config_attribute, without_a_kind_and_without_a_value_is_reported_twice) {
    for (const uint32_t type : {0U, 10U, 82U, 86U, 255U}) expect_refused(static_cast<uint8_t>(type), nullptr, 2);
}

TEST_F(config_attribute, without_a_kind_does_not_have_its_value_read) {
    const guarded_bytes nothing({});
    expect_refused(0, nothing.data(), 1);
    expect_refused(86, nothing.data(), 1);
}

TEST_F(config_attribute, without_a_kind_needs_room_for_two_bytes) {
    const guarded_bytes element(bytes(2, untouched));
    EXPECT_EQ(pm_encode_tlv(element_at(element.data()), 0, 3, "x"), PM_ERR_TLV);
    EXPECT_EQ(hex(element.data(), 2), "0003");
    EXPECT_EQ(output.take(), "pm_encode_tlv: Type not handled - 0\n");
    EXPECT_THAT(assertions.take(), ElementsAre(reported));
}

TEST_F(config_attribute, without_a_kind_is_refused_without_a_log_folder_all_the_same) {
    assertions.set(support::fake_assertion_log::scenario::missing_folder);
    uint8_t element[2] = {};
    EXPECT_EQ(pm_encode_tlv(element_at(element), 16, 3, "x"), PM_ERR_TLV);
    EXPECT_EQ(output.take(), "pm_encode_tlv: Type not handled - 16\n");
}

// ---- null pointers are reported and used all the same

class null_pointer : public config_attribute {
  protected:
    // Reports that were written by the process that died, which this one shares the log with.
    size_t reports_of_the_dead() {
        const std::string text = assertions.text();
        assertions.resize(0);
        size_t count = 0;
        for (size_t at = 0; (at = text.find("function pm_encode_tlv, ", at)) != std::string::npos; ++at) ++count;
        return count;
    }
};

TEST_F(null_pointer, to_a_value_is_reported_before_it_is_read) {
    bytes element(2 + 81, untouched);
    EXPECT_DEATH(pm_encode_tlv(element_at(element.data()), 1, 1, nullptr), "");
    EXPECT_EQ(reports_of_the_dead(), 1U);
}

TEST_F(null_pointer, to_an_element_is_reported_before_it_is_written) {
    EXPECT_DEATH(pm_encode_tlv(nullptr, 1, 1, "x"), "");
    EXPECT_EQ(reports_of_the_dead(), 1U);
}

TEST_F(null_pointer, to_element_and_value_is_reported_for_each) {
    EXPECT_DEATH(pm_encode_tlv(nullptr, 1, 1, nullptr), "");
    EXPECT_EQ(reports_of_the_dead(), 2U);
}

// ---- reading

TEST_F(config_attribute, is_read_as_it_was_written) {
    for (uint32_t type = 0; type < 256; ++type) {
        if (is_read(type)) expect_read(static_cast<uint8_t>(type), any_length);
    }
    EXPECT_THAT(support::call_log::take(), IsEmpty());
}

TEST_F(config_attribute, is_read_whole_whatever_its_length_says) {
    for (const uint32_t type : {1U, 7U, 2U, 9U, 6U}) {
        for (uint32_t length = 0; length < 256; ++length) {
            expect_read(static_cast<uint8_t>(type), static_cast<uint8_t>(length));
        }
    }
}

TEST_F(config_attribute, is_read_from_and_to_any_address) {
    for (uint32_t type = 0; type < 256; ++type) {
        if (!is_read(type)) continue;
        for (size_t shift = 0; shift < 8; ++shift) {
            alignas(8) uint8_t element[8 + 2 + 81] = {};
            alignas(8) uint8_t value[8 + 81] = {};
            uint8_t read_type = 0;
            uint8_t read_length = 0;
            const bytes wire = element_of(static_cast<uint8_t>(type), any_length);
            std::memcpy(element + shift, wire.data(), wire.size());
            EXPECT_EQ(pm_decode_tlv(element_at(element + shift), &read_type, &read_length, value + 7 - shift), 0U);
            EXPECT_EQ(hex(value + 7 - shift, attribute_width(type)), hex(host_value(type))) << type;
        }
    }
}

TEST_F(config_attribute, is_read_by_its_own_number_when_both_outputs_are_one_byte) {
    const guarded_bytes element(element_of(7, 2));
    uint8_t both = 0;
    uint16_t value = 0;
    EXPECT_EQ(pm_decode_tlv(element_at(element.data()), &both, &both, &value), 0U);
    EXPECT_EQ(both, 2);
    EXPECT_EQ(hex(&value, sizeof value), hex(host_value(7)));
}

TEST_F(config_attribute, that_cannot_be_read_is_refused_silently_and_named) {
    for (uint32_t type = 0; type < 256; ++type) {
        if (!is_read(type)) expect_unread(static_cast<uint8_t>(type));
    }
    EXPECT_THAT(support::call_log::take(), IsEmpty());
}

TEST_F(config_attribute, is_read_from_these_bytes) {
    const auto read = [](const bytes &element, size_t width) {
        uint8_t type = 0;
        uint8_t length = 0;
        bytes value(width);
        EXPECT_EQ(pm_decode_tlv(element_at(guarded_bytes(element).data()), &type, &length, value.data()), 0U);
        return hex(value);
    };
    EXPECT_EQ(read({7, 2, 0x01, 0x02}, 2), "0201");
    EXPECT_EQ(read({2, 4, 0x01, 0x02, 0x03, 0x04}, 4), "04030201");
    EXPECT_EQ(read({9, 4, 1, 2, 3, 4, 5, 6, 7, 8}, 8), "0102030405060708");
    EXPECT_EQ(read({17, 1, 0xee}, 1), "ee");
}

}  // namespace
