/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup port_mgr_sub_interface_config sub_interface_config.h: sub-interfaces
 * @ingroup port_mgr
 * @brief Creates and deletes sub-interfaces, the numbered children of a main interface.
 *
 * A request names, for each main interface, a set of sub-interface numbers. It goes to the Ethernet channel service
 * over CMI; the functions that send wait for the answer. The records here are not packed: their members fall into place
 * on four bytes, and so must the records. A handle belongs to one thread at a time; apart from that, all are
 * thread-safe unless they say otherwise.
 * @{
 */
#ifndef PORT_MGR_SUB_INTERFACE_CONFIG_H
#define PORT_MGR_SUB_INTERFACE_CONFIG_H

#include "platform/bitset.h"
#include "port_mgr/types.h"

PM_BEGIN_DECLS

/** @name What a request asks for
 * @{ */
#define PM_SUB_INTF_CREATE 1u  /**< create the numbers of the sets; those that exist stay as they are */
#define PM_SUB_INTF_DELETE 2u  /**< delete the numbers of the sets */
#define PM_SUB_INTF_REPLACE 3u /**< make each main interface have the numbers of its set and no others */
/** @} */

/** Kinds of interfaces in a mask, low half: those that can have sub-interfaces. */
#define PM_IF_KINDS_WITH_SUB_INTF 0xb00012u

/** Ranges of interfaces as a command line hands them over, host order. */
typedef struct pm_if_range_list {
    uint32_t reserved_0;                        /**< not read */
    uint32_t count;                             /**< the number of ranges */
    uint32_t reserved_2;                        /**< not read */
    __extension__ pm_if_index_range_t ranges[]; /**< `count` ranges */
} pm_if_range_list_t;
PM_STATIC_ASSERT(sizeof(pm_if_range_list_t) == 12, "pm_if_range_list_t starts with 12 bytes");

/** The sub-interface numbers of one main interface. Words travel in network order. */
typedef struct pm_sub_intf_entry {
    uint32_t reserved_0;     /**< zero */
    if_index_t main;         /**< the main interface */
    uint32_t word[3];        /**< zero from a command line; an SNMP agent's own words */
    bitset_t sub_interfaces; /**< the numbers, 0 to 4095; its size word travels as it lies in memory */
} pm_sub_intf_entry_t;
PM_STATIC_ASSERT(sizeof(pm_sub_intf_entry_t) == 536, "pm_sub_intf_entry_t travels as 536 bytes");

/** A request, 12 bytes and its entries. It is built in host order and turned to network order before it is sent. */
typedef struct pm_config_sub_intf_req {
    uint32_t operation;                          /**< one of PM_SUB_INTF_... */
    uint32_t reserved_4;                         /**< zero */
    uint32_t entry_count;                        /**< the number of entries */
    __extension__ pm_sub_intf_entry_t entries[]; /**< one for each main interface */
} pm_config_sub_intf_req_t;
PM_STATIC_ASSERT(sizeof(pm_config_sub_intf_req_t) == 12, "pm_config_sub_intf_req_t starts with 12 bytes");

/** What an SNMP agent asks for about one main interface, host order. */
typedef struct pm_snmp_sub_intf {
    if_index_t main;     /**< the main interface */
    uint32_t word[3];    /**< copied into the request */
    uint8_t bitmap[512]; /**< byte j, bit 7 (0x80) is sub-interface 8 * j, bit 0 is 8 * j + 7 */
} pm_snmp_sub_intf_t;
PM_STATIC_ASSERT(sizeof(pm_snmp_sub_intf_t) == 528, "pm_snmp_sub_intf_t is 528 bytes");

/**
 * Creates or deletes the sub-interfaces that ranges name.
 *
 * The first interface of a range decides its main interface and its type, which must be 2, 4, 22 or 26; of the last
 * only the number counts, and it must not be below the first's. Ranges of the main interface that was named first share
 * an entry, every other range gets its own.
 *
 * @param[in] handle     The caller's queue.
 * @param[in] flag       Nonzero to create, 0 to delete.
 * @param[in] mask_low   The kinds of interfaces in the ranges: must have one of PM_IF_KINDS_WITH_SUB_INTF.
 * @param[in] mask_high  The upper half of the mask; only printed.
 * @param[in] ranges     The sub-interfaces; none for a request without entries.
 * @param[in] last       The longest wait in seconds; 0 for the transport's own limit.
 * @return The service's status; before anything is sent PM_ERR_FAILURE for null ranges, PM_ERR_REJECTED for a mask
 *     without the kinds (after a line on standard output) or a sub-interface number that cannot be told,
 *     PM_ERR_INVALID_RANGE for another type, and 1 when memory ran out; otherwise as pm_cmi_config_sub_interface().
 */
PM_API uint32_t pm_cli_config_sub_interface(mts_handle_t handle, uint32_t flag, uint32_t mask_low, uint32_t mask_high,
                                            const pm_if_range_list_t *ranges, uint32_t last);

/**
 * Makes a main interface have the sub-interfaces of a bitmap.
 *
 * @param[in] handle  The caller's queue.
 * @param[in] record  The main interface, of type 2, 4, 22 or 26, and the bitmap.
 * @param[in] last    The longest wait in seconds; 0 for the transport's own limit.
 * @return The service's status; before anything is sent PM_ERR_FAILURE for a null record, PM_ERR_REJECTED for another
 *     type or a sub-interface, and 1 when memory ran out; otherwise as pm_cmi_config_sub_interface().
 */
PM_API uint32_t pm_snmp_config_sub_interface(mts_handle_t handle, const pm_snmp_sub_intf_t *record, uint32_t last);

/**
 * Sends a finished request.
 *
 * @param[in] handle   The caller's queue.
 * @param[in] payload  A pm_config_sub_intf_req_t in network order, its bit sets as they lie in memory; not null.
 * @param[in] length   Its bytes.
 * @param[in] last     The longest wait in seconds; 0 for the transport's own limit.
 * @return The service's status, the transport's, PM_ERR_NO_PAYLOAD for an empty answer, or PM_ERR_INVALID_PARAM for one
 *     too short to hold a status.
 */
PM_API uint32_t pm_cmi_config_sub_interface(mts_handle_t handle, const void *payload, uint32_t length, uint32_t last);

/**
 * Parses the answer to a request.
 *
 * @param[in] response  The answer, of at least 8 bytes; or null.
 * @return The status that the answer holds, in host order; PM_ERR_NO_PAYLOAD for null.
 */
PM_API uint32_t pm_cmi_parse_config_sub_intf_resp(const void *response);

/**
 * Finds the entry of a main interface in a request under construction, or adds one.
 *
 * Only the first entry is ever found: another main interface gets a new entry each time.
 *
 * @param[in,out] payload      The request, in host order, with room for `max_entries`.
 * @param[in]     main         The main interface.
 * @param[in]     max_entries  How many entries there may be.
 * @param[out]    index        The entry's index, counted from 0.
 * @return 0, or PM_ERR_FAILURE with everything untouched when there is no room, or for a null pointer.
 */
PM_API uint32_t pm_get_index_for_intf_in_config_sub_intf_payload(pm_config_sub_intf_req_t *payload, if_index_t main,
                                                                 uint32_t max_entries, uint32_t *index);

/**
 * Tells whether a set is without the reserved sub-interface numbers 0, 1, 4094 and 4095.
 *
 * Not for several threads at once: all calls share the position of their search, so two at once may answer wrongly.
 *
 * @param[in] sub_interfaces  The set, not null.
 * @return 1 when none of them is in the set, else 0.
 */
PM_API int32_t pm_check_is_valid_sub_intf_bitset(const bitset_t *sub_interfaces);

PM_END_DECLS

/** @} */
#endif
