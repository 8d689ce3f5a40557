/* SPDX-License-Identifier: Apache-2.0 */
/* cmi.h: synchronous request and response, in libmts. */
#ifndef PLATFORM_CMI_H
#define PLATFORM_CMI_H

#include "platform/types.h"

PLATFORM_BEGIN_DECLS

/* Sends `request` to `sap` on the supervisor and waits for the answer.
 *
 * opcode    what is asked; kind    the service's request kind
 * *length   in: the bytes of the request; out: the bytes of the response
 * *response out: the response payload, one malloc block that the caller frees, or null when there is none
 * last      the longest wait in seconds; 0 stands for the transport's own limit
 *
 * The sixth and seventh arguments are 0. Returns 0, or a nonzero status when no answer was had. */
uint32_t cmi_req_resp(uint32_t opcode, uint32_t kind, const void *request, void **response, uint32_t *length, uint32_t,
                      uint32_t, uint32_t sap, mts_handle_t handle, uint32_t last);

PLATFORM_END_DECLS

#endif
