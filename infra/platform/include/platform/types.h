/* SPDX-License-Identifier: Apache-2.0 */
/* Types that every platform header shares. */
#ifndef PLATFORM_TYPES_H
#define PLATFORM_TYPES_H

#include <stdint.h>

/* C linkage, and visible outside the shared object that defines the function. */
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

/* A caller's queue on the message transport. 0 is never a valid handle. */
typedef uint32_t mts_handle_t;

/* An interface index in host byte order. 0 names no interface. */
typedef uint32_t if_index_t;

#endif
