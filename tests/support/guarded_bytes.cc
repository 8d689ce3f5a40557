// SPDX-License-Identifier: Apache-2.0
#include "guarded_bytes.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace support {

guarded_bytes::guarded_bytes(const bytes &content) : size_(content.size()) {
    const auto page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
    const size_t readable = (size_ + page - 1) / page * page;
    mapped_ = readable + page;
    void *const mapping = mmap(nullptr, mapped_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapping == MAP_FAILED) throw std::system_error(errno, std::generic_category(), "mmap");
    mapping_ = static_cast<uint8_t *>(mapping);
    data_ = mapping_ + readable - size_;
    std::copy(content.begin(), content.end(), data_);
    mprotect(mapping_ + readable, page, PROT_NONE);
}

guarded_bytes::~guarded_bytes() { munmap(mapping_, mapped_); }

}  // namespace support
