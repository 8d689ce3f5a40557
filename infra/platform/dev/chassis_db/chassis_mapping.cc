// SPDX-License-Identifier: Apache-2.0
#include "chassis_db/chassis_mapping.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>

#include <cstring>

#include "chassis_db/sequence_lock.h"

namespace platform_dev {
namespace {

// A shorter file must not be mapped: reading behind its end ends the process.
bool has_whole_image(int fd, uid_t owner) {
    struct stat status {};
    return fstat(fd, &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == owner &&
           status.st_size == sizeof(chassis_image);
}

bool has_current_header(const chassis_header &header) {
    return load_word(header.magic) == chassis_magic && load_word(header.version) == chassis_version &&
           load_word(header.size) == sizeof(chassis_image);
}

}  // namespace

void unmap_image::operator()(chassis_image *image) const { munmap(image, sizeof *image); }

image_ptr map_image(int fd, int protection) {
    void *address = mmap(nullptr, sizeof(chassis_image), protection, MAP_SHARED, fd, 0);
    return image_ptr(address == MAP_FAILED ? nullptr : static_cast<chassis_image *>(address));
}

bool chassis_mapping::is_live() const {
    path_buffer directory;
    struct stat status {};
    return image_ != nullptr && runtime_dir_path(directory) && strcmp(directory.data(), directory_.path.data()) == 0 &&
           fstat(fd_.get(), &status) == 0 && status.st_nlink != 0;
}

bool chassis_mapping::open() {
    close();
    path_buffer path;
    if (!runtime_dir(directory_) || !runtime_file(directory_, chassis_file_name, path)) return false;
    unique_fd fd(::open(path.data(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    if (!fd || !has_whole_image(fd.get(), directory_.owner)) return false;
    image_ptr image = map_image(fd.get(), PROT_READ);
    if (image == nullptr || !has_current_header(image->header)) return false;
    fd_ = std::move(fd);
    image_ = std::move(image);
    return true;
}

void chassis_mapping::close() {
    image_.reset();
    fd_.reset();
}

}  // namespace platform_dev
