/* SPDX-License-Identifier: Apache-2.0 */
/* port_strings.h: the attributes of a port in words, for people.
 *
 * Each function turns one value into a text; none fails. Their results are of three styles:
 *
 * constant or shared   A constant text of the library's, or, for a value that is not known, "Unknown(N)" with the value
 *                      as a decimal number in local_temp_string_buffer, where the next unknown value of any of these
 *                      functions overwrites it. Not thread-safe for unknown values: copy the text at once.
 * constant             A constant text of the library's for every value, but see port_owner_string. Thread-safe.
 * caller's buffer      The text is written, NUL-terminated, into `buf`, which is returned and must not be null. Each
 *                      function says how many bytes it may write. Thread-safe.
 *
 * No text of the library's is to be freed. */
#ifndef PORT_MGR_PORT_STRINGS_H
#define PORT_MGR_PORT_STRINGS_H

#include "port_mgr/types.h"

PM_BEGIN_DECLS

/* Where unknown values of the first style are written: zero when the library is loaded, then the last "Unknown(N)" and
 * zeros behind it. Shared by all threads. */
PM_API extern char local_temp_string_buffer[200];

/* Constant or shared */

/* A port mode, one bit a mode or one of the masks that stand for several. The value is compared as a whole: other
 * combinations are unknown, and so is 0.
 *
 *     0x1      "auto"      0x40     "FL"         0x8000    "ST"                          0xffff  "ALL"
 *     0x2      "SD"        0x80     "FL"         0x80000   "FA"                          0xfffb  "Not E"
 *     0x4      "E"         0x100    "FL"         0x100000  "trunk"                       0xfe3f  "Not FL"
 *     0x8      "TE"        0x200    "IPS"        0x400000  "private-vlan host"           0x60    "FX"
 *     0x10     "TL"        0x400    "ISCSI"      0x800000  "private-vlan promiscuous"
 *     0x20     "F"         0x4000   "NP"         0x4000000 "TF"                          0x8000000 "TNP" */
PM_API const char *port_mode_string(int32_t mode);

/* 0 "in service", 1 "out of service". */
PM_API const char *port_service_state_string(int32_t state);

/* 1 "external", 2 "internal", 3 "hidden". */
PM_API const char *port_type_string(int32_t type);

/* 1 "on", 2 "off". */
PM_API const char *port_beacon_mode_string(uint8_t mode);

/* Buffer-to-buffer state change notification: 1 "on", 2 "off". */
PM_API const char *port_bb_scn_cfg_string(uint8_t config);

/* 1 "dedicated", 2 "shared". */
PM_API const char *port_rate_mode_string(uint8_t mode);

/* 1 "bit error on", 2 "bit error off". */
PM_API const char *port_ignore_param_string(uint8_t param);

/* 1 "off", 2 "on", 3 "auto". */
PM_API const char *port_trunking_mode_string(uint8_t mode);

/* 1 "on", 2 "off". */
PM_API const char *port_promiscuous_string(int32_t promiscuous);

/* 1 "on", 2 "off". */
PM_API const char *port_auto_neg_string(int32_t auto_neg);

/* 1 "on", 2 "off". */
PM_API const char *port_snmp_trap_string(uint8_t trap);

/* 3 "enabled", 4 "disabled". */
PM_API const char *port_down_on_link_failure_string(int32_t setting);

/* Constant */

/* 1 "up", 2 and 16 "down", 4 "testing", 8 "trunking", 255 "all", else "unknown". */
PM_API const char *port_state_string(uint8_t state);

/* 1 "Half", 2 "Full", 3 "Auto", else "unknown". */
PM_API const char *port_duplex_mode_string(uint8_t mode);

/* 1 "FC", 2 "ethernet", 3 "FC virtual", 4 "Inband", 5 "EOBC", 6 "Management", else "Unknown". */
PM_API const char *port_phy_layer_string(uint8_t layer);

/* 1 "normal", 2 "eisl", 3 "internal", else "unknown". */
PM_API const char *port_encap_string(uint8_t encap);

/* 1 and 2 "on", 4 and 8 "desired", else "off". */
PM_API const char *port_flowctrl_mode_string(uint16_t mode);

/* 0 "operationally-bound", 1 "force_shut", else the empty text. */
PM_API const char *port_track_mode_string(int32_t mode);

/* 1 "disabled", 2 "FX", else "unknown". */
PM_API const char *pm_delayed_trap_state_string(int32_t state);

/* The same pointer, which stays the caller's; the empty text when it is null. */
PM_API const char *port_owner_string(const char *owner);

/* Caller's buffer */

/* A speed in Mbit/s with its unit. At most 80 bytes.
 *
 *     0 "auto"               10 "10 Mbps"                1000 "1 Gbps"      0xffffffff "unknown"
 *     1 "auto max 2 Gbps"    100 "100 Mbps"              2000 "2 Gbps"      else whole Gbit/s, rounded down, "16 Gbps"
 *     2 "auto max 4 Gbps"    110 "auto 10 or 100 Mbps"   4000 "4 Gbps" */
PM_API char *port_speed_string(uint32_t speed, char *buf);

/* A speed in Mbit/s as a number of Gbit/s. At most 80 bytes.
 *
 *     0 "auto"               10 "0.01"                   1000 "1"           -1 "--"
 *     1 "auto max 2"         100 "0.1"                   2000 "2"           else whole Gbit/s, rounded toward zero:
 *     2 "auto max 4"                                     4000 "4"           16000 "16", 110 "0" */
PM_API char *port_speed_string_gbps(int32_t speed, char *buf);

/* Buffer-to-buffer credits: 0 "default"; with bit 30 "N (mode E)", N without that bit; else with bit 31 "N (mode Fx)",
 * N without that bit; else the number. At most 80 bytes. */
PM_API char *port_bb_credit_string(int32_t credit, char *buf);

/* -1 "default", else the number. At most 20 bytes. */
PM_API char *port_bb_credit_multiplier_string(int32_t multiplier, char *buf);

/* 0 "default", else the number. At most 20 bytes. */
PM_API char *port_bb_credit_performance_buf_string(int32_t buffers, char *buf);

/* Extended credits: 0 "default", else the number. At most 40 bytes. */
PM_API char *port_ec_bb_credit_string(int32_t credit, char *buf);

/* A buffer size in bytes, as a number. At most 20 bytes. */
PM_API char *port_rxbufsize_string(uint16_t size, char *buf);

/* 1 "promiscuos mode on", 2 "promiscuos mode off", else "promiscuos mode unknown". At most 50 bytes. */
PM_API char *port_promiscuous_mode_string(int32_t mode, char *buf);

/* 1 "auto-negotiate on", 2 "auto-negotiate off", else "auto-negotiate unknown". At most 50 bytes. */
PM_API char *port_auto_negotiate_string(int32_t auto_neg, char *buf);

PM_END_DECLS

#endif
