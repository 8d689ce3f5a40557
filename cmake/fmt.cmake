# SPDX-License-Identifier: Apache-2.0
# {fmt} from Debian's headers, compiled once in the width of the preset: header-only, every source that formats a text
# would compile all of it again.
add_library(port_mgr_fmt STATIC EXCLUDE_FROM_ALL ${CMAKE_CURRENT_LIST_DIR}/fmt/fmt.cc)
