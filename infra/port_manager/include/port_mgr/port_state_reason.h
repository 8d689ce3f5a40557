/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup port_mgr_port_state_reason port_state_reason.h: reasons of states
 * @ingroup port_mgr
 * @brief Why a port is in its state, in words.
 * @{
 */
#ifndef PORT_MGR_PORT_STATE_REASON_H
#define PORT_MGR_PORT_STATE_REASON_H

#include "port_mgr/types.h"

PM_BEGIN_DECLS

/**
 * The text of a reason code. Thread-safe.
 *
 * @param[in] reason  The code, as in `state_reason` of the port records.
 * @param[in] form    1 for a keyword such as "sfpAbsent", which several codes may share; every other value for a
 *                    message such as "SFP not present".
 * @return A constant text, not to be freed; "down" or "Unknown" for a code that has no text of its own.
 */
PM_API const char *port_state_reason_string(uint8_t reason, int32_t form);

PM_END_DECLS

/** @} */
#endif
