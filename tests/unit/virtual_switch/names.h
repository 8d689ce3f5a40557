// SPDX-License-Identifier: Apache-2.0
// names.h: interfaces by name, for tests.
#ifndef TESTS_UNIT_VIRTUAL_SWITCH_NAMES_H
#define TESTS_UNIT_VIRTUAL_SWITCH_NAMES_H

#include <gtest/gtest.h>

#include "platform_dev/if_index_dev.h"

inline if_index_t index_of(const char *name) {
    if_index_t if_index = 0;
    EXPECT_EQ(if_index_from_name(name, &if_index), 0) << name;
    return if_index;
}

#endif
