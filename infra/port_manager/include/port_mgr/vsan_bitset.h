/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup port_mgr_vsan_bitset vsan_bitset.h: sets of VSANs
 * @ingroup port_mgr
 * @brief Sets of VSANs.
 * @{
 */
#ifndef PORT_MGR_VSAN_BITSET_H
#define PORT_MGR_VSAN_BITSET_H

#include "platform/bitset.h"
#include "port_mgr/types.h"

PM_BEGIN_DECLS

/** A set of VSANs of any extent, host order. */
typedef struct PM_PACKED flexi_bitset {
    uint32_t start;               /**< the VSAN that bit 0 stands for */
    uint32_t length;              /**< bytes of `bits` */
    __extension__ uint8_t bits[]; /**< bit i is bit (7 - i mod 8) of byte i / 8 */
} flexi_bitset_t;
PM_STATIC_ASSERT(sizeof(flexi_bitset_t) == 8, "the bits follow two words");

/** A set of the VSANs 0 to 4095: a set of the platform's, with 512 bytes of bits. */
typedef bitset_t vsan_bitset_t;
PM_STATIC_ASSERT(sizeof(vsan_bitset_t) == 516, "vsan_bitset_t is 516 bytes for every caller");

/**
 * Writes a set of any extent as a set of VSANs. Numbers above 4095 are left out. Thread-safe.
 *
 * @param[in]  flexi  The set to read, not null; only the bits of VSANs up to 4095 are looked at, so its length may
 *                    promise more.
 * @param[out] vsans  Written whole, its size becomes 512; not null.
 * @return 0 always.
 */
PM_API uint32_t pm_create_vsan_bitset_from_pm_flexi_bitset(const flexi_bitset_t *flexi, vsan_bitset_t *vsans);

PM_END_DECLS

/** @} */
#endif
