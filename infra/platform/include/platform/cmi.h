/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup platform_cmi cmi.h: requests and answers at once
 * @ingroup platform
 * @brief Synchronous request and response, in libmts.
 *
 * A handle belongs to one thread at a time; apart from that, the function is thread-safe.
 * @{
 */
#ifndef PLATFORM_CMI_H
#define PLATFORM_CMI_H

#include "platform/types.h"

PLATFORM_BEGIN_DECLS

/**
 * Sends a request to a service on the supervisor and waits for the answer. The sixth and seventh arguments are 0.
 *
 * @param[in]     opcode    What is asked.
 * @param[in]     kind      The service's request kind.
 * @param[in]     request   The bytes of the request.
 * @param[out]    response  The response payload, one malloc block that the caller frees, or null when there is none.
 * @param[in,out] length    The bytes of the request; then those of the response.
 * @param[in]     sap       The SAP of the service.
 * @param[in]     handle    The caller's queue.
 * @param[in]     last      The longest wait in seconds; 0 stands for the transport's own limit.
 * @return 0, or a nonzero status when no answer was had.
 */
uint32_t cmi_req_resp(uint32_t opcode, uint32_t kind, const void *request, void **response, uint32_t *length, uint32_t,
                      uint32_t, uint32_t sap, mts_handle_t handle, uint32_t last);

PLATFORM_END_DECLS

/** @} */
#endif
