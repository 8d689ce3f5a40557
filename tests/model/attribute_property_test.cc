// SPDX-License-Identifier: Apache-2.0
// Elements with attributes of every number and kind, written and read.
#include <algorithm>
#include <cstring>

#include "naive_attribute.h"
#include "naive_bytes.h"
#include "port_mgr/port_mgr_common.h"
#include "property.h"

namespace {

using model::random_source;
using support::bytes;

constexpr size_t widest = 81;
constexpr uint8_t untouched = 0x5a;

// Bytes over which others are laid.
bytes laid_over(bytes below, size_t at, const bytes &above) {
    std::ranges::copy(above, below.begin() + static_cast<ptrdiff_t>(at));
    return below;
}

class attribute : public model::property {
  protected:
    // Writes an element from a value in memory.
    static bytes written(uint8_t type, uint8_t length, const uint8_t *value) {
        pm_cfg_tlv_t element;
        std::memset(&element, untouched, sizeof element);
        EXPECT_EQ(pm_encode_tlv(&element, type, length, value),
                  model::written_width(type) == 0 ? model::attribute_error : 0);
        const auto *const lies = reinterpret_cast<const uint8_t *>(&element);
        return {lies, lies + sizeof element};
    }

    static bytes expected_element(uint8_t type, uint8_t length, const bytes &value) {
        bytes element(2 + widest, untouched);
        element[0] = type;
        element[1] = length;
        return laid_over(element, 2, model::travelling(type, value));
    }

    // Reads an element into memory of `widest` bytes.
    static bytes read(const bytes &element) {
        const size_t width = model::read_width(element[0]);
        const support::guarded_bytes wire(bytes(element.begin(), element.begin() + static_cast<ptrdiff_t>(2 + width)));
        const auto *const lies = reinterpret_cast<const pm_cfg_tlv_t *>(wire.data());
        uint8_t type = 0;
        uint8_t length = 0;
        bytes value(widest, untouched);
        EXPECT_EQ(pm_decode_tlv(lies, &type, &length, value.data()), width == 0 ? model::attribute_error : 0);
        EXPECT_EQ(type, element[0]);
        EXPECT_EQ(length, element[1]);
        return value;
    }

    static bytes expected_value(const bytes &element) {
        const bytes value(widest, untouched);
        if (model::read_width(element[0]) == 0) return value;
        return laid_over(value, 0, model::travelling(element[0], bytes(element.begin() + 2, element.end())));
    }
};

TEST_F(attribute, of_every_number_and_length_is_written_as_the_model_does) {
    for_random_cases(
        [this](random_source &source) {
            for (unsigned type = 0; type < 256; ++type) {
                const auto number = static_cast<uint8_t>(type);
                if (model::written_width(number) == 0) continue;
                const bytes value = source.some_bytes(model::written_width(number));
                const support::guarded_bytes lies(value);
                for (unsigned length = 0; length < 256; ++length) {
                    const auto said = static_cast<uint8_t>(length);
                    ASSERT_EQ(written(number, said, lies.data()), expected_element(number, said, value)) << type;
                }
            }
        },
        400);
}

TEST_F(attribute, without_a_kind_is_refused_as_the_model_does) {
    for_random_cases([this](random_source &source) {
        const uint8_t type = source.byte();
        if (model::written_width(type) != 0) return;
        const uint8_t length = source.byte();
        const uint8_t value = source.byte();
        EXPECT_EQ(written(type, length, &value), expected_element(type, length, {}));
        EXPECT_EQ(output.take(), "pm_encode_tlv: Type not handled - " + std::to_string(type) + "\n");
        EXPECT_EQ(take_reporters(), std::vector<std::string>{"pm_encode_tlv"});
    });
}

TEST_F(attribute, of_every_number_is_read_as_the_model_does) {
    for_random_cases(
        [](random_source &source) {
            for (unsigned type = 0; type < 256; ++type) {
                bytes element = source.some_bytes(2 + widest);
                element[0] = static_cast<uint8_t>(type);
                ASSERT_EQ(read(element), expected_value(element)) << type;
            }
        },
        40);
}

TEST_F(attribute, that_can_be_read_is_the_same_again_after_writing_and_reading) {
    for_random_cases(
        [this](random_source &source) {
            for (unsigned type = 0; type < 256; ++type) {
                const auto number = static_cast<uint8_t>(type);
                const size_t width = model::read_width(number);
                if (width == 0) continue;
                bytes value = source.some_bytes(widest);
                const bytes back = read(written(number, static_cast<uint8_t>(width), value.data()));
                std::fill(value.begin() + static_cast<ptrdiff_t>(width), value.end(), untouched);
                ASSERT_EQ(back, value) << type;
            }
        },
        40);
}

}  // namespace
