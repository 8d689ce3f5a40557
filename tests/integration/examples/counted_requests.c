/* SPDX-License-Identifier: Apache-2.0 */
/* Says on standard output that a request goes out, and sends it. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <platform/cmi.h>
#include <stdio.h>
#include <string.h>

typedef uint32_t request_response(uint32_t, uint32_t, const void *, void **, uint32_t *, uint32_t, uint32_t, uint32_t,
                                  mts_handle_t, uint32_t);

uint32_t cmi_req_resp(uint32_t opcode, uint32_t kind, const void *request, void **response, uint32_t *length,
                      uint32_t sixth, uint32_t seventh, uint32_t sap, mts_handle_t handle, uint32_t last) {
    void *const symbol = dlsym(RTLD_NEXT, "cmi_req_resp");
    request_response *platform = NULL;
    memcpy(&platform, &symbol, sizeof platform);
    puts("request");
    return platform(opcode, kind, request, response, length, sixth, seventh, sap, handle, last);
}
