/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup platform_pdb pdb.h: the platform database
 * @ingroup platform
 * @brief Chassis, slots and modules; in libpfm_intf.
 *
 * All functions are thread-safe.
 * @{
 */
#ifndef PLATFORM_PDB_H
#define PLATFORM_PDB_H

#include "platform/types.h"

PLATFORM_BEGIN_DECLS

/** One module. */
typedef struct pdb_mod_info {
    uint8_t byte[64]; /**< the card type is a 16-bit word in host order at offset 2 */
} pdb_mod_info_t;

/** The chassis. */
typedef struct platform_info {
    uint8_t byte[64]; /**< the number of module slots is the byte at offset 2 */
} platform_info_t;

/**
 * Looks up the chassis type.
 *
 * @param[out] type  The type.
 * @return 0 on success.
 */
int32_t pdb_get_chassis_type(uint32_t *type);

/**
 * Looks up a module. The last argument is 2.
 *
 * @param[in]  slot  The module's slot, counted from 0.
 * @param[out] info  The module.
 * @return 0 on success.
 */
int32_t pdb_get_mod_info(uint8_t slot, pdb_mod_info_t *info, uint32_t);

/**
 * Looks up the chassis record.
 *
 * @param[out] info  The chassis.
 * @return A negative number on failure.
 */
int32_t get_platform_info(platform_info_t *info);

PLATFORM_END_DECLS

/** @} */
#endif
