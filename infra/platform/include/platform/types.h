/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup platform The platform
 * @brief What the library asks of the switch's platform libraries.
 *
 * On the switch these functions are the platform's own; on a development host they are those of `infra/platform/dev`.
 */
/**
 * @defgroup platform_types types.h: what every platform header shares
 * @ingroup platform
 * @{
 */
#ifndef PLATFORM_TYPES_H
#define PLATFORM_TYPES_H

#include <stdint.h>

/**
 * @def PLATFORM_BEGIN_DECLS
 * Begins declarations with C linkage, visible outside the shared object that defines the functions.
 */
/**
 * @def PLATFORM_END_DECLS
 * Ends them.
 */
#ifdef __cplusplus
#define PLATFORM_BEGIN_DECLS \
    extern "C" {             \
    _Pragma("GCC visibility push(default)")
#define PLATFORM_END_DECLS        \
    _Pragma("GCC visibility pop") \
    }
#else
#define PLATFORM_BEGIN_DECLS _Pragma("GCC visibility push(default)")
#define PLATFORM_END_DECLS _Pragma("GCC visibility pop")
#endif

/** A caller's queue on the message transport. 0 is never a valid handle. */
typedef uint32_t mts_handle_t;

/** An interface index in host byte order. 0 names no interface. */
typedef uint32_t if_index_t;

/** @} */
#endif
