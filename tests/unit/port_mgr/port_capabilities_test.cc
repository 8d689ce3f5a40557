// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <initializer_list>
#include <string>

#include "library_test.h"
#include "port_mgr/port_mgr_common.h"
#include "value_sweep.h"

namespace {

using support::call_log::take;
using testing::AnyOf;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using unit::taking_a_word;

constexpr uint32_t subtypes[] = {0, 1, 2, 255};

// An index of a port channel has its subtype below its type.
if_index_t index_of(uint32_t type, uint32_t subtype) { return type << 24 | subtype << 16 | 0x1234; }

std::string type_call(if_index_t if_index) { return fmt::format("if_index_get_type({:#010x})", if_index); }

std::string subtype_call(if_index_t if_index) {
    return fmt::format("if_index_port_channel_get_subtype({:#010x})", if_index);
}

bool is_one_of(uint32_t value, std::initializer_list<uint32_t> values) {
    return std::ranges::find(values, value) != values.end();
}

class port_capabilities : public support::library_test {
  protected:
    using predicate = int32_t (*)(if_index_t);

    // The answer for each type and subtype, and for a channel whose subtype cannot be told. Nothing but the type and
    // the subtype is asked for, the type first and the subtype of a channel of type 4 only.
    template <typename Expected>
    void expect_answers(predicate function, Expected expected) {
        for (uint32_t type = 0; type < 256; ++type) {
            for (const uint32_t subtype : subtypes) {
                const if_index_t if_index = index_of(type, subtype);
                SCOPED_TRACE(fmt::format("{:#010x}", if_index));
                take();
                EXPECT_EQ(function(if_index), expected(type, subtype == 1));
                expect_asked(if_index, type == 4);
            }
        }
        numbers.without_subtype = {index_of(4, 1), index_of(22, 1)};
        for (const bool stores : {false, true}) {
            numbers.stores_on_failure = stores;
            for (numbers.failure = -1; numbers.failure < 2; numbers.failure += 2) {
                EXPECT_EQ(function(index_of(4, 1)), expected(4, false)) << "no subtype, " << numbers.failure;
                EXPECT_EQ(function(index_of(22, 1)), expected(22, false)) << "no subtype, " << numbers.failure;
            }
        }
    }

    static void expect_asked(if_index_t if_index, bool for_subtype) {
        const auto calls = take();
        ASSERT_THAT(calls, testing::Not(IsEmpty()));
        EXPECT_EQ(calls.front(), type_call(if_index));
        EXPECT_THAT(calls, Each(AnyOf(type_call(if_index), subtype_call(if_index))));
        EXPECT_EQ(std::ranges::count(calls, subtype_call(if_index)), for_subtype ? 1 : 0);
    }

    // The answer for indexes whose type cannot be told, whatever they look like.
    void expect_answer_without_type(predicate function, int32_t expected) {
        for (const int32_t result : {-1, 1, INT32_MIN}) {
            interfaces.without_type_result = result;
            for (uint32_t type = 0; type < 256; ++type) {
                const if_index_t if_index = index_of(type, 1);
                interfaces.without_type = {if_index};
                take();
                EXPECT_EQ(function(if_index), expected) << "type " << type << ", " << result;
                EXPECT_THAT(take(), ElementsAre(type_call(if_index)));
            }
        }
    }

    // The answer for each code, which is a byte.
    static void expect_unsupported(int32_t (*function)(uint8_t), std::initializer_list<uint32_t> codes) {
        for (uint32_t code = 0; code < 256; ++code) {
            const int32_t expected = is_one_of(code, codes) ? 0 : 1;
            for (const uint32_t more : {0U, 0x100U, 0xffffff00U}) {
                EXPECT_EQ(taking_a_word(function)(code | more), expected) << code << " and " << more;
            }
        }
        EXPECT_THAT(take(), IsEmpty());
    }
};

// ---- by code

TEST_F(port_capabilities, exclude_the_mode_of_codes_2_5_and_11) {
    expect_unsupported(pm_is_port_mode_supported, {2, 5, 11});
}

TEST_F(port_capabilities, exclude_trunking_of_codes_2_5_and_11) {
    expect_unsupported(pm_is_trunk_mode_supported, {2, 5, 11});
}

TEST_F(port_capabilities, exclude_the_speed_of_codes_2_and_11) {
    expect_unsupported(pm_is_port_speed_supported, {2, 11});
}

TEST_F(port_capabilities, include_duplex_of_code_5_alone) {
    for (uint32_t code = 0; code < 256; ++code) {
        for (const uint32_t more : {0U, 0x100U, 0xffffff00U}) {
            EXPECT_EQ(taking_a_word(pm_is_duplex_mode_supported)(code | more), code == 5 ? 1 : 0) << code;
        }
    }
    EXPECT_THAT(take(), IsEmpty());
}

TEST_F(port_capabilities, leave_an_agent_s_status_as_it_is) {
    for (const uint32_t status : unit::values_to_try<uint32_t>({})) EXPECT_EQ(pm_map_snmp_error_code(status), status);
    for (uint32_t status = PM_ERR_FAILURE - 1; status < PM_ERR_FAILURE + 0x200; ++status) {
        EXPECT_EQ(pm_map_snmp_error_code(status), status);
    }
    EXPECT_THAT(take(), IsEmpty());
}

// ---- by interface

TEST_F(port_capabilities, tell_the_channel_of_subtype_1) {
    expect_answers(pm_is_xgfc_interface, [](uint32_t type, bool subtype_1) { return type == 4 && subtype_1 ? 1 : 0; });
}

TEST_F(port_capabilities, tell_the_channel_of_subtype_1_by_two_look_ups) {
    EXPECT_EQ(pm_is_xgfc_interface(index_of(4, 1)), 1);
    EXPECT_THAT(take(), ElementsAre(type_call(index_of(4, 1)), subtype_call(index_of(4, 1))));
    EXPECT_EQ(pm_is_xgfc_interface(index_of(22, 1)), 0);
    EXPECT_THAT(take(), ElementsAre(type_call(index_of(22, 1))));
}

TEST_F(port_capabilities, tell_the_bundles_of_channels) {
    expect_answers(pm_is_bundle_port_type,
                   [](uint32_t type, bool subtype_1) { return type == 22 || (type == 4 && !subtype_1) ? 1 : 0; });
}

TEST_F(port_capabilities, include_the_beacon_of_most_types) {
    expect_answers(pm_is_beacon_mode_supported, [](uint32_t type, bool subtype_1) {
        if (type == 4) return subtype_1 ? 1 : 0;
        return is_one_of(type, {5, 10, 11}) ? 0 : 1;
    });
}

TEST_F(port_capabilities, include_credits_of_most_types) {
    expect_answers(pm_is_bbcredit_supported, [](uint32_t type, bool subtype_1) {
        if (type == 4) return subtype_1 ? 1 : 0;
        return is_one_of(type, {5, 10, 11, 254}) ? 0 : 1;
    });
}

TEST_F(port_capabilities, tell_no_channel_without_a_type) {
    for (const bool stores : {false, true}) {
        interfaces.stores_untold_types = stores;
        expect_answer_without_type(pm_is_xgfc_interface, 0);
        expect_answer_without_type(pm_is_bundle_port_type, 0);
    }
}

TEST_F(port_capabilities, include_beacon_and_credits_without_a_type) {
    expect_answer_without_type(pm_is_beacon_mode_supported, 1);
    expect_answer_without_type(pm_is_bbcredit_supported, 1);
}

}  // namespace
