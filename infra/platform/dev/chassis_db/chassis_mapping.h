// SPDX-License-Identifier: Apache-2.0
// chassis_mapping.h: this process's view of the database file.
#ifndef PLATFORM_DEV_CHASSIS_DB_CHASSIS_MAPPING_H
#define PLATFORM_DEV_CHASSIS_DB_CHASSIS_MAPPING_H

#include <memory>

#include "chassis_db/chassis_image.h"
#include "common/runtime_dir.h"
#include "common/unique_fd.h"

namespace platform_dev {

struct unmap_image {
    void operator()(chassis_image *image) const;
};
using image_ptr = std::unique_ptr<chassis_image, unmap_image>;

// Maps the file behind `fd`, which holds a whole image. Null with errno on failure.
image_ptr map_image(int fd, int protection);

// The database that readers of this process have open.
class chassis_mapping {
  public:
    // True while this is the database that a look-up must read: the run-time directory is the same, and the file is
    // still in it.
    [[nodiscard]] bool is_live() const;

    // Opens the database of the run-time directory. Returns false, and holds none, when there is none.
    [[nodiscard]] bool open();

    void close();

    [[nodiscard]] const chassis_image &image() const { return *image_; }

  private:
    runtime_directory directory_{};
    unique_fd fd_;
    image_ptr image_;
};

}  // namespace platform_dev

#endif
