/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup port_mgr_port_info_request port_info_request.h: queries about ports
 * @ingroup port_mgr
 * @brief Asks for information about ports.
 *
 * Every query exists twice. The send-only form sends and returns; its caller receives the answer later with the
 * request's token (mts_rr_token_get(), mts_recv() or pm_mts_recv_with_eintr()), releases the request with mts_drop(),
 * and parses. The blocking form does all that, waits up to 10 seconds, and leaves the answer to be parsed
 * (port_info_response.h) and released with mts_drop().
 *
 * "The usual result" is 0; PM_ERR_INVALID_PARAM for refused arguments, after an assertion report; 1 when memory ran
 * out; or the transport's error number (a failed release of the request wins over a failed receive). Nothing is sent
 * for a refused request. After a failure there is nothing to release, with one exception: when only the release of the
 * request failed, the answer has arrived and is the caller's.
 *
 * A handle, which must not be 0, belongs to one thread at a time; apart from that, all functions are thread-safe.
 * @{
 */
#ifndef PORT_MGR_PORT_INFO_REQUEST_H
#define PORT_MGR_PORT_INFO_REQUEST_H

#include "platform/mts.h"
#include "port_mgr/types.h"

PM_BEGIN_DECLS

/** @name What a request names
 * @{ */
#define PM_PORT_INFO_MODE_RANGES 0u /**< the interfaces of the ranges that follow */
#define PM_PORT_INFO_MODE_ALL 1u    /**< every interface; no ranges travel, but the count does */
/** @} */

/**
 * Asks for the full records of ranges of ports, or of all ports.
 *
 * The whole request goes to the service that owns the first interface of the first range; one about all ports to the
 * port manager.
 *
 * @param[in]  handle       The caller's queue.
 * @param[in]  mode         PM_PORT_INFO_MODE_RANGES or PM_PORT_INFO_MODE_ALL.
 * @param[in]  selector1    Passed on to the service; 0 for plain queries.
 * @param[in]  selector2    Passed on to the service; 0 for plain queries.
 * @param[in]  option1      Passed on to the service; 0 for plain queries.
 * @param[in]  option2      Passed on to the service; 0 for plain queries.
 * @param[in]  range_count  The number of ranges, at least one in PM_PORT_INFO_MODE_RANGES.
 * @param[in]  ranges       The ranges, host order.
 * @param[out] request      Describes the request that went out.
 * @return The usual result.
 */
PM_API uint32_t pm_send_get_port_info(mts_handle_t handle, uint8_t mode, uint32_t selector1, uint32_t selector2,
                                      uint8_t option1, uint8_t option2, uint32_t range_count,
                                      const pm_if_index_range_t *ranges, mts_msg_t *request);

/**
 * Asks for the full records of ranges of ports, or of all ports, and waits for the answer.
 *
 * @param[in]  handle       The caller's queue.
 * @param[in]  mode         As for pm_send_get_port_info(); so are the next six.
 * @param[in]  selector1    Passed on to the service.
 * @param[in]  selector2    Passed on to the service.
 * @param[in]  option1      Passed on to the service.
 * @param[in]  option2      Passed on to the service.
 * @param[in]  range_count  The number of ranges.
 * @param[in]  ranges       The ranges, host order.
 * @param[out] response     The answer, for pm_parse_get_port_info(); not null.
 * @return The usual result.
 */
PM_API uint32_t pm_get_port_info(mts_handle_t handle, uint8_t mode, uint32_t selector1, uint32_t selector2,
                                 uint8_t option1, uint8_t option2, uint32_t range_count,
                                 const pm_if_index_range_t *ranges, mts_msg_t *response);

/**
 * Asks for the brief records of ranges of ports, or of all ports.
 *
 * @copydetails pm_send_get_port_info
 */
PM_API uint32_t pm_send_get_port_info_brief(mts_handle_t handle, uint8_t mode, uint32_t selector1, uint32_t selector2,
                                            uint8_t option1, uint8_t option2, uint32_t range_count,
                                            const pm_if_index_range_t *ranges, mts_msg_t *request);

/**
 * Asks for the brief records of ranges of ports, or of all ports, and waits for the answer.
 *
 * @param[in]  handle       The caller's queue.
 * @param[in]  mode         As for pm_send_get_port_info(); so are the next six.
 * @param[in]  selector1    Passed on to the service.
 * @param[in]  selector2    Passed on to the service.
 * @param[in]  option1      Passed on to the service.
 * @param[in]  option2      Passed on to the service.
 * @param[in]  range_count  The number of ranges.
 * @param[in]  ranges       The ranges, host order.
 * @param[out] response     The answer, for pm_parse_get_port_info_brief(); not null.
 * @return The usual result.
 */
PM_API uint32_t pm_get_port_info_brief(mts_handle_t handle, uint8_t mode, uint32_t selector1, uint32_t selector2,
                                       uint8_t option1, uint8_t option2, uint32_t range_count,
                                       const pm_if_index_range_t *ranges, mts_msg_t *response);

/**
 * Asks for the full records of one range. The order of its ends is the service's to judge.
 *
 * @param[in]  handle   The caller's queue.
 * @param[in]  first    The first interface.
 * @param[in]  last     The last interface, included.
 * @param[out] request  Describes the request that went out.
 * @return The usual result.
 */
PM_API uint32_t pm_send_get_port_info_range(mts_handle_t handle, if_index_t first, if_index_t last, mts_msg_t *request);

/**
 * Asks for the full records of one range, and waits for the answer. The order of its ends is the service's to judge.
 *
 * @param[in]  handle    The caller's queue.
 * @param[in]  first     The first interface.
 * @param[in]  last      The last interface, included.
 * @param[out] response  The answer, for pm_parse_get_port_info(); not null.
 * @return The usual result.
 */
PM_API uint32_t pm_get_port_info_range(mts_handle_t handle, if_index_t first, if_index_t last, mts_msg_t *response);

/**
 * Asks for the record of the port that follows an interface in order of interface indexes.
 *
 * A port channel's request goes to the owner of one of its members.
 *
 * @param[in]  handle    The caller's queue.
 * @param[in]  if_index  The interface; 0 asks for the first.
 * @param[out] request   Describes the request that went out.
 * @return The usual result.
 */
PM_API uint32_t pm_send_get_next_port_info(mts_handle_t handle, if_index_t if_index, mts_msg_t *request);

/**
 * Asks for the record of the port that follows an interface in order of interface indexes, and waits for the answer.
 *
 * A port channel's request goes to the owner of one of its members.
 *
 * @param[in]  handle    The caller's queue.
 * @param[in]  if_index  The interface; 0 asks for the first.
 * @param[out] response  The answer, for pm_parse_get_next_port_info(); not null.
 * @return The usual result.
 */
PM_API uint32_t pm_get_next_port_info(mts_handle_t handle, if_index_t if_index, mts_msg_t *response);

PM_END_DECLS

/** @} */
#endif
