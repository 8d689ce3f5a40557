/* SPDX-License-Identifier: Apache-2.0 */
/* port_info_request.h: asks for information about ports.
 *
 * Every query exists twice. The send-only form sends and returns; its caller receives the answer later with the
 * request's token (mts_rr_token_get, mts_recv or pm_mts_recv_with_eintr), releases the request with mts_drop, and
 * parses. The blocking form does all that, waits up to 10 seconds, and leaves the answer to be parsed
 * (port_info_response.h) and released with mts_drop.
 *
 * All return 0; PM_ERR_INVALID_PARAM for refused arguments, after an assertion report; 1 when memory ran out; or the
 * transport's error number (a failed release of the request wins over a failed receive). Nothing is sent for a
 * refused request. After a failure there is nothing to release, with one exception: when only the release of the
 * request failed, the answer has arrived and is the caller's. A handle belongs to one thread at a time; apart from
 * that, all functions are thread-safe. */
#ifndef PORT_MGR_PORT_INFO_REQUEST_H
#define PORT_MGR_PORT_INFO_REQUEST_H

#include "platform/mts.h"
#include "port_mgr/types.h"

PM_BEGIN_DECLS

/* What a request names. */
#define PM_PORT_INFO_MODE_RANGES 0u /* the interfaces of the ranges that follow */
#define PM_PORT_INFO_MODE_ALL 1u    /* every interface; no ranges travel, but the count does */

/* Asks for the full records of ranges of ports, or of all ports.
 *
 * handle                 the caller's queue, not 0
 * mode                   PM_PORT_INFO_MODE_RANGES or PM_PORT_INFO_MODE_ALL
 * selector1, selector2,
 * option1, option2       passed on to the service; 0 for plain queries
 * range_count, ranges    host order; at least one in PM_PORT_INFO_MODE_RANGES. The whole request goes to the service
 *                        that owns the first interface of the first range
 * request                out: describes the request that went out */
PM_API uint32_t pm_send_get_port_info(mts_handle_t handle, uint8_t mode, uint32_t selector1, uint32_t selector2,
                                      uint8_t option1, uint8_t option2, uint32_t range_count,
                                      const pm_if_index_range_t *ranges, mts_msg_t *request);

/* The blocking form; `response` receives the answer for pm_parse_get_port_info and must not be null. */
PM_API uint32_t pm_get_port_info(mts_handle_t handle, uint8_t mode, uint32_t selector1, uint32_t selector2,
                                 uint8_t option1, uint8_t option2, uint32_t range_count,
                                 const pm_if_index_range_t *ranges, mts_msg_t *response);

/* As pm_send_get_port_info, for brief records. */
PM_API uint32_t pm_send_get_port_info_brief(mts_handle_t handle, uint8_t mode, uint32_t selector1, uint32_t selector2,
                                            uint8_t option1, uint8_t option2, uint32_t range_count,
                                            const pm_if_index_range_t *ranges, mts_msg_t *request);

/* As pm_get_port_info, for brief records: the answer is for pm_parse_get_port_info_brief. */
PM_API uint32_t pm_get_port_info_brief(mts_handle_t handle, uint8_t mode, uint32_t selector1, uint32_t selector2,
                                       uint8_t option1, uint8_t option2, uint32_t range_count,
                                       const pm_if_index_range_t *ranges, mts_msg_t *response);

/* Asks for the full records of one range, both ends included. The order of the ends is the service's to judge. */
PM_API uint32_t pm_send_get_port_info_range(mts_handle_t handle, if_index_t first, if_index_t last, mts_msg_t *request);

/* The blocking form; the answer is for pm_parse_get_port_info. `response` must not be null. */
PM_API uint32_t pm_get_port_info_range(mts_handle_t handle, if_index_t first, if_index_t last, mts_msg_t *response);

/* Asks for the record of the port that follows `if_index` in order of interface indexes; 0 asks for the first. A
 * port channel's request goes to the owner of one of its members. */
PM_API uint32_t pm_send_get_next_port_info(mts_handle_t handle, if_index_t if_index, mts_msg_t *request);

/* The blocking form; the answer is for pm_parse_get_next_port_info. `response` must not be null. */
PM_API uint32_t pm_get_next_port_info(mts_handle_t handle, if_index_t if_index, mts_msg_t *response);

PM_END_DECLS

#endif
