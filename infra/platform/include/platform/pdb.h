/* SPDX-License-Identifier: Apache-2.0 */
/* pdb.h: the platform database, in libpfm_intf: chassis, slots and modules. */
#ifndef PLATFORM_PDB_H
#define PLATFORM_PDB_H

#include "platform/types.h"

PLATFORM_BEGIN_DECLS

/* One module. Its card type is a 16-bit word in host order at offset 2. */
typedef struct pdb_mod_info {
    uint8_t byte[64];
} pdb_mod_info_t;

/* The chassis. The number of its module slots is the byte at offset 2. */
typedef struct platform_info {
    uint8_t byte[64];
} platform_info_t;

/* The chassis type. Returns 0 on success. */
int32_t pdb_get_chassis_type(uint32_t *type);

/* The module in `slot`, counted from 0. The last argument is 2. Returns 0 on success. */
int32_t pdb_get_mod_info(uint8_t slot, pdb_mod_info_t *info, uint32_t);

/* The chassis record. Returns a negative number on failure. */
int32_t get_platform_info(platform_info_t *info);

PLATFORM_END_DECLS

#endif
