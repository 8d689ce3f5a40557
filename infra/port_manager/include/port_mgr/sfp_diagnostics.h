/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup port_mgr_sfp_diagnostics sfp_diagnostics.h: readings of transceivers
 * @ingroup port_mgr
 * @brief The diagnostic readings of a transceiver, from the line card that holds it.
 *
 * A handle belongs to one thread at a time; apart from that, both functions are thread-safe.
 * @{
 */
#ifndef PORT_MGR_SFP_DIAGNOSTICS_H
#define PORT_MGR_SFP_DIAGNOSTICS_H

#include "platform/mts.h"
#include "port_mgr/types.h"

PM_BEGIN_DECLS

/** One quantity: its reading, and the thresholds beyond which it raises an alarm or a warning, in its unit. */
typedef struct PM_PACKED pm_sfp_quantity {
    uint32_t value;        /**< the reading */
    uint32_t high_alarm;   /**< above it: alarm */
    uint32_t high_warning; /**< above it: warning */
    uint32_t low_warning;  /**< below it: warning */
    uint32_t low_alarm;    /**< below it: alarm */
} pm_sfp_quantity_t;

/** Flags of the readings. */
enum {
    PM_SFP_EXTERNALLY_CALIBRATED = 0x01 /**< the line card did the calibration, else the transceiver itself */
};

/** The readings of one transceiver, 172 bytes, host order, calibrated, in the units of SFF-8472. */
typedef struct PM_PACKED pm_sfp_diag_info {
    uint32_t flags;  /**< PM_SFP_... */
    uint32_t status; /**< 0 when the readings are valid; else all other members are 0. See pm_get_sfp_diag_info() */
    pm_sfp_quantity_t temperature; /**< 1/256 degree Celsius, signed: two's complement */
    pm_sfp_quantity_t voltage;     /**< 100 microvolt */
    pm_sfp_quantity_t bias;        /**< laser bias current, 2 microampere */
    pm_sfp_quantity_t tx_power;    /**< transmitted power, 0.1 microwatt */
    pm_sfp_quantity_t rx_power;    /**< received power, 0.1 microwatt */
    uint32_t reserved[16];         /**< as the line card sends them */
} pm_sfp_diag_info_t;
PM_STATIC_ASSERT(sizeof(pm_sfp_diag_info_t) == 172, "pm_sfp_diag_info_t is 43 words for every caller");

/** What a line card may add to the readings, 16 bytes, host order. */
typedef struct PM_PACKED pm_sfp_diag_extra {
    uint32_t alarms;   /**< raised alarms: bytes 112 and 113 of the diagnostic page, the first one more significant */
    uint32_t warnings; /**< raised warnings: bytes 116 and 117, in the same way */
    uint64_t age;      /**< milliseconds since the line card began to read the transceiver */
} pm_sfp_diag_extra_t;
PM_STATIC_ASSERT(sizeof(pm_sfp_diag_extra_t) == 16, "pm_sfp_diag_extra_t is 16 bytes for every caller");

/**
 * Asks the line card of an interface for the readings of its transceiver and waits up to 10 seconds for the answer.
 *
 * @param[in]  handle    The caller's queue.
 * @param[in]  if_index  The interface; one without a slot asks the line card in slot 0.
 * @param[out] info      The readings; zeros for a malformed answer, untouched when there is none; not null.
 * @param[out] extra     Written only when the line card adds it; may be null.
 * @return 0; the `status` of `info`, the line card's, when it is not 0: PM_ERR_INVALID_RANGE when it has no such port,
 *     PM_ERR_REJECTED when the port has no transceiver or one without diagnostics; PM_ERR_INVALID_PARAM for a malformed
 *     answer; or the transport's error number, after a line on standard output. What pm_parse_get_sfp_info() has to
 *     tell of the answer is told, too.
 */
PM_API uint32_t pm_get_sfp_diag_info(mts_handle_t handle, if_index_t if_index, pm_sfp_diag_info_t *info,
                                     pm_sfp_diag_extra_t *extra);

/**
 * Parses the answer of a line card.
 *
 * A line on standard output tells that nothing is behind the readings, and what cannot be understood there, which is
 * skipped.
 *
 * @param[in]  payload  The answer; not null.
 * @param[in]  size     Its bytes.
 * @param[out] info     The readings; zeros for a malformed payload; when the line card tells a status, that alone; not
 *                      null.
 * @param[out] extra    Written only when the line card adds it; may be null.
 * @return 0, also when the line card tells a status, or PM_ERR_INVALID_PARAM: for a null `payload` or `info` after an
 *     assertion report, for an element of another type or length after a line on standard output, for a payload too
 *     short without one.
 */
PM_API uint32_t pm_parse_get_sfp_info(const void *payload, uint32_t size, pm_sfp_diag_info_t *info,
                                      pm_sfp_diag_extra_t *extra);

PM_END_DECLS

/** @} */
#endif
