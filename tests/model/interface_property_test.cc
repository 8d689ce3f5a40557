// SPDX-License-Identifier: Apache-2.0
// Ranges of interfaces, listings of them, sets of VSANs, and iterators.
#include <algorithm>

#include "naive_bytes.h"
#include "naive_interfaces.h"
#include "property.h"
#include "record_members.h"

namespace {

using model::random_source;
using support::bytes;

// Of every process that asks, as it is looked up only once.
constexpr uint8_t slots = 40;

// What the platform tells of an interface.
model::interface told(if_index_t if_index) {
    return {if_index,
            static_cast<uint8_t>(if_index / 16777216),
            if_index / 65536 % 256,
            if_index / 256 % 256,
            if_index % 256,
            if_index % 65536,
            if_index % 65536};
}

if_index_t random_interface(random_source &source, uint32_t type) {
    const auto slot = source.pick<uint32_t>({1, 1, 1, 2, 2, slots - 1, slots, source.below(256)});
    const uint32_t port = source.one_in(8) ? source.below(256) : 10 + source.below(3);
    const uint32_t sub_interface = source.one_in(8) ? source.below(256) : source.below(3);
    return type * 16777216 + slot * 65536 + port * 256 + sub_interface;
}

class interface_range : public model::property {
  protected:
    interface_range() { platform.slots = slots; }

    // Makes the platform unable to tell something of an interface every so often.
    model::interface random_told(random_source &source, if_index_t if_index) {
        model::interface interface = told(if_index);
        const auto loses = [&](auto &failing, auto &number) {
            if (!source.one_in(25)) return;
            failing.insert(if_index);
            number.reset();
        };
        loses(interfaces.without_type, interface.type);
        loses(numbers.without_slot, interface.slot);
        loses(numbers.without_port, interface.port);
        loses(numbers.without_sub_interface, interface.sub_interface);
        loses(numbers.without_channel, interface.channel);
        loses(numbers.without_tunnel, interface.tunnel);
        return interface;
    }

    void forget_failures() {
        for (auto *failing : {&interfaces.without_type, &numbers.without_slot, &numbers.without_port,
                              &numbers.without_sub_interface, &numbers.without_channel, &numbers.without_tunnel}) {
            failing->clear();
        }
    }

    void expect_range(random_source &source, if_index_t first_index, if_index_t last_index) {
        const model::interface first = random_told(source, first_index);
        const model::interface last = first_index == last_index ? first : random_told(source, last_index);
        const auto counted = model::ports_in_range(first, last, slots);
        uint32_t count = 0x5a5a5a5a;
        EXPECT_EQ(pm_get_num_ports_in_if_index_range(first_index, last_index, &count), counted.status);
        EXPECT_EQ(count, counted.count);

        const uint32_t offset = source.one_in(4) ? source.word() : source.below(4);
        const auto member = model::member_of_range(first, last, offset, slots);
        if_index_t found = 0x5a5a5a5a;
        EXPECT_EQ(pm_get_if_index_in_range(first_index, last_index, &found, offset), member.status);
        EXPECT_EQ(found, member.status == 0 ? member.if_index : 0x5a5a5a5a);
    }
};

TEST_F(interface_range, has_the_count_and_the_members_of_the_model) {
    static const std::vector<uint32_t> types{1, 2, 2, 4, 5, 10, 11, 13, 20, 22, 26, 254};
    for_random_cases([this](random_source &source) {
        for (int i = 0; i < 20; ++i) {
            const uint32_t type = source.pick(types);
            const if_index_t first = random_interface(source, type);
            const if_index_t other = random_interface(source, source.one_in(12) ? source.pick(types) : type);
            expect_range(source, first, source.one_in(4) ? first : other);
            forget_failures();
            support::call_log::take();
        }
    });
}

using listing = model::property;

TEST_F(listing, asks_the_service_of_the_model_for_a_type) {
    static const std::vector<uint8_t> types{1, 2, 5, 11, 13, 20, 26, 254, 3, 4, 22};
    for_random_cases([this](random_source &source) {
        const uint8_t type = source.pick(types);
        const bool is_other = type == 3 || type == 4 || type == 22;
        const uint32_t sap = type == 2 ? 45 : type == 5 ? 179 : type == 20 || type == 26 ? 175 : 43;
        const bool at_startup = source.one_in(2);
        bytes request{type};
        bytes block = source.some_bytes(256);
        if (at_startup) {
            request.insert(request.end(), block.begin(), block.end());
            request.resize(501, 0);
        }
        transport.will_send();
        transport.will_drop();
        transport.will_receive_answer(bytes{1, 2, 3});
        mts_msg_t message{};
        EXPECT_EQ(at_startup ? pm_get_startup_if_index_listing(block.data(), type, model::handle, &message, 7)
                             : pm_get_if_index_listing(type, model::handle, &message, 7),
                  0U);
        transport.drop(message);
        const std::string size = std::to_string(request.size());
        EXPECT_EQ(take_calls("mts_send"),
                  std::vector<std::string>{"mts_send(0x55667788, 0xfe000000, " + std::to_string(sap) + ", " +
                                           (at_startup ? "3151" : "331") + ", <" + support::hex(request) + ">, " +
                                           size + ", 0, 0)"});
        const char *const function = at_startup ? "pm_get_startup_if_index_listing" : "pm_get_if_index_listing";
        EXPECT_EQ(take_reporters(), std::vector<std::string>(is_other ? 1 : 0, function));
    });
}

using vsan_set = model::property;

TEST_F(vsan_set, is_the_one_that_the_model_finds_in_a_set_of_any_extent) {
    for_random_cases(
        [](random_source &source) {
            const uint32_t start = source.one_in(4) ? source.word() : source.below(4200);
            const uint32_t length = source.one_in(8) ? source.word() : source.below(600);
            const uint32_t used = start > 4095 ? 0 : std::min(length, (4096 - start + 7) / 8);
            const bytes bits = source.some_bytes(used);
            bytes flexi(8);
            std::memcpy(flexi.data(), &start, 4);
            std::memcpy(&flexi[4], &length, 4);
            flexi.insert(flexi.end(), bits.begin(), bits.end());
            const support::guarded_bytes lies(flexi);
            auto vsans = model::untouched<vsan_bitset_t>();
            EXPECT_EQ(pm_create_vsan_bitset_from_pm_flexi_bitset(reinterpret_cast<const flexi_bitset_t *>(lies.data()),
                                                                 &vsans),
                      0U);
            const vsan_bitset_t expected = model::vsans_of(start, length, bits);
            EXPECT_EQ(support::hex(&vsans, sizeof vsans), support::hex(&expected, sizeof expected));
            support::call_log::take();
        },
        4);
}

using iterator = model::property;

TEST_F(iterator, has_the_words_of_the_message) {
    for_random_cases([this](random_source &source) {
        mts_msg_t message = transport.message(324, bytes{1});
        for (size_t i = 2; i < std::size(message.word); ++i) message.word[i] = source.word();
        pm_iterator_t *made = nullptr;
        EXPECT_EQ(pm_iterator_create(&made, &message), 0U);
        pm_iterator_t expected{1, support::fake_transport::identifier_mark | message.word[1], {}, {}};
        for (size_t i = 0; i < 5; ++i) expected.message_words[i] = message.word[i];
        ASSERT_NE(made, nullptr);
        EXPECT_EQ(model::first_difference(expected, *made), "");
        transport.drop(message);

        const uint32_t mark = source.one_in(2) ? 1 : source.word();
        pm_iterator_t *const was = made;
        was->mark = mark;
        const bool is_released = mark == 1;
        EXPECT_EQ(pm_iterator_destroy(&made), is_released ? 0 : model::invalid_parameter);
        EXPECT_EQ(made, is_released ? nullptr : was);
        EXPECT_EQ(take_reporters(), std::vector<std::string>(is_released ? 0 : 1, "pm_iterator_destroy"));
        if (!is_released) std::free(was);
        support::call_log::take();
    });
}

}  // namespace
