/* SPDX-License-Identifier: Apache-2.0 */
/* The public headers, used from C: the sizes and offsets that callers rely on, and one call from start to end. */
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

int main(void) {
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
    return failures == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
