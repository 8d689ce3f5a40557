/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup port_mgr_command_words command_words.h: words of commands
 * @ingroup port_mgr
 * @brief Configured values as the words that the command line takes, to write a configuration as commands.
 *
 * Every function returns a constant text, which is not to be freed, for every value. All are thread-safe.
 * @{
 */
#ifndef PORT_MGR_COMMAND_WORDS_H
#define PORT_MGR_COMMAND_WORDS_H

#include "port_mgr/types.h"

PM_BEGIN_DECLS

/**
 * The word for a configured speed.
 *
 * @param[in] speed  The speed in Mbit/s.
 * @return The number for 10, 100, 1000, 2000, 4000, 8000 and 10000; 1 "auto max 2000", 2 "auto max 4000", 110 "auto 10
 *     100"; else "auto".
 */
PM_API const char *pm_cli_dump_port_speed(uint32_t speed);

/**
 * The word for a configured duplex mode.
 *
 * @param[in] mode  The mode.
 * @return 1 "half", 2 "full", else "auto".
 */
PM_API const char *pm_cli_dump_port_duplex_mode(uint8_t mode);

/**
 * The word for a configured rate mode.
 *
 * @param[in] mode  The mode.
 * @return 1 "dedicated", else "shared".
 */
PM_API const char *pm_cli_dump_port_rate_mode(uint8_t mode);

/**
 * The word for a configured trunking mode.
 *
 * @param[in] mode  The mode.
 * @return 2 "on", 3 "auto", else "off".
 */
PM_API const char *pm_cli_dump_trunk_mode(uint8_t mode);

PM_END_DECLS

/** @} */
#endif
