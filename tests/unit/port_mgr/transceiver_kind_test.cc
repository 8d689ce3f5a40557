// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "guarded_bytes.h"
#include "library_test.h"
#include "port_mgr/port_mgr_common.h"

namespace {

using support::bytes;
using support::guarded_bytes;
using support::call_log::take;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char *listed[] = {"52-8817-03", "52-8829-03", "52-8834-03", "52-8846-03", "52-8851-03", "52-8863-03"};
constexpr const char *unlisted = "52-8800-03";

// One X2 record, each byte that counts by its offset and rubbish everywhere else, at the end of readable memory.
class x2_record : public support::library_test {
  protected:
    void TearDown() override {
        EXPECT_THAT(take(), IsEmpty());
        library_test::TearDown();
    }

    void set(size_t offset, uint32_t value) { record.data()[offset] = static_cast<uint8_t>(value); }
    void set_part(std::string_view part) { std::ranges::copy(part, record.data() + 140); }

    [[nodiscard]] const pm_x2_ident_t *ident() const { return reinterpret_cast<const pm_x2_ident_t *>(record.data()); }
    [[nodiscard]] int32_t is_dwdm() const { return pm_is_x2_dwdm(ident()); }
    [[nodiscard]] int type() const { return pm_get_x2_fcot_type(ident()); }

    // A record of kind 1, with an unlisted part number and no DWDM.
    static bytes plain_record(uint8_t rubbish) {
        bytes content(207, rubbish);
        content[0] = 1;
        content[6] = 0;
        std::ranges::copy(std::string_view(unlisted), content.begin() + 140);
        content[206] = 0;
        return content;
    }

    guarded_bytes record{plain_record(0x14)};
};

TEST_F(x2_record, is_dwdm_with_a_channel_from_9_to_40) {
    for (uint32_t channel = 0; channel < 256; ++channel) {
        const bool dwdm = channel >= 9 && channel <= 40;
        for (const char *part : {unlisted, listed[0], listed[5]}) {
            set(206, channel);
            set_part(part);
            EXPECT_EQ(is_dwdm(), dwdm ? 1 : 0) << channel;
            EXPECT_EQ(type(), dwdm ? 20 : part == unlisted ? 1 : 12) << channel << " " << part;
        }
    }
}

TEST_F(x2_record, is_not_dwdm_with_any_exclusion) {
    set(206, 20);
    EXPECT_EQ(is_dwdm(), 1);
    EXPECT_EQ(type(), 20);
    for (uint32_t exclusion = 1; exclusion < 256; ++exclusion) {
        set(6, exclusion);
        EXPECT_EQ(is_dwdm(), 0) << exclusion;
        set_part("52-8834-03");
        EXPECT_EQ(type(), 12) << exclusion;
        set_part(unlisted);
        EXPECT_EQ(type(), 1) << exclusion;
    }
}

TEST_F(x2_record, is_of_type_12_with_a_listed_part_number) {
    for (const char *part : listed) {
        set_part(part);
        for (uint32_t kind = 0; kind < 256; ++kind) {
            set(0, kind);
            EXPECT_EQ(type(), 12) << part << ", kind " << kind;
        }
        EXPECT_EQ(is_dwdm(), 0) << part;
    }
}

TEST_F(x2_record, is_of_type_1_when_one_character_of_its_part_number_differs) {
    for (const char *part : listed) {
        for (size_t at = 0; at < 10; ++at) {
            for (const int change : {1, 2, 0x20, 0x80, static_cast<int>(part[at])}) {
                std::string other = part;
                other[at] = static_cast<char>(other[at] ^ change);
                if (std::ranges::find(listed, other) != std::end(listed)) continue;
                set_part(other);
                EXPECT_EQ(type(), 1) << other;
            }
        }
    }
}

TEST_F(x2_record, is_of_type_1_with_a_part_number_one_byte_off) {
    set_part(unlisted);
    std::ranges::copy(std::string_view(listed[2]), record.data() + 139);
    EXPECT_EQ(type(), 1);
    set(139, 0);
    std::ranges::copy(std::string_view(listed[2]), record.data() + 141);
    EXPECT_EQ(type(), 1);
}

TEST_F(x2_record, is_of_type_12_with_kind_2_alone) {
    for (const char *part : {unlisted, "\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0a", "          "}) {
        set_part(part);
        for (uint32_t kind = 0; kind < 256; ++kind) {
            set(0, kind);
            EXPECT_EQ(type(), kind == 2 ? 12 : 1) << kind;
        }
    }
}

TEST_F(x2_record, is_of_type_20_whatever_its_kind) {
    set(206, 40);
    for (uint32_t kind = 0; kind < 256; ++kind) {
        set(0, kind);
        EXPECT_EQ(type(), 20) << kind;
        EXPECT_EQ(is_dwdm(), 1) << kind;
    }
}

TEST_F(x2_record, is_judged_by_the_bytes_that_count_alone) {
    const auto expect = [](const bytes &content, int32_t dwdm, int type, size_t at) {
        const guarded_bytes changed(content);
        const auto *const ident = reinterpret_cast<const pm_x2_ident_t *>(changed.data());
        EXPECT_EQ(pm_is_x2_dwdm(ident), dwdm) << "byte " << at;
        EXPECT_EQ(pm_get_x2_fcot_type(ident), type) << "byte " << at;
        EXPECT_EQ(support::hex(changed.data(), 207), support::hex(content)) << "the record is only read";
    };
    for (size_t at = 0; at < 207; ++at) {
        if (at == 0 || at == 6 || (at >= 140 && at < 150) || at == 206) continue;
        for (const uint8_t value : bytes{0x00, 0x02, 0x14, 0xff}) {
            bytes content = plain_record(0);
            content[at] = value;
            expect(content, 0, 1, at);
            std::ranges::copy(std::string_view(listed[4]), content.begin() + 140);
            expect(content, 0, 12, at);
            content[206] = 9;
            expect(content, 1, 20, at);
        }
    }
}

// ---- interfaces

class transceiver : public support::library_test {};

TEST_F(transceiver, is_supported_by_the_types_1_2_and_26) {
    for (uint32_t type = 0; type < 256; ++type) {
        const if_index_t if_index = type << 24 | 0x020304;
        const bool supported = type == 1 || type == 2 || type == 26;
        EXPECT_EQ(pm_is_transceiver_supported(if_index), supported ? 1 : 0) << "type " << type;
        EXPECT_THAT(take(), ElementsAre(fmt::format("if_index_get_type({:#010x})", if_index)));
    }
}

TEST_F(transceiver, is_not_supported_without_a_type) {
    for (const int32_t result : {-1, 1, 2, 26}) {
        interfaces.without_type_result = result;
        for (const if_index_t if_index : {0x01000000U, 0x02000000U, 0x1a000000U}) {
            interfaces.without_type = {if_index};
            EXPECT_EQ(pm_is_transceiver_supported(if_index), 0) << if_index;
            EXPECT_THAT(take(), ElementsAre(fmt::format("if_index_get_type({:#010x})", if_index)));
        }
    }
}

}  // namespace
