/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup port_mgr_status status.h: status codes
 * @ingroup port_mgr
 * @brief The status codes of the library and of the port manager.
 *
 * 0 is success, 1 is a failed allocation, and small numbers besides are system error numbers of the message transport.
 * @{
 */
#ifndef PORT_MGR_STATUS_H
#define PORT_MGR_STATUS_H

/** A configuration request refused for missing or invalid arguments. */
#define PM_ERR_FAILURE 0x40290000u
/** An invalid parameter: null handle, null output, bad mode or count; also an answer too short for what it says. */
#define PM_ERR_INVALID_PARAM 0x40290003u
/** An attribute that cannot be encoded or decoded. */
#define PM_ERR_TLV 0x40290004u
/** A response without payload. */
#define PM_ERR_NO_PAYLOAD 0x40290005u
/** A request rejected: line card error, interface not allowed, end of a range beyond the module. */
#define PM_ERR_REJECTED 0x40290009u
/** An invalid interface or range of interfaces. */
#define PM_ERR_INVALID_RANGE 0x4029000au

/** @} */
#endif
