/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup port_mgr_port_config port_config.h: configuration
 * @ingroup port_mgr
 * @brief Changes the configuration of interfaces, and reads it.
 *
 * The functions that take a handle ask over CMI and wait for the answer. An answer that cannot hold what it counts
 * comes to its status or, when that is 0, to PM_ERR_INVALID_PARAM. A failed allocation is named in two lines on
 * standard output, and an interface whose type cannot be told in one. A handle belongs to one thread at a time; apart
 * from that, all are thread-safe.
 * @{
 */
#ifndef PORT_MGR_PORT_CONFIG_H
#define PORT_MGR_PORT_CONFIG_H

#include "port_mgr/config_attribute.h"
#include "port_mgr/port_info_response.h"
#include "port_mgr/types.h"

PM_BEGIN_DECLS

/** Asks the service that owns the first interface, and the Ethernet channel service when that is of type 22. */
#define PM_CONFIG_GET_FROM_OWNER 1u
/** As PM_CONFIG_GET_FROM_OWNER, but asks about a port channel the service that owns one of its members. The Ethernet
 * channel service is asked when that is not told, and for sub-interfaces of port channels. */
#define PM_CONFIG_GET_BY_MEMBER 2u

/**
 * Sets one attribute of ranges of interfaces.
 *
 * Where the request goes depends on the type of the first interface, on the attribute and on the chassis.
 * Interfaces of type 26, and on chassis of types 10 and 11 also port channels, take their Ethernet attributes from the
 * Ethernet channel service, and other attributes of these channels are sent nowhere: 0 with null entries says that
 * nothing was asked. The attributes 2, 4 and 44 of a sub-interface of a port channel are refused with PM_ERR_FAILURE
 * and a line on standard output; on chassis of types 10 and 11 that is said after they were sent, with entries.
 *
 * The outputs are cleared before anything is sent. Two services are asked one after the other only when the type of the
 * interface or of the chassis changes during the call. The results of the first are released then, and a failure of the
 * transport at the second leaves the entries pointing there: after a failure of the transport the entries are not the
 * caller's to read or free.
 *
 * @param[in]  handle       The caller's queue.
 * @param[in]  first_text   Who makes the change, or null. At most 59 characters travel; 39 when there is a second text.
 * @param[in]  second_text  From where, or null. At most 40 characters travel; 40 of them without a NUL.
 * @param[in]  range_count  1 to 65535: no more can be counted in the request.
 * @param[in]  ranges       In host order, not null.
 * @param[in]  type         The attribute, one that pm_encode_tlv() can write.
 * @param[in]  length       The width of its value, which is how much of it travels.
 * @param[in]  value        The value in host memory, as wide as its kind whatever the length says; not null.
 * @param[out] count        The number of entries; not null.
 * @param[out] entries      What became of each interface, in one block that the caller frees once; not null. Null when
 *                          no service gave results, or there was no memory for them; empty, and to be freed all the
 *                          same, when one gave none.
 * @param[in]  last         The longest wait in seconds; 0 for the transport's own limit.
 * @return 0; PM_ERR_FAILURE with the outputs untouched for a null or missing argument; the status of the encoder, after
 *     its line, its assertion report and another line; the service's status, with entries where it sent some; the
 *     transport's status; or 1 when memory ran out, which may be after the change was made: then the count is that of
 *     the answer.
 */
PM_API uint32_t pm_cmi_set_port_config(mts_handle_t handle, const char *first_text, const char *second_text,
                                       uint32_t range_count, const pm_if_index_range_t *ranges, uint8_t type,
                                       uint8_t length, const void *value, uint32_t *count,
                                       pm_set_port_result_t **entries, uint32_t last);

/**
 * Reads the records of ranges of interfaces as they are configured: a bandwidth that follows from the speed is 0.
 *
 * @param[in]  handle       The caller's queue.
 * @param[in]  kind         One of PM_CONFIG_GET_...; other numbers are passed on to the owner.
 * @param[in]  range_count  The number of ranges, not 0.
 * @param[in]  ranges       In host order, not null; the first interface decides which service is asked about all of
 *                          them.
 * @param[out] count        The number of records; not null.
 * @param[out] records      The records, one block that the caller frees once, or null when there are none; not null.
 * @param[in]  last         The longest wait in seconds; 0 for the transport's own limit.
 * @return 0; PM_ERR_FAILURE with the outputs untouched for a null or missing argument; otherwise, with the outputs
 *     cleared, what pm_parse_get_port_info_res_payload() returns, the transport's status, or 1 when memory ran out.
 */
PM_API uint32_t pm_cmi_get_port_config(mts_handle_t handle, uint32_t kind, uint32_t range_count,
                                       const pm_if_index_range_t *ranges, uint32_t *count, pm_port_info_t **records,
                                       uint32_t last);

/**
 * The same as pm_parse_get_port_info_res_payload().
 *
 * @copydetails pm_parse_get_port_info_res_payload
 */
PM_API uint32_t pm_parse_cmi_get_port_config_res_payload(const void *payload, uint32_t size, uint32_t *count,
                                                         pm_port_info_t **records);

/**
 * A default of the whole switch, 14 bytes as they came over the wire.
 *
 * They begin like an element: pm_decode_tlv() reads it when the attribute's value is not wider than the record's.
 */
typedef struct PM_PACKED pm_system_default_config {
    uint8_t type;      /**< the attribute's number */
    uint8_t length;    /**< the bytes of its value */
    uint32_t value[3]; /**< the value, in the byte order of its kind */
} pm_system_default_config_t;
PM_STATIC_ASSERT(sizeof(pm_system_default_config_t) == 14, "pm_system_default_config_t travels as 14 bytes");

/**
 * Parses the answer of a service that was asked for a default of the switch.
 *
 * @param[in]  payload  18 bytes: the status and the record; or null.
 * @param[out] record   Written whatever the status is, unless there is no payload; not null.
 * @return The service's status, PM_ERR_NO_PAYLOAD for a null payload, or PM_ERR_INVALID_PARAM for a null record.
 */
PM_API uint32_t pm_parse_cmi_system_default_config_res_payload(const void *payload, pm_system_default_config_t *record);

PM_END_DECLS

/** @} */
#endif
