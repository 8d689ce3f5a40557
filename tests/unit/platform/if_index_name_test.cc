// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "platform_dev/if_index_dev.h"

namespace {

std::string name_of(if_index_t index) {
    char text[256];
    const int32_t length = sprintf_if_index(text, index);
    EXPECT_EQ(strlen(text), static_cast<size_t>(length));
    return text;
}

struct named_index {
    const char *name;
    if_index_t index;
};

TEST(IfIndexName, EveryKindHasItsForm) {
    const named_index expected[] = {
        {"fc1/4", 0x01003000},
        {"fc32/128", 0x01fff000},
        {"Ethernet2/7", 0x02086000},
        {"Ethernet2/7.100", 0x02086064},
        {"port-channel12", 0x0400c000},
        {"port-channel12.30", 0x0400c01e},
        {"port-channel1/12", 0x0440c000},
        {"port-channel3/1023.4095", 0x04ffffff},
        {"mgmt0", 0x05000000},
        {"fcip3", 0x0a000003},
        {"if11-1/4", 0x0b003000},
        {"if13-1/4", 0x0d003000},
        {"loopback1", 0x14000001},
        {"if22-12.30", 0x1600c01e},
        {"if26-1/4.9", 0x1a003009},
        {"if254-7", 0xfe000007},
        {"if0-0x0", 0},
        {"if132-0xffffff", 0x84ffffff},
        {"if1-0x3001", 0x01003001},
        {"if10-0x10003", 0x0a010003},
    };
    for (const auto &[name, index] : expected) {
        EXPECT_EQ(name_of(index), name);
        if_index_t read = 0x5a5a5a5a;
        EXPECT_EQ(if_index_from_name(name, &read), 0) << name;
        EXPECT_EQ(read, index) << name;
    }
}

// Every type with every single field value and a stride through all combinations.
TEST(IfIndexName, EveryIndexReadsBack) {
    for (uint32_t type = 0; type < 256; ++type) {
        for (uint32_t rest = 0; rest < 0x1000000; rest += rest < 0x2000 ? 1 : 4093) {
            const if_index_t index = type << 24 | rest;
            char name[256];
            sprintf_if_index(name, index);
            if_index_t read = ~index;
            ASSERT_EQ(if_index_from_name(name, &read), 0) << name;
            ASSERT_EQ(read, index) << name;
        }
    }
}

TEST(IfIndexName, EveryPortReadsBack) {
    for (uint32_t main = 0; main < 0x1000; ++main) {
        for (const uint32_t type : {1u, 2u, 4u, 11u, 13u, 22u, 26u}) {
            const if_index_t index = type << 24 | main << 12;
            char name[256];
            sprintf_if_index(name, index);
            EXPECT_EQ(strstr(name, "0x"), nullptr) << name;
            if_index_t read = ~index;
            ASSERT_EQ(if_index_from_name(name, &read), 0) << name;
            ASSERT_EQ(read, index) << name;
        }
    }
}

TEST(IfIndexName, StaysWithin256Bytes) {
    char text[512];
    for (uint32_t type = 0; type < 256; ++type) {
        memset(text, 0x5a, sizeof text);
        sprintf_if_index(text, type << 24 | 0xffffff);
        for (size_t i = 256; i < sizeof text; ++i) ASSERT_EQ(text[i], 0x5a);
    }
}

TEST(IfIndexName, ShortFormsAndEitherCaseAreRead) {
    const named_index expected[] = {
        {"eth2/7", 0x02086000},       {"ET2/7.100", 0x02086064}, {"po12", 0x0400c000}, {"Port-Channel12", 0x0400c000},
        {"port-ch12.30", 0x0400c01e}, {"FC1/4", 0x01003000},     {"mg0", 0x05000000},  {"lo1", 0x14000001},
        {"fci3", 0x0a000003},         {"IF254-7", 0xfe000007},
    };
    for (const auto &[name, index] : expected) {
        if_index_t read = 0;
        EXPECT_EQ(if_index_from_name(name, &read), 0) << name;
        EXPECT_EQ(read, index) << name;
    }
}

TEST(IfIndexName, WhatIsNoNameIsRefused) {
    for (const char *name : {"",
                             "fc",
                             "e2/7",
                             "1/4",
                             "fc1",
                             "fc3/",
                             "fc/4",
                             "fc0/4",
                             "fc1/0",
                             "fc33/1",
                             "fc1/129",
                             "fc1/4.1",
                             "fc1/4x",
                             " fc1/4",
                             "fc1/4 ",
                             "fc-1/4",
                             "fc1/-4",
                             "ether2",
                             "Ethernet2/7.",
                             "Ethernet2/7.0",
                             "Ethernet2/7.4096",
                             "etherx2/7",
                             "po",
                             "po1024",
                             "po4/1",
                             "po1.4096",
                             "mgmt",
                             "mgmt0/5",
                             "mgmt0.5",
                             "mgmt16777216",
                             "fcip65536",
                             "fcip4294967299",
                             "if",
                             "if11",
                             "if11-",
                             "if256-0x1",
                             "if99-1",
                             "if99-0x",
                             "if99-0x1000000",
                             "if11-1",
                             "if11-1/4.1",
                             "if-0x1",
                             "fc1/4/5",
                             "vlan7",
                             "fc99999999999999999999/1"}) {
        if_index_t read = 0x5a5a5a5a;
        EXPECT_EQ(if_index_from_name(name, &read), -1) << name;
        EXPECT_EQ(read, 0x5a5a5a5au) << name;
    }
}

}  // namespace
