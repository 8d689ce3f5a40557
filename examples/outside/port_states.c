/* SPDX-License-Identifier: Apache-2.0 */
/* Says of every interface of the switch which state it is in. */
#include <platform/if_index.h>
#include <platform/mts.h>
#include <platform_dev/mts_dev.h>
#include <port_mgr/port_mgr_common.h>
#include <stdio.h>
#include <stdlib.h>

static uint32_t ask(mts_handle_t handle, uint32_t *count, pm_port_info_brief_t **ports) {
    mts_msg_t answer;
    uint32_t status = pm_get_port_info_brief(handle, PM_PORT_INFO_MODE_ALL, 0, 0, 0, 0, 0, NULL, &answer);
    if (status == 0) {
        status = pm_parse_get_port_info_brief(&answer, count, ports);
        mts_drop(handle, &answer);
    }
    return status;
}

int main(void) {
    mts_handle_t handle = mts_dev_open();
    if (handle == 0) {
        perror("port_states: mts_dev_open");
        return 1;
    }
    uint32_t count;
    pm_port_info_brief_t *ports;
    uint32_t status = ask(handle, &count, &ports);
    mts_dev_close(handle);
    if (status != 0) {
        fprintf(stderr, "port_states: status 0x%x\n", status);
        return 1;
    }
    for (uint32_t i = 0; i < count; ++i) {
        char name[256];
        sprintf_if_index(name, ports[i].if_index);
        printf("%s %s\n", name, port_state_string(ports[i].oper_state));
    }
    free(ports);
    return 0;
}
