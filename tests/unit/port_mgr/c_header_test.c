/* SPDX-License-Identifier: Apache-2.0 */
/* The public headers, used from C: the sizes and offsets that callers rely on, one call from start to end, and a call
 * of each function that needs no service. */
#include <stddef.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "port_mgr/port_mgr_common.h"

_Static_assert(sizeof(pm_if_index_range_t) == 8, "a range is a pair of indexes");
_Static_assert(sizeof(pm_port_info_t) == 388, "the record of a port");
_Static_assert(offsetof(pm_port_info_t, description) == 8, "member 3");
_Static_assert(offsetof(pm_port_info_t, native_vlan) == 155, "member 20");
_Static_assert(offsetof(pm_port_info_t, link_error_count) == 189, "member 34");
_Static_assert(offsetof(pm_port_info_t, fcip_params) == 252, "member 52");
_Static_assert(offsetof(pm_port_info_t, owner) == 292, "member 57");
_Static_assert(offsetof(pm_port_info_t, tlv_108) == 384, "member 61");
_Static_assert(sizeof(pm_port_info_brief_t) == 51, "the record of a port in brief");
_Static_assert(offsetof(pm_port_info_brief_t, reserved_23) == 23, "a gap");
_Static_assert(offsetof(pm_port_info_brief_t, reserved_42) == 42, "a gap");
_Static_assert(offsetof(pm_port_info_brief_t, parent_if_index) == 47, "the last member");
_Static_assert(sizeof(pm_set_port_result_t) == 8, "the result for one interface");
_Static_assert(sizeof(pm_x2_ident_t) == 207, "the identification of an X2 transceiver");
_Static_assert(offsetof(pm_x2_ident_t, kind) == 0 && offsetof(pm_x2_ident_t, dwdm_exclusion) == 6 &&
                   offsetof(pm_x2_ident_t, part_number) == 140 && sizeof((pm_x2_ident_t *)0)->part_number == 10 &&
                   offsetof(pm_x2_ident_t, dwdm_channel) == 206,
               "the bytes that count");
_Static_assert(sizeof(flexi_bitset_t) == 8 && offsetof(flexi_bitset_t, length) == 4 &&
                   offsetof(flexi_bitset_t, bits) == 8,
               "the bits follow two words");
_Static_assert(sizeof(vsan_bitset_t) == 516 && offsetof(vsan_bitset_t, bits) == 4, "a set of 4096 numbers");
_Static_assert(sizeof local_temp_string_buffer == 200, "the shared buffer");
_Static_assert(sizeof(mts_msg_t) == 96, "a message");
_Static_assert(sizeof(mts_recv_options_t) == 36, "nine words");
_Static_assert(PM_ERR_FAILURE == 0x40290000 && PM_ERR_INVALID_PARAM == 0x40290003 && PM_ERR_TLV == 0x40290004 &&
                   PM_ERR_NO_PAYLOAD == 0x40290005 && PM_ERR_REJECTED == 0x40290009 &&
                   PM_ERR_INVALID_RANGE == 0x4029000a,
               "status codes");
_Static_assert(MTS_OPC_PM_GET_PORT_INFO == 324 && MTS_OPC_PM_GET_NEXT_PORT_INFO == 325 &&
                   MTS_OPC_PM_GET_PORT_INFO_BRIEF == 3141 && MTS_OPC_PM_GET_MODULE_RESOURCES == 3147 &&
                   CMI_OPC_GET_CHANNEL_MEMBER == 624,
               "opcodes");

static int expect(int condition, const char *text) {
    if (!condition) fprintf(stderr, "failed: %s\n", text);
    return condition ? 0 : 1;
}

static int expect_text(const char *text, const char *expected) { return expect(strcmp(text, expected) == 0, expected); }

static int parses_an_answer(void) {
    /* Status 0 and two entries. */
    static const unsigned char answer[24] = {0, 0, 0, 0, 0, 0, 0, 2, 1, 2, 3, 4, 0, 0, 0, 0, 5, 6, 7, 8, 0, 0, 0, 9};
    uint32_t count = 0;
    pm_set_port_result_t *entries = NULL;
    int failures = expect(pm_parse_set_port_info_res_payload(answer, &count, &entries) == 0, "the answer is parsed");
    failures += expect(count == 2, "it has two entries");
    if (failures == 0) {
        failures += expect(entries[0].if_index == 0x01020304, "the first interface");
        failures += expect(entries[1].if_index == 0x05060708, "the second interface");
        failures += expect(memcmp(&entries[1].status, answer + 20, 4) == 0, "the second status");
    }
    free(entries);
    return failures;
}

static int shows_the_library_s_texts(void) {
    int failures = expect_text(port_mode_string(524288), "FA");
    failures += expect_text(port_service_state_string(1), "out of service");
    failures += expect_text(port_type_string(3), "hidden");
    failures += expect_text(port_beacon_mode_string(2), "off");
    failures += expect_text(port_bb_scn_cfg_string(1), "on");
    failures += expect_text(port_rate_mode_string(2), "shared");
    failures += expect_text(port_ignore_param_string(1), "bit error on");
    failures += expect_text(port_trunking_mode_string(3), "auto");
    failures += expect_text(port_promiscuous_string(1), "on");
    failures += expect_text(port_auto_neg_string(2), "off");
    failures += expect_text(port_snmp_trap_string(1), "on");
    failures += expect_text(port_down_on_link_failure_string(4), "disabled");
    failures += expect_text(port_state_string(8), "trunking");
    failures += expect_text(port_duplex_mode_string(1), "Half");
    failures += expect_text(port_phy_layer_string(9), "Unknown");
    failures += expect_text(port_encap_string(2), "eisl");
    failures += expect_text(port_flowctrl_mode_string(4), "desired");
    failures += expect_text(port_track_mode_string(1), "force_shut");
    failures += expect_text(pm_delayed_trap_state_string(2), "FX");
    failures += expect_text(port_owner_string("owner"), "owner");
    failures += expect_text(port_state_reason_string(29, 1), "sfpAbsent");
    failures += expect_text(pm_cli_dump_port_speed(110), "auto 10 100");
    failures += expect_text(pm_cli_dump_port_duplex_mode(2), "full");
    failures += expect_text(pm_cli_dump_port_rate_mode(1), "dedicated");
    failures += expect_text(pm_cli_dump_trunk_mode(2), "on");
    failures += expect(port_mode_string(3) == local_temp_string_buffer, "the shared buffer is returned");
    failures += expect_text(local_temp_string_buffer, "Unknown(3)");
    return failures;
}

static int writes_texts(void) {
    char text[80];
    int failures = expect_text(port_speed_string(1000, text), "1 Gbps");
    failures += expect_text(port_speed_string_gbps(10, text), "0.01");
    failures += expect_text(port_bb_credit_string(0x40000005, text), "5 (mode E)");
    failures += expect_text(port_bb_credit_multiplier_string(-1, text), "default");
    failures += expect_text(port_bb_credit_performance_buf_string(7, text), "7");
    failures += expect_text(port_ec_bb_credit_string(0, text), "default");
    failures += expect_text(port_rxbufsize_string(2112, text), "2112");
    failures += expect_text(port_promiscuous_mode_string(1, text), "promiscuos mode on");
    failures += expect_text(port_auto_negotiate_string(2, text), "auto-negotiate off");
    return failures;
}

static int tells_what_is_supported(void) {
    int failures = expect(pm_map_snmp_error_code(PM_ERR_REJECTED) == PM_ERR_REJECTED, "a status is left as it is");
    failures += expect(pm_is_port_mode_supported(5) == 0 && pm_is_port_mode_supported(1) == 1, "port mode");
    failures += expect(pm_is_trunk_mode_supported(11) == 0 && pm_is_trunk_mode_supported(12) == 1, "trunking");
    failures += expect(pm_is_port_speed_supported(2) == 0 && pm_is_port_speed_supported(5) == 1, "speed");
    failures += expect(pm_is_duplex_mode_supported(5) == 1 && pm_is_duplex_mode_supported(1) == 0, "duplex");
    failures += expect(pm_is_xgfc_interface(0x01000000) == 0, "a port is no channel");
    failures += expect(pm_is_bundle_port_type(0x16000000) == 1, "a channel of type 22 is a bundle");
    failures += expect(pm_is_beacon_mode_supported(0x01000000) == 1, "a Fibre Channel port has a beacon");
    failures += expect(pm_is_bbcredit_supported(0x0a000000) == 0, "a tunnel has no credits");
    failures += expect(pm_is_transceiver_supported(0x02000000) == 1, "an Ethernet port has a transceiver");
    return failures;
}

static int classifies_transceivers(void) {
    pm_x2_ident_t ident = {.kind = 2};
    int failures = expect(pm_is_x2_dwdm(&ident) == 0 && pm_get_x2_fcot_type(&ident) == 12, "kind 2");
    ident.dwdm_channel = 9;
    failures += expect(pm_is_x2_dwdm(&ident) == 1 && pm_get_x2_fcot_type(&ident) == 20, "DWDM");
    return failures;
}

static int converts_sets(void) {
    static const uint32_t one_bit[3] = {16, 4, 0x80808080};
    vsan_bitset_t vsans;
    int failures = expect(pm_create_vsan_bitset_from_pm_flexi_bitset((const flexi_bitset_t *)one_bit, &vsans) == 0,
                          "a set is converted");
    failures += expect(
        vsans.size == 512 && vsans.bits[1] == 0 && vsans.bits[2] == 0x80 && vsans.bits[5] == 0x80 && vsans.bits[6] == 0,
        "the numbers 16, 24, 32 and 40");
    return failures;
}

static int steps_through_ranges(void) {
    uint32_t count = 0;
    if_index_t member = 0;
    int failures =
        expect(pm_get_num_ports_in_if_index_range(0x0a000003, 0x0a000005, &count) == 0 && count == 3, "three tunnels");
    failures += expect(pm_get_if_index_in_range(0x0a000003, 0x0a000005, &member, 2) == 0 && member == 0x0a000005,
                       "the last of three tunnels");
    failures += expect(pm_get_if_index_in_range(0x0a000003, 0x0a000005, &member, 3) == PM_ERR_INVALID_RANGE,
                       "there is no fourth one");
    return failures;
}

int main(void) {
    int failures = parses_an_answer();
    failures += shows_the_library_s_texts();
    failures += writes_texts();
    failures += tells_what_is_supported();
    failures += classifies_transceivers();
    failures += converts_sets();
    failures += steps_through_ranges();
    return failures == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
