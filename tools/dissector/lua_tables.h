// SPDX-License-Identifier: Apache-2.0
// lua_tables.h: writes the description of the protocol as Lua.
#ifndef DISSECTOR_LUA_TABLES_H
#define DISSECTOR_LUA_TABLES_H

#include <ostream>

namespace dissector {

// A local table `protocol` of everything that the engine walks.
void write_tables(std::ostream &to);

}  // namespace dissector

#endif
