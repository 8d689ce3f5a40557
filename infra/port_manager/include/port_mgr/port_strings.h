/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup port_mgr_port_strings port_strings.h: attributes in words
 * @ingroup port_mgr
 * @brief The attributes of a port in words, for people.
 *
 * Each function turns one value into a text; none fails. Their results are of three styles:
 *
 * - **Constant or shared**: a constant text of the library's, or, for a value that is not known, "Unknown(N)" with the
 *   value as a decimal number in #local_temp_string_buffer, where the next unknown value of any of these functions
 *   overwrites it. Not thread-safe for unknown values: copy the text at once.
 * - **Constant**: a constant text of the library's for every value, but see port_owner_string(). Thread-safe.
 * - **Caller's buffer**: the text is written, NUL-terminated, into `buf`, which is returned and must not be null. Each
 *   function says how many bytes it may write. Thread-safe.
 *
 * No text of the library's is to be freed.
 * @{
 */
#ifndef PORT_MGR_PORT_STRINGS_H
#define PORT_MGR_PORT_STRINGS_H

#include "port_mgr/types.h"

PM_BEGIN_DECLS

/**
 * Where unknown values of the first style are written: zero when the library is loaded, then the last "Unknown(N)" and
 * zeros behind it. Shared by all threads.
 */
PM_API extern char local_temp_string_buffer[200];

/** @name Constant or shared
 * @{ */

/**
 * The text for a port mode.
 *
 * The value is compared as a whole: other combinations are unknown, and so is 0.
 *
 *     0x1   "auto"    0x100     "FL"       0x400000   "private-vlan host"
 *     0x2   "SD"      0x200     "IPS"      0x800000   "private-vlan promiscuous"
 *     0x4   "E"       0x400     "ISCSI"    0x4000000  "TF"
 *     0x8   "TE"      0x4000    "NP"       0x8000000  "TNP"
 *     0x10  "TL"      0x8000    "ST"       0x60       "FX"
 *     0x20  "F"       0x80000   "FA"       0xffff     "ALL"
 *     0x40  "FL"      0x100000  "trunk"    0xfffb     "Not E"
 *     0x80  "FL"                           0xfe3f     "Not FL"
 *
 * @param[in] mode  One bit a mode, or one of the masks that stand for several.
 * @return The text above, or "Unknown(N)".
 */
PM_API const char *port_mode_string(int32_t mode);

/**
 * The text for a service state.
 *
 * @param[in] state  The state.
 * @return 0 "in service", 1 "out of service", or "Unknown(N)".
 */
PM_API const char *port_service_state_string(int32_t state);

/**
 * The text for a port type.
 *
 * @param[in] type  The type.
 * @return 1 "external", 2 "internal", 3 "hidden", or "Unknown(N)".
 */
PM_API const char *port_type_string(int32_t type);

/**
 * The text for a beacon mode.
 *
 * @param[in] mode  The mode.
 * @return 1 "on", 2 "off", or "Unknown(N)".
 */
PM_API const char *port_beacon_mode_string(uint8_t mode);

/**
 * The text for buffer-to-buffer state change notification.
 *
 * @param[in] config  The setting.
 * @return 1 "on", 2 "off", or "Unknown(N)".
 */
PM_API const char *port_bb_scn_cfg_string(uint8_t config);

/**
 * The text for a rate mode.
 *
 * @param[in] mode  The mode.
 * @return 1 "dedicated", 2 "shared", or "Unknown(N)".
 */
PM_API const char *port_rate_mode_string(uint8_t mode);

/**
 * The text for what a port ignores.
 *
 * @param[in] param  The setting.
 * @return 1 "bit error on", 2 "bit error off", or "Unknown(N)".
 */
PM_API const char *port_ignore_param_string(uint8_t param);

/**
 * The text for a trunking mode.
 *
 * @param[in] mode  The mode.
 * @return 1 "off", 2 "on", 3 "auto", or "Unknown(N)".
 */
PM_API const char *port_trunking_mode_string(uint8_t mode);

/**
 * The text for the promiscuous mode.
 *
 * @param[in] promiscuous  The mode.
 * @return 1 "on", 2 "off", or "Unknown(N)".
 */
PM_API const char *port_promiscuous_string(int32_t promiscuous);

/**
 * The text for auto-negotiation.
 *
 * @param[in] auto_neg  The setting.
 * @return 1 "on", 2 "off", or "Unknown(N)".
 */
PM_API const char *port_auto_neg_string(int32_t auto_neg);

/**
 * The text for an SNMP trap.
 *
 * @param[in] trap  The setting.
 * @return 1 "on", 2 "off", or "Unknown(N)".
 */
PM_API const char *port_snmp_trap_string(uint8_t trap);

/**
 * The text for whether a port stays down after a link failure.
 *
 * @param[in] setting  The setting.
 * @return 3 "enabled", 4 "disabled", or "Unknown(N)".
 */
PM_API const char *port_down_on_link_failure_string(int32_t setting);

/** @} */

/** @name Constant
 * @{ */

/**
 * The text for a state in operation.
 *
 * @param[in] state  The state.
 * @return 1 "up", 2 and 16 "down", 4 "testing", 8 "trunking", 255 "all", else "unknown".
 */
PM_API const char *port_state_string(uint8_t state);

/**
 * The text for a duplex mode.
 *
 * @param[in] mode  The mode.
 * @return 1 "Half", 2 "Full", 3 "Auto", else "unknown".
 */
PM_API const char *port_duplex_mode_string(uint8_t mode);

/**
 * The text for a physical layer.
 *
 * @param[in] layer  The layer.
 * @return 1 "FC", 2 "ethernet", 3 "FC virtual", 4 "Inband", 5 "EOBC", 6 "Management", else "Unknown".
 */
PM_API const char *port_phy_layer_string(uint8_t layer);

/**
 * The text for an encapsulation.
 *
 * @param[in] encap  The encapsulation.
 * @return 1 "normal", 2 "eisl", 3 "internal", else "unknown".
 */
PM_API const char *port_encap_string(uint8_t encap);

/**
 * The text for flow control.
 *
 * @param[in] mode  The mode.
 * @return 1 and 2 "on", 4 and 8 "desired", else "off".
 */
PM_API const char *port_flowctrl_mode_string(uint16_t mode);

/**
 * The text for a track mode.
 *
 * @param[in] mode  The mode.
 * @return 0 "operationally-bound", 1 "force_shut", else the empty text.
 */
PM_API const char *port_track_mode_string(int32_t mode);

/**
 * The text for a delayed trap state.
 *
 * @param[in] state  The state.
 * @return 1 "disabled", 2 "FX", else "unknown".
 */
PM_API const char *pm_delayed_trap_state_string(int32_t state);

/**
 * The text for a port's owner.
 *
 * @param[in] owner  The owner, or null.
 * @return The same pointer, which stays the caller's; the empty text when it is null.
 */
PM_API const char *port_owner_string(const char *owner);

/** @} */

/** @name Caller's buffer
 * @{ */

/**
 * The text for a speed, with its unit.
 *
 *     0 "auto"               10 "10 Mbps"                1000 "1 Gbps"
 *     1 "auto max 2 Gbps"    100 "100 Mbps"              2000 "2 Gbps"
 *     2 "auto max 4 Gbps"    110 "auto 10 or 100 Mbps"   4000 "4 Gbps"
 *     0xffffffff "unknown"; else whole Gbit/s, rounded down, "16 Gbps"
 *
 * @param[in]  speed  The speed in Mbit/s.
 * @param[out] buf    Room for 80 bytes; not null.
 * @return `buf`.
 */
PM_API char *port_speed_string(uint32_t speed, char *buf);

/**
 * The text for a speed as a number of Gbit/s.
 *
 *     0 "auto"               10 "0.01"                   1000 "1"
 *     1 "auto max 2"         100 "0.1"                   2000 "2"
 *     2 "auto max 4"         -1 "--"                     4000 "4"
 *     else whole Gbit/s, rounded toward zero: 16000 "16", 110 "0"
 *
 * @param[in]  speed  The speed in Mbit/s.
 * @param[out] buf    Room for 80 bytes; not null.
 * @return `buf`.
 */
PM_API char *port_speed_string_gbps(int32_t speed, char *buf);

/**
 * The text for buffer-to-buffer credits.
 *
 * @param[in]  credit  The credits.
 * @param[out] buf     Room for 80 bytes; not null.
 * @return `buf`, with 0 "default"; with bit 30 "N (mode E)", N without that bit; else with bit 31 "N (mode Fx)", N
 *     without that bit; else the number.
 */
PM_API char *port_bb_credit_string(int32_t credit, char *buf);

/**
 * The text for a credit multiplier.
 *
 * @param[in]  multiplier  The multiplier.
 * @param[out] buf         Room for 20 bytes; not null.
 * @return `buf`, with -1 "default", else the number.
 */
PM_API char *port_bb_credit_multiplier_string(int32_t multiplier, char *buf);

/**
 * The text for performance buffers.
 *
 * @param[in]  buffers  The number of buffers.
 * @param[out] buf      Room for 20 bytes; not null.
 * @return `buf`, with 0 "default", else the number.
 */
PM_API char *port_bb_credit_performance_buf_string(int32_t buffers, char *buf);

/**
 * The text for extended credits.
 *
 * @param[in]  credit  The credits.
 * @param[out] buf     Room for 40 bytes; not null.
 * @return `buf`, with 0 "default", else the number.
 */
PM_API char *port_ec_bb_credit_string(int32_t credit, char *buf);

/**
 * The text for a receive buffer size.
 *
 * @param[in]  size  The size in bytes.
 * @param[out] buf   Room for 20 bytes; not null.
 * @return `buf`, with the number.
 */
PM_API char *port_rxbufsize_string(uint16_t size, char *buf);

/**
 * The text for the promiscuous mode, as a sentence.
 *
 * @param[in]  mode  The mode.
 * @param[out] buf   Room for 50 bytes; not null.
 * @return `buf`, with 1 "promiscuos mode on", 2 "promiscuos mode off", else "promiscuos mode unknown".
 */
PM_API char *port_promiscuous_mode_string(int32_t mode, char *buf);

/**
 * The text for auto-negotiation, as a sentence.
 *
 * @param[in]  auto_neg  The setting.
 * @param[out] buf       Room for 50 bytes; not null.
 * @return `buf`, with 1 "auto-negotiate on", 2 "auto-negotiate off", else "auto-negotiate unknown".
 */
PM_API char *port_auto_negotiate_string(int32_t auto_neg, char *buf);

/** @} */

PM_END_DECLS

/** @} */
#endif
