/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup port_mgr The library
 * @brief The client library of the port manager.
 *
 * `port_mgr_common.h` is the whole interface of libport_mgr_common; each header that it includes is a family of
 * functions.
 *
 * **Linking**: `pkg-config --cflags --libs port_mgr_common` tells what an installed library is built with.
 *
 * **Results**: Functions return a 32-bit status: 0 for success, one of the `PM_ERR_...` codes of `status.h`, 1 when
 * memory ran out, a system error number of the message transport, what CMI tells of a request that had no answer, or a
 * nonzero status that a service answered with, passed on as it stands. Exceptions say so where they are declared.
 *
 * **Outputs**: An output is written only as its function says; on failure it stays untouched unless the function says
 * otherwise.
 *
 * **Ownership**: Every array or record that a function allocates for its caller is one malloc block: free it once, with
 * free(). A response message belongs to the caller from the moment it is received: release it with mts_drop(), after
 * parsing. The library keeps no reference to memory of its caller's.
 *
 * **Byte order**: Arguments and records are in host order. Members that keep the four bytes of the wire as they came
 * say "network order".
 *
 * **Records**: Byte-packed: members follow one another without padding, so multi-byte members may be unaligned. Headers
 * whose records are not say so.
 *
 * **Threads**: The library starts no thread, takes no lock and installs no signal handler. An MTS handle, and whatever
 * else a caller hands over, belongs to one thread at a time. Apart from that, everything may be called on several
 * threads at once, with two exceptions:
 *
 * - A value that the function does not know, given to port_auto_neg_string(), port_bb_scn_cfg_string(),
 *   port_beacon_mode_string(), port_down_on_link_failure_string(), port_ignore_param_string(), port_mode_string(),
 *   port_promiscuous_string(), port_rate_mode_string(), port_service_state_string(), port_snmp_trap_string(),
 *   port_trunking_mode_string() or port_type_string(): the text goes to #local_temp_string_buffer, and another call
 *   overwrites it.
 * - pm_check_is_valid_sub_intf_bitset(), always: the position of its search is shared, and two at once may answer
 *   wrongly.
 *
 * **Diagnostics**: Lines on standard output, most of them begun by the name of the function that reports. Functions
 * that say so leave an assertion report in `/log/assert-backtrace`, as long as there is a `/log` and room in the file,
 * and with it a line in the system log. What several threads report at once may mix: on standard output line by line,
 * in the log of assertions piece by piece.
 *
 * **A query in brief**: asks, parses, releases the message, and frees the records.
 *
 *     mts_msg_t answer;
 *     uint32_t count;
 *     pm_port_info_t *ports;
 *     if (pm_get_port_info_range(handle, first, last, &answer) == 0) {
 *         uint32_t status = pm_parse_get_port_info(&answer, &count, &ports);
 *         mts_drop(handle, &answer);
 *         if (status == 0) {
 *             ...
 *             free(ports);
 *         }
 *     }
 */
#ifndef PORT_MGR_PORT_MGR_COMMON_H
#define PORT_MGR_PORT_MGR_COMMON_H

#include "port_mgr/command_words.h"
#include "port_mgr/config_attribute.h"
#include "port_mgr/ethernet_stats.h"
#include "port_mgr/if_index_listing.h"
#include "port_mgr/if_index_range.h"
#include "port_mgr/loopback_config.h"
#include "port_mgr/messaging.h"
#include "port_mgr/module_interface_listing.h"
#include "port_mgr/net_dev_stats.h"
#include "port_mgr/opcodes.h"
#include "port_mgr/port_capabilities.h"
#include "port_mgr/port_config.h"
#include "port_mgr/port_info_record.h"
#include "port_mgr/port_info_request.h"
#include "port_mgr/port_info_response.h"
#include "port_mgr/port_iterator.h"
#include "port_mgr/port_state_reason.h"
#include "port_mgr/port_strings.h"
#include "port_mgr/service_selection.h"
#include "port_mgr/sfp_diagnostics.h"
#include "port_mgr/status.h"
#include "port_mgr/sub_interface_config.h"
#include "port_mgr/transceiver_info.h"
#include "port_mgr/transceiver_kind.h"
#include "port_mgr/types.h"
#include "port_mgr/vsan_bitset.h"

#endif
