/* SPDX-License-Identifier: Apache-2.0 */
/* Asks about several interfaces at once, all requests before the first answer:
 *     send_only INTERFACE ...
 * The loop waits for the handle's descriptor, where a program of your own waits for other things, too. */
#include <errno.h>
#include <platform_dev/if_index_dev.h>
#include <platform_dev/mts_dev.h>
#include <poll.h>
#include <port_mgr/port_mgr_common.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum { MOST_REQUESTS = 64, WAIT_MILLISECONDS = 2000 };

/* A request until its answer has come. */
struct request {
    const char *name;
    mts_msg_t message;
};

static int send_request(mts_handle_t handle, struct request *request) {
    if_index_t if_index;
    if (if_index_from_name(request->name, &if_index) != 0) {
        fprintf(stderr, "send_only: not an interface: %s\n", request->name);
        return -1;
    }
    const uint32_t status = pm_send_get_port_info_range(handle, if_index, if_index, &request->message);
    if (status == 0) return 0;
    fprintf(stderr, "send_only: %s: status 0x%x\n", request->name, status);
    return -1;
}

static void print_answer(const char *name, const mts_msg_t *answer) {
    uint32_t count;
    pm_port_info_t *ports;
    const uint32_t status = pm_parse_get_port_info(answer, &count, &ports);
    if (status != 0) {
        printf("%s: status 0x%x\n", name, status);
        return;
    }
    if (count > 0) printf("%s: %s\n", name, port_state_string(ports[0].oper_state));
    free(ports);
}

/* Takes one answer, in whatever order they come. Returns 0, or -1 after a failure. */
static int receive_answer(mts_handle_t handle, struct request *requests, size_t *count) {
    const mts_recv_options_t next = {0}; /* the next message, without waiting */
    mts_msg_t answer;
    if (pm_mts_recv_with_eintr(handle, &answer, &next) == -1) {
        fprintf(stderr, "send_only: %s\n", strerror((int)mts_errno_get(handle)));
        return -1;
    }
    const uint32_t token = mts_rr_token_get(&answer);
    for (size_t i = 0; i < *count; ++i) {
        if (mts_rr_token_get(&requests[i].message) != token) continue;
        print_answer(requests[i].name, &answer);
        mts_drop(handle, &requests[i].message);
        requests[i] = requests[--*count];
        break;
    }
    mts_drop(handle, &answer);
    return 0;
}

/* Returns 0 when something can be received. */
static int wait_for_answer(mts_handle_t handle) {
    struct pollfd answers = {.fd = mts_dev_descriptor(handle), .events = POLLIN};
    const int ready = poll(&answers, 1, WAIT_MILLISECONDS);
    if (ready == 1) return 0;
    fprintf(stderr, "send_only: %s\n", strerror(ready == 0 ? ETIMEDOUT : errno));
    return -1;
}

static int ask(mts_handle_t handle, char **names, size_t name_count) {
    struct request requests[MOST_REQUESTS];
    size_t count = 0;
    int result = 0;
    while (result == 0 && count < name_count) {
        requests[count].name = names[count];
        result = send_request(handle, &requests[count]);
        if (result == 0) ++count;
    }
    while (result == 0 && count > 0) {
        result = wait_for_answer(handle);
        if (result == 0) result = receive_answer(handle, requests, &count);
    }
    while (count > 0) mts_drop(handle, &requests[--count].message);
    return result;
}

int main(int argc, char **argv) {
    if (argc < 2 || argc > 1 + MOST_REQUESTS) {
        fprintf(stderr, "usage: send_only INTERFACE ...\n");
        return 2;
    }
    const mts_handle_t handle = mts_dev_open();
    if (handle == 0) {
        perror("send_only: mts_dev_open");
        return 1;
    }
    const int result = ask(handle, argv + 1, (size_t)argc - 1);
    mts_dev_close(handle);
    return result == 0 ? 0 : 1;
}
