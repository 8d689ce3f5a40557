/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup port_mgr_transceiver_info transceiver_info.h: transceivers
 * @ingroup port_mgr
 * @brief The transceivers of ranges of interfaces, as the port manager knows them.
 *
 * A handle belongs to one thread at a time; apart from that, all functions are thread-safe.
 * @{
 */
#ifndef PORT_MGR_TRANSCEIVER_INFO_H
#define PORT_MGR_TRANSCEIVER_INFO_H

#include "platform/mts.h"
#include "port_mgr/types.h"

PM_BEGIN_DECLS

/** Flags of a transceiver record. */
enum {
    PM_FCOT_PRESENT = 0x01,    /**< a transceiver is plugged in, and serial_id holds its page */
    PM_FCOT_DIAGNOSTICS = 0x02 /**< diagnostics holds its page */
};

/** Which pair of value words is in use. */
enum {
    PM_FCOT_LAYOUT_B = 0, /**< value_b; so is any other layout but 1 */
    PM_FCOT_LAYOUT_A = 1  /**< value_a */
};

/**
 * The transceiver of one interface, 267 bytes.
 *
 * Words are in host order; of the two pairs of value words only the one that `layout` chooses, the other is as it came.
 * Pages are as SFF-8472 describes them, their numbers in network order.
 */
typedef struct PM_PACKED pm_fcot_info {
    if_index_t if_index;      /**< the interface */
    uint32_t attributes;      /**< a word of the service's own */
    uint8_t serial_id[128];   /**< bytes 0 to 127 of the serial-id page (A0h); zeros without a transceiver */
    uint8_t flags;            /**< PM_FCOT_... */
    uint32_t value_a[2];      /**< words of the service's own */
    uint8_t diagnostics[109]; /**< bytes 0 to 108 of the diagnostic page (A2h): thresholds, calibration, readings */
    uint32_t value_b[2];      /**< words of the service's own */
    uint8_t reserved_262[4];  /**< as it came */
    uint8_t layout;           /**< PM_FCOT_LAYOUT_... */
} pm_fcot_info_t;
PM_STATIC_ASSERT(sizeof(pm_fcot_info_t) == 267, "pm_fcot_info_t travels as 267 bytes");

/**
 * Asks for the transceivers of ranges of interfaces, over CMI, in one request to the service that owns the first
 * interface.
 *
 * Of the interfaces of the ranges, each one that exists and takes a transceiver has a record, with PM_FCOT_LAYOUT_B and
 * without diagnostics. The service's status is PM_ERR_INVALID_RANGE for a range without an existing interface, and
 * PM_ERR_REJECTED when none of all takes a transceiver.
 *
 * @param[in]  handle       The caller's queue.
 * @param[in]  kind         The request's kind, for the service.
 * @param[in]  range_count  The number of ranges, above 0.
 * @param[in]  ranges       The ranges, host order.
 * @param[out] count        The number of records.
 * @param[out] records      The records, one block that the caller frees once.
 * @param[in]  last         The longest wait in seconds; 0 for the transport's own limit.
 * @return PM_ERR_FAILURE for a null output, null ranges or no range, with the outputs untouched. Otherwise the outputs
 *     are null and 0 until there are records, and the result is 0; 1 when memory ran out, after lines on standard
 *     output, with the count set when it ran out for the records; the transport's status; the service's status; or
 *     PM_ERR_INVALID_PARAM for an answer that is missing or malformed.
 */
PM_API uint32_t pm_cmi_get_fcot_info(mts_handle_t handle, uint32_t kind, int32_t range_count,
                                     const pm_if_index_range_t *ranges, uint32_t *count, pm_fcot_info_t **records,
                                     uint32_t last);

/**
 * Asks as pm_cmi_get_fcot_info() does, with the diagnostics of the transceivers that have them, in records with
 * PM_FCOT_LAYOUT_A.
 *
 * @param[in]  handle       The caller's queue.
 * @param[in]  kind         The request's kind, for the service.
 * @param[in]  range_count  The number of ranges, above 0.
 * @param[in]  ranges       The ranges, host order.
 * @param[out] count        The number of records.
 * @param[out] records      The records, one block that the caller frees once.
 * @param[in]  last         The longest wait in seconds; 0 for the transport's own limit.
 * @return As pm_cmi_get_fcot_info(), but the status in the answer whenever there is one. So look at `records`, too: it
 *     is null when 0 was returned and memory ran out for them, or the answer was malformed or came with a failure of
 *     the transport.
 */
PM_API uint32_t pm_get_next_port_fcot_info_with_ddm(mts_handle_t handle, uint32_t kind, int32_t range_count,
                                                    const pm_if_index_range_t *ranges, uint32_t *count,
                                                    pm_fcot_info_t **records, uint32_t last);

/**
 * Parses the answer to either request.
 *
 * @param[in]  payload  The answer, which must hold as many records as it says.
 * @param[out] count    The number of records; also when memory ran out.
 * @param[out] records  The records, one block that the caller frees once, also when there are none; null when memory
 *                      ran out.
 * @return 0; the service's status, or PM_ERR_INVALID_PARAM for a null payload or output, with the outputs untouched; or
 *     1 when memory ran out, after a line on standard output.
 */
PM_API uint32_t pm_parse_cmi_get_fcot_info_res_payload(const void *payload, uint32_t *count, pm_fcot_info_t **records);

/**
 * Parses an answer that came as a message: its payload has the answer behind 112 bytes of the platform's.
 *
 * @param[in]  message  The message; it stays the caller's.
 * @param[out] count    The number of records, as of pm_parse_cmi_get_fcot_info_res_payload().
 * @param[out] records  The records, in the same way.
 * @return 3 for a null message and one without payload; PM_ERR_INVALID_PARAM, with the outputs untouched, for a payload
 *     that does not hold what it says; else what pm_parse_cmi_get_fcot_info_res_payload() returns.
 */
PM_API uint32_t pm_parse_fcot_info(const mts_msg_t *message, uint32_t *count, pm_fcot_info_t **records);

PM_END_DECLS

/** @} */
#endif
