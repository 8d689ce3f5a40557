/* SPDX-License-Identifier: Apache-2.0 */
/* command_words.h: configured values as the words that the command line takes, to write a configuration as commands.
 *
 * Every function returns a constant text, which is not to be freed, for every value. All are thread-safe. */
#ifndef PORT_MGR_COMMAND_WORDS_H
#define PORT_MGR_COMMAND_WORDS_H

#include "port_mgr/types.h"

PM_BEGIN_DECLS

/* A configured speed in Mbit/s: the number for 10, 100, 1000, 2000, 4000, 8000 and 10000; 1 "auto max 2000", 2 "auto
 * max 4000", 110 "auto 10 100"; else "auto". */
PM_API const char *pm_cli_dump_port_speed(uint32_t speed);

/* 1 "half", 2 "full", else "auto". */
PM_API const char *pm_cli_dump_port_duplex_mode(uint8_t mode);

/* 1 "dedicated", else "shared". */
PM_API const char *pm_cli_dump_port_rate_mode(uint8_t mode);

/* 2 "on", 3 "auto", else "off". */
PM_API const char *pm_cli_dump_trunk_mode(uint8_t mode);

PM_END_DECLS

#endif
