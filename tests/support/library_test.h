// SPDX-License-Identifier: Apache-2.0
// library_test.h: the fixture of the library's unit tests: all of its surroundings, faked. What a test does not look
// at must not have happened: a line on standard output, a failed check, a lost block, a message that is not dropped, a
// library or a file that is left open, a step of the script that is not taken.
#ifndef SUPPORT_LIBRARY_TEST_H
#define SUPPORT_LIBRARY_TEST_H

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "call_log.h"
#include "captured_stdout.h"
#include "fake_assertion_log.h"
#include "fake_heap.h"
#include "fake_index_map.h"
#include "fake_interface_numbers.h"
#include "fake_interfaces.h"
#include "fake_loader.h"
#include "fake_net_dev.h"
#include "fake_platform_info.h"
#include "fake_tlv_array.h"
#include "fake_transport.h"

namespace support {

class library_test : public testing::Test {
  protected:
    library_test() { call_log::take(); }

    void TearDown() override {
        // A failure was printed, too.
        if (!HasFailure()) {
            EXPECT_EQ(output.take(), "");
        }
        EXPECT_THAT(assertions.take(), testing::IsEmpty());
        EXPECT_EQ(heap.live_blocks(), 0);
        EXPECT_THAT(loader.open_libraries, testing::IsEmpty());
        EXPECT_EQ(interfaces.type_looks.size(), 0U) << "look-ups of types that were not made";
        EXPECT_EQ(interfaces.chassis_looks.size(), 0U) << "look-ups of the chassis type that were not made";
        EXPECT_EQ(index_map.entry_looks.size(), 0U) << "look-ups of the index map that were not made";
        EXPECT_EQ(net_dev.open_files, 0) << "files that were not closed";
        transport.verify();
    }

    captured_stdout output;
    fake_assertion_log assertions;
    fake_heap heap;
    fake_interfaces interfaces;
    fake_interface_numbers numbers;
    fake_platform_info platform;
    fake_index_map index_map;
    fake_net_dev net_dev;
    fake_tlv_array elements;
    fake_loader loader;
    fake_transport transport{heap};
};

}  // namespace support

#endif
