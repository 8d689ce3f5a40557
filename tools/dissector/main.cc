// SPDX-License-Identifier: Apache-2.0
// Prints the description of the protocol as Lua, for the dissector's engine to walk.
#include <iostream>

#include "lua_tables.h"

int main() {
    dissector::write_tables(std::cout);
    return std::cout.flush() ? 0 : 1;
}
