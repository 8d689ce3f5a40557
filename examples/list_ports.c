/* SPDX-License-Identifier: Apache-2.0 */
/* Lists every port of the switch: the shortest complete client of libport_mgr_common. */
#include <platform/if_index.h>
#include <platform_dev/mts_dev.h>
#include <port_mgr/port_mgr_common.h>
#include <stdio.h>
#include <stdlib.h>

int main(void) {
    mts_handle_t handle = mts_dev_open();
    if (handle == 0) {
        perror("list_ports: mts_dev_open");
        return 1;
    }
    mts_msg_t answer;
    uint32_t count;
    pm_port_info_t *ports;

    uint32_t status = pm_get_port_info(handle, PM_PORT_INFO_MODE_ALL, 0, 0, 0, 0, 0, NULL, &answer);
    if (status == 0) {
        status = pm_parse_get_port_info(&answer, &count, &ports);
        mts_drop(handle, &answer);
    }
    mts_dev_close(handle);
    if (status != 0) {
        fprintf(stderr, "list_ports: status 0x%x\n", status);
        return 1;
    }
    for (uint32_t i = 0; i < count; ++i) {
        char name[256];
        char speed[80];
        sprintf_if_index(name, ports[i].if_index);
        printf("%-20s %-10s %-10s %s\n", name, port_state_string(ports[i].oper_state),
               port_speed_string(ports[i].oper_speed, speed), port_state_reason_string(ports[i].state_reason, 0));
    }
    free(ports);
    return 0;
}
