/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup port_mgr_port_info_response port_info_response.h: answers about ports
 * @ingroup port_mgr
 * @brief Turns answers of the port manager into records.
 *
 * The functions that take a message check that it is the answer they expect (a wrong one leaves an assertion report,
 * and is parsed all the same) and that what it says fits into its size; those that take a payload check its size where
 * they say so. A service's nonzero status is returned as it stands. Arrays are one malloc block that the caller frees
 * once. All are thread-safe.
 *
 * "The usual result" is 0; the service's status, or PM_ERR_INVALID_PARAM for a null or malformed payload or a null
 * output, with the outputs untouched; or 1 when memory ran out, after lines on standard output, with the count set and
 * the array null.
 * @{
 */
#ifndef PORT_MGR_PORT_INFO_RESPONSE_H
#define PORT_MGR_PORT_INFO_RESPONSE_H

#include "platform/mts.h"
#include "port_mgr/port_info_record.h"
#include "port_mgr/types.h"

PM_BEGIN_DECLS

/**
 * One port in brief, 51 bytes, host order unless a member says network order.
 *
 * Members have the meaning and values of those of pm_port_info_t.
 */
typedef struct PM_PACKED pm_port_info_brief {
    if_index_t if_index;        /**< the port's interface index */
    uint32_t admin_mode;        /**< configured port mode */
    uint32_t oper_mode;         /**< port mode in operation */
    uint16_t port_vsan;         /**< the VSAN of the port */
    uint8_t oper_state;         /**< state in operation */
    uint32_t fcid;              /**< Fibre Channel address, network order */
    uint32_t ip_address;        /**< IPv4 address, network order */
    uint8_t reserved_23[4];     /**< always zero */
    uint32_t oper_speed;        /**< speed in operation in Mbit/s */
    uint32_t mtu;               /**< largest transmission unit in bytes */
    uint32_t bandwidth;         /**< bandwidth in kbit/s */
    uint8_t state_reason;       /**< why the port is in its state */
    uint8_t admin_trunk_mode;   /**< configured trunking */
    uint8_t oper_trunk_mode;    /**< trunking in operation */
    uint8_t reserved_42;        /**< always zero */
    uint32_t service_state;     /**< in or out of service */
    if_index_t parent_if_index; /**< the channel that the port is a member of, or 0 */
} pm_port_info_brief_t;
PM_STATIC_ASSERT(sizeof(pm_port_info_brief_t) == 51, "pm_port_info_brief_t is 51 bytes for every caller");

/** What a set request did to one interface. */
typedef struct PM_PACKED pm_set_port_result {
    if_index_t if_index; /**< the interface, host order */
    uint32_t status;     /**< its status, network order: 0 when the change was made */
} pm_set_port_result_t;
PM_STATIC_ASSERT(sizeof(pm_set_port_result_t) == 8, "pm_set_port_result_t travels as 8 bytes");

/**
 * Parses the answer to pm_get_port_info() and pm_get_port_info_range().
 *
 * @param[in]  message  The received message; it stays the caller's.
 * @param[out] count    The number of records.
 * @param[out] records  The records, or null when count is 0.
 * @return The usual result.
 */
PM_API uint32_t pm_parse_get_port_info(const mts_msg_t *message, uint32_t *count, pm_port_info_t **records);

/**
 * Parses the payload of an answer to pm_get_port_info() and pm_get_port_info_range().
 *
 * @param[in]  payload  The payload, which must hold what it says.
 * @param[in]  size     Its bytes.
 * @param[out] count    The number of records.
 * @param[out] records  The records, or null when count is 0.
 * @return The usual result.
 */
PM_API uint32_t pm_parse_get_port_info_res_payload(const void *payload, uint32_t size, uint32_t *count,
                                                   pm_port_info_t **records);

/**
 * Parses the answer to pm_get_port_info_brief().
 *
 * @param[in]  message  The received message; it stays the caller's.
 * @param[out] count    The number of records.
 * @param[out] records  The records, or null when count is 0.
 * @return The usual result.
 */
PM_API uint32_t pm_parse_get_port_info_brief(const mts_msg_t *message, uint32_t *count, pm_port_info_brief_t **records);

/**
 * Parses the payload of an answer to pm_get_port_info_brief().
 *
 * @param[in]  payload  The payload, which must hold as many records as it says.
 * @param[in]  size     Not consulted.
 * @param[out] count    The number of records.
 * @param[out] records  The records, or null when count is 0.
 * @return The usual result.
 */
PM_API uint32_t pm_parse_get_port_info_brief_res_payload(const void *payload, uint32_t size, uint32_t *count,
                                                         pm_port_info_brief_t **records);

/**
 * Parses the answer to pm_get_next_port_info().
 *
 * @param[in]  message  The received message; it stays the caller's.
 * @param[out] count    The count word of the answer; also when memory ran out.
 * @param[out] record   One record, whatever the count; written only on success.
 * @return The usual result, or PM_ERR_NO_PAYLOAD for a message without payload. That, the service's status and a lack
 *     of memory are named on standard output.
 */
PM_API uint32_t pm_parse_get_next_port_info(const mts_msg_t *message, uint32_t *count, pm_port_info_t **record);

/**
 * Parses the answer to a set request.
 *
 * @param[in]  payload  The payload, which must hold as many entries as it says.
 * @param[out] count    The number of entries; also when memory ran out.
 * @param[out] entries  The entries, also when the service's status, which is returned, is not 0: free them in any case.
 *                      Null when there is no payload, no memory or no `count`.
 * @return The service's status; PM_ERR_NO_PAYLOAD for a null payload; PM_ERR_INVALID_PARAM for a null output; or 1 when
 *     memory ran out, after lines on standard output.
 */
PM_API uint32_t pm_parse_set_port_info_res_payload(const void *payload, uint32_t *count,
                                                   pm_set_port_result_t **entries);

PM_END_DECLS

/** @} */
#endif
