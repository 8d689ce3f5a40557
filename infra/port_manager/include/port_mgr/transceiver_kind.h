/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup port_mgr_transceiver_kind transceiver_kind.h: kinds of transceivers
 * @ingroup port_mgr
 * @brief Which interfaces take a transceiver, and which kind an X2 transceiver is of.
 *
 * All functions are thread-safe.
 * @{
 */
#ifndef PORT_MGR_TRANSCEIVER_KIND_H
#define PORT_MGR_TRANSCEIVER_KIND_H

#include "port_mgr/types.h"

PM_BEGIN_DECLS

/** The identification record of an X2 transceiver, as far as it is looked at. */
typedef struct PM_PACKED pm_x2_ident {
    uint8_t kind;             /**< the transceiver's kind; 2 makes type code 12 of a part number that is not known */
    uint8_t reserved_1[5];    /**< not looked at */
    uint8_t dwdm_exclusion;   /**< other than 0: the transceiver is no DWDM one */
    uint8_t reserved_7[133];  /**< not looked at */
    char part_number[10];     /**< ten characters, without a terminating NUL */
    uint8_t reserved_150[56]; /**< not looked at */
    int8_t dwdm_channel;      /**< 9 to 40 on a DWDM transceiver */
} pm_x2_ident_t;
PM_STATIC_ASSERT(sizeof(pm_x2_ident_t) == 207, "the DWDM channel is byte 206 of the record");

/**
 * Tells whether an interface takes a pluggable transceiver.
 *
 * @param[in] if_index  The interface.
 * @return 1 for the types 1, 2 and 26; 0 for others and when the type cannot be told.
 */
PM_API int32_t pm_is_transceiver_supported(if_index_t if_index);

/**
 * Tells whether an X2 transceiver is a DWDM one.
 *
 * @param[in] ident  The transceiver's record, not null.
 * @return 1 when it is, else 0.
 */
PM_API int32_t pm_is_x2_dwdm(const pm_x2_ident_t *ident);

/**
 * Tells the type code of an X2 transceiver.
 *
 * @param[in] ident  The transceiver's record, not null.
 * @return 20 for DWDM, 12 for the known part numbers and for kind 2, 1 for any other.
 */
PM_API uint8_t pm_get_x2_fcot_type(const pm_x2_ident_t *ident);

PM_END_DECLS

/** @} */
#endif
