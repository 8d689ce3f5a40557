// SPDX-License-Identifier: Apache-2.0
// fake_net_dev.h: the files that the library reads, of which there is one: a text in the place of /proc/net/dev.
#ifndef SUPPORT_FAKE_NET_DEV_H
#define SUPPORT_FAKE_NET_DEV_H

#include <cstdio>
#include <optional>
#include <string>

namespace support {

class fake_net_dev {
  public:
    fake_net_dev();
    ~fake_net_dev();
    fake_net_dev(const fake_net_dev &) = delete;
    fake_net_dev &operator=(const fake_net_dev &) = delete;

    // The text of the file; none while it cannot be opened.
    std::optional<std::string> text;

    // Files that nobody has closed yet.
    int open_files = 0;

    // What the functions that stand in for the C library's do.
    FILE *open(const char *path, const char *mode);
    static void log_read(int size);
    void closed();
};

}  // namespace support

#endif
