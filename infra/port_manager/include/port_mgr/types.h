/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup port_mgr_types types.h: what every header shares
 * @ingroup port_mgr
 * @{
 */
#ifndef PORT_MGR_TYPES_H
#define PORT_MGR_TYPES_H

#include <stdint.h>

#include "platform/types.h"

/** Marks a function of the library's interface; nothing else leaves the shared object. */
#define PM_API __attribute__((visibility("default")))

/** Marks a record whose members follow one another without padding. */
#define PM_PACKED __attribute__((packed))

/**
 * @def PM_BEGIN_DECLS
 * Begins declarations with C linkage.
 */
/**
 * @def PM_END_DECLS
 * Ends them.
 */
/**
 * @def PM_STATIC_ASSERT(condition, text)
 * Stops the compiler where a condition does not hold, in C and in C++.
 *
 * @param[in] condition  What must hold, a constant expression.
 * @param[in] text       What the compiler says otherwise, a string literal.
 */
#if defined(__cplusplus) && defined(__clang__)
/* clang warns of flexible array members in C++ also where they are marked as an extension. */
#define PM_BEGIN_DECLS \
    _Pragma("clang diagnostic push") _Pragma("clang diagnostic ignored \"-Wc99-extensions\"") extern "C" {
#define PM_END_DECLS \
    }                \
    _Pragma("clang diagnostic pop")
#elif defined(__cplusplus)
#define PM_BEGIN_DECLS extern "C" {
#define PM_END_DECLS }
#endif

#ifdef __cplusplus
#define PM_STATIC_ASSERT(condition, text) static_assert(condition, text)
#else
#define PM_BEGIN_DECLS
#define PM_END_DECLS
#define PM_STATIC_ASSERT(condition, text) _Static_assert(condition, text)
#endif

/** A range of interfaces, both ends included, in host order. */
typedef struct PM_PACKED pm_if_index_range {
    if_index_t first; /**< the first interface */
    if_index_t last;  /**< the last interface; the same as `first` for a single one */
} pm_if_index_range_t;
PM_STATIC_ASSERT(sizeof(pm_if_index_range_t) == 8, "pm_if_index_range_t travels as 8 bytes");

/** @} */
#endif
