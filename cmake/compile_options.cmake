# SPDX-License-Identifier: Apache-2.0
# What every target of this project is compiled with.

add_compile_options(
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror
    # Reports and file names are the same on every machine: paths count from the root of the tree.
    -ffile-prefix-map=${CMAKE_SOURCE_DIR}/=)

# No source here makes the compiler need more memory than this; looking for some to free takes it an eighth of its time.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  add_compile_options(--param=ggc-min-heapsize=524288)
endif()

# Hardening of what ships; tests/abi holds the built files to it.
add_compile_options(-fstack-protector-strong -fstack-clash-protection)
add_link_options(-Wl,-z,relro,-z,now,-z,noexecstack)
include(CheckPIESupported)
check_pie_supported()

# Only what a header marks as exported leaves a shared object.
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

find_package(Threads REQUIRED)

# Which sanitizer the preset builds with; tests of what a sanitizer cannot stand ask here.
set(PORT_MGR_SANITIZER "" CACHE STRING "address, thread, fuzzer (clang only), or empty")
if(PORT_MGR_SANITIZER STREQUAL "address")
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
elseif(PORT_MGR_SANITIZER STREQUAL "thread")
  add_compile_options(-fsanitize=thread -fno-omit-frame-pointer)
  add_link_options(-fsanitize=thread)
elseif(PORT_MGR_SANITIZER STREQUAL "fuzzer")
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer
                      # what clang warns of under the names above, and gcc does not
                      -Wno-sign-conversion -Wno-c99-extensions)
  add_link_options(-fsanitize=address,undefined)
elseif(NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
  # The C library checks sizes and formats where it can. The sanitizers check more, and follow only plain functions.
  add_compile_options(-D_FORTIFY_SOURCE=2)
endif()

option(PORT_MGR_COVERAGE "Count which lines the tests reach" OFF)
if(PORT_MGR_COVERAGE)
  add_compile_options(--coverage)
  add_link_options(--coverage)
endif()

# Gives a program or shared object the C++ run-time library as a part of its own, which nobody else sees: loading the
# shared one takes longer than all else that a short program does. No exception may leave such an object. Sanitizers
# stand before the shared one.
function(port_mgr_hold_cxx_runtime target)
  if(NOT PORT_MGR_SANITIZER)
    target_link_options(${target} PRIVATE -static-libstdc++ -static-libgcc
                        LINKER:--exclude-libs,ALL,--gc-sections)
  endif()
endfunction()
