// SPDX-License-Identifier: Apache-2.0
#include "chassis/text_file.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

#include "chassis/chassis_error.h"

namespace virtual_switch {
namespace {

struct directory_closer {
    void operator()(DIR *directory) const { closedir(directory); }
};
using directory_handle = std::unique_ptr<DIR, directory_closer>;

directory_handle directory_of(const std::string &path) {
    const size_t slash = path.rfind('/');
    if (slash == std::string::npos) return directory_handle(opendir("."));
    return directory_handle(opendir(path.substr(0, slash + 1).c_str()));
}

// Takes the descriptor, also when there is no memory for its stream.
file_handle stream_of(int fd, const char *mode) {
    if (fd < 0) return nullptr;
    file_handle file(fdopen(fd, mode));
    if (file == nullptr) close(fd);
    return file;
}

// Whatever stands at `path` is no file of ours that somebody else has open or linked. The mode is right whatever the
// umask is.
file_handle create_anew(const char *path) {
    unlink(path);
    const int fd = open(path, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR);
    file_handle file = stream_of(fd, "w");
    if (file != nullptr && fchmod(fd, S_IRUSR | S_IWUSR) != 0) return nullptr;
    return file;
}

bool write_durably(const char *path, std::string_view content) {
    file_handle file = create_anew(path);
    return file != nullptr && std::fwrite(content.data(), 1, content.size(), file.get()) == content.size() &&
           std::fflush(file.get()) == 0 && fsync(fileno(file.get())) == 0 && std::fclose(file.release()) == 0;
}

// The directory is opened first, so that its failure changes nothing.
bool replace_durably(const std::string &path, const std::string &temporary, std::string_view content) {
    const directory_handle directory = directory_of(path);
    return directory != nullptr && write_durably(temporary.c_str(), content) &&
           std::rename(temporary.c_str(), path.c_str()) == 0 && fsync(dirfd(directory.get())) == 0;
}

}  // namespace

file_handle open_regular_file(const std::string &path, int more_flags) {
    const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | more_flags);
    file_handle file = stream_of(fd, "r");
    struct stat status {};
    if (file != nullptr && fstat(fd, &status) == 0 && !S_ISREG(status.st_mode)) {
        throw chassis_error(1, "file", "is no regular file");
    }
    return file;
}

std::string read_text_file(file_handle file, size_t most_mib) {
    if (file == nullptr) throw chassis_error(1, "file", std::strerror(errno));
    const size_t most = most_mib * bytes_in_mib;
    std::string text(most + 1, '\0');
    text.resize(std::fread(text.data(), 1, text.size(), file.get()));
    if (std::ferror(file.get()) != 0) throw chassis_error(1, "file", std::strerror(errno));
    if (text.size() > most) throw chassis_error(1, "file", "is larger than " + std::to_string(most_mib) + " MiB");
    return text;
}

void replace_file(const std::string &path, std::string_view content) {
    const std::string temporary = path + ".new";
    if (replace_durably(path, temporary, content)) return;
    const std::string reason = std::strerror(errno);
    unlink(temporary.c_str());
    throw std::runtime_error(path + ": " + reason);
}

}  // namespace virtual_switch
