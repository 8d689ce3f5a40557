// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "guarded_bytes.h"
#include "library_test.h"
#include "port_mgr/port_mgr_common.h"

namespace {

using support::bytes;
using support::guarded_bytes;
using support::payload;

class system_default_config : public support::library_test {
  protected:
    static bytes record_bytes() { return {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14}; }

    static uint32_t parse(const bytes &content, void *record) {
        const guarded_bytes wire(content);
        return pm_parse_cmi_system_default_config_res_payload(wire.data(),
                                                              static_cast<pm_system_default_config_t *>(record));
    }
};

TEST_F(system_default_config, is_copied_as_it_came) {
    const guarded_bytes record(bytes(14, 0x99));
    EXPECT_EQ(parse(payload().be32(0).append(record_bytes()), record.data()), 0U);
    EXPECT_EQ(support::hex(record.data(), 14), support::hex(record_bytes()));
    EXPECT_THAT(support::call_log::take(), testing::IsEmpty());
}

TEST_F(system_default_config, has_its_words_at_any_address) {
    pm_system_default_config_t record{};
    EXPECT_EQ(parse(payload().be32(0).append(record_bytes()), &record), 0U);
    EXPECT_EQ(record.type, 1);
    EXPECT_EQ(record.length, 2);
    const uint32_t words[3] = {record.value[0], record.value[1], record.value[2]};
    EXPECT_EQ(words[0], 0x06050403U);
    EXPECT_EQ(words[1], 0x0a090807U);
    EXPECT_EQ(words[2], 0x0e0d0c0bU);
    for (size_t shift = 0; shift < 4; ++shift) {
        bytes place(shift + 18 + 14, 0);
        const bytes wire = payload().be32(0).append(record_bytes());
        std::ranges::copy(wire, &place[shift]);
        EXPECT_EQ(pm_parse_cmi_system_default_config_res_payload(
                      &place[shift], reinterpret_cast<pm_system_default_config_t *>(&place[shift + 18])),
                  0U);
        EXPECT_EQ(support::hex(&place[shift + 18], 14), support::hex(record_bytes()));
    }
}

TEST_F(system_default_config, comes_with_its_status_in_host_order) {
    bytes record(14, 0x99);
    EXPECT_EQ(parse(payload().be32(0x01020304).append(record_bytes()), record.data()), 0x01020304U);
    EXPECT_EQ(record, record_bytes());
    EXPECT_EQ(parse(payload().be32(PM_ERR_REJECTED).append(record_bytes()), record.data()), PM_ERR_REJECTED);
}

TEST_F(system_default_config, is_untouched_without_payload) {
    bytes record(14, 0x99);
    EXPECT_EQ(pm_parse_cmi_system_default_config_res_payload(
                  nullptr, reinterpret_cast<pm_system_default_config_t *>(record.data())),
              PM_ERR_NO_PAYLOAD);
    EXPECT_EQ(record, bytes(14, 0x99));
    EXPECT_EQ(pm_parse_cmi_system_default_config_res_payload(nullptr, nullptr), PM_ERR_NO_PAYLOAD);
}

TEST_F(system_default_config, without_a_place_is_refused) {
    EXPECT_EQ(parse(payload().be32(0).append(record_bytes()), nullptr), PM_ERR_INVALID_PARAM);
}

TEST_F(system_default_config, is_read_like_an_element) {
    bytes record(14, 0x99);
    EXPECT_EQ(parse(payload().be32(0).append({29, 4, 0, 0, 5, 220, 0, 0, 0, 0, 0, 0, 0, 0}), record.data()), 0U);
    uint8_t type = 0;
    uint8_t length = 0;
    uint32_t mtu = 0;
    EXPECT_EQ(pm_decode_tlv(reinterpret_cast<const pm_cfg_tlv_t *>(record.data()), &type, &length, &mtu), 0U);
    EXPECT_EQ(type, 29);
    EXPECT_EQ(length, 4);
    EXPECT_EQ(mtu, 1500U);
}

}  // namespace
