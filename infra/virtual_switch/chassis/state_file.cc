// SPDX-License-Identifier: Apache-2.0
#include "chassis/state_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

#include "chassis/chassis_error.h"
#include "chassis/text_file.h"
#include "common/own_file.h"

namespace virtual_switch {
namespace {

constexpr size_t most_mib = 16;

// Who can write the file configures the switch, as who has put it into a directory that many can write to.
void check_writers(std::FILE *file) {
    struct stat status {};
    if (fstat(fileno(file), &status) != 0) throw chassis_error(1, "file", std::strerror(errno));
    if (status.st_uid != geteuid() && status.st_uid != 0) throw chassis_error(1, "file", "belongs to another user");
    if ((status.st_mode & S_IWOTH) != 0) throw chassis_error(1, "file", "can be written by everybody");
}

// A link is refused since replacing the file would replace the link.
file_handle open_state(const std::string &path) {
    file_handle file = open_regular_file(path, O_NOFOLLOW);
    if (file == nullptr && errno == ELOOP) throw chassis_error(1, "file", "is a symbolic link");
    return file;
}

}  // namespace

configuration load_state(const std::string &path) {
    try {
        file_handle file = open_state(path);
        if (file == nullptr && errno == ENOENT) return {};
        if (file != nullptr) check_writers(file.get());
        return parse_state(read_text_file(std::move(file), most_mib));
    } catch (const chassis_error &error) {
        throw std::runtime_error(path + ":" + error.what());
    }
}

// The lock comes first: who held it before may have written until then.
kept_state take_state(const std::string &path) {
    const std::string lock_file = path + ".lock";
    platform_dev::unique_fd lock = platform_dev::take_lock(lock_file.c_str());
    if (!lock && errno == EWOULDBLOCK)
        throw std::runtime_error(path + ": another switch keeps its configuration there");
    if (!lock) throw std::runtime_error(lock_file + ": " + std::strerror(errno));
    return {path, std::move(lock), load_state(path)};
}

void save_state(const std::string &path, const configuration &changes) {
    const std::string text = state_text(changes);
    if (text.size() > most_mib * bytes_in_mib) throw std::runtime_error(path + ": would be larger than 16 MiB");
    replace_file(path, text);
}

}  // namespace virtual_switch
