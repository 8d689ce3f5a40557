// SPDX-License-Identifier: Apache-2.0
// footprint.h: what this process holds of the system.
#ifndef TESTS_INTEGRATION_FAULTS_FOOTPRINT_H
#define TESTS_INTEGRATION_FAULTS_FOOTPRINT_H

#include <iosfwd>

struct footprint {
    long descriptors;
    long mapped_files;  // mappings of memory without a file come and go with the heap
    long live_blocks;

    [[nodiscard]] static footprint now();

    bool operator==(const footprint &) const = default;
};

void PrintTo(const footprint &held, std::ostream *out);

#endif
