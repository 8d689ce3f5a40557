// SPDX-License-Identifier: Apache-2.0
// state_file.h: the file that keeps what clients configured; docs/state-file.md documents it.
#ifndef VIRTUAL_SWITCH_CHASSIS_STATE_FILE_H
#define VIRTUAL_SWITCH_CHASSIS_STATE_FILE_H

#include <string>
#include <string_view>

#include "chassis/configuration.h"
#include "common/unique_fd.h"

namespace virtual_switch {

// Reads a file of at most 16 MiB; one that is not there holds no configuration. Symbolic links, what is no file, what
// belongs to another user than our own and root, and what everybody can write are refused. Throws std::runtime_error
// with one line, "FILE:LINE: KEY: what is wrong", for the first mistake.
configuration load_state(const std::string &path);

// What a switch keeps, and the lock on FILE.lock that makes it the only one that keeps it there.
struct kept_state {
    std::string file;  // empty for none
    platform_dev::unique_fd lock;
    configuration changes;
};

// Loads a file as load_state does, for as long as the lock is held. Throws also when another switch holds it, and when
// the lock cannot be made.
kept_state take_state(const std::string &path);

// What load_state reads, from the text of a file; the line of a mistake starts with LINE.
configuration parse_state(std::string_view text);

// The text of a file, which parse_state reads to the same configuration.
std::string state_text(const configuration &changes);

// Throws std::runtime_error with one line when the file cannot be written; then it is as it was, unless its new name
// alone could not be flushed to disk.
void save_state(const std::string &path, const configuration &changes);

}  // namespace virtual_switch

#endif
