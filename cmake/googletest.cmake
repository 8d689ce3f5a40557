# SPDX-License-Identifier: Apache-2.0
# GoogleTest is compiled from Debian's source package, in the width of the preset.

add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
foreach(target gtest gmock gtest_main gmock_main)
  target_compile_options(${target} PRIVATE -w -O0 -U_FORTIFY_SOURCE)
endforeach()

# The tests spend their time in the compiler: what they test is optimised as it ships, they themselves are not. The
# sanitizers watch all their memory, but undefined behaviour only in what they test.
set(port_mgr_test_options -O0 -U_FORTIFY_SOURCE)
if(PORT_MGR_SANITIZER STREQUAL "address")
  list(APPEND port_mgr_test_options -g0 -fno-sanitize=undefined)
endif()

# Every test program reads the framework's headers, and that takes most of its compile time: they are compiled once.
add_library(test_framework_headers OBJECT ${CMAKE_SOURCE_DIR}/cmake/test_framework_headers.cc)
target_link_libraries(test_framework_headers PRIVATE gmock)
target_compile_options(test_framework_headers PRIVATE ${port_mgr_test_options} -fPIE)  # as programs are
target_precompile_headers(test_framework_headers PRIVATE <gmock/gmock.h> <gtest/gtest.h> <algorithm> <filesystem>
                          <fstream> <functional> <map> <set> <string> <vector>)

# port_mgr_add_test(NAME sources... LIBRARIES ...): one test program, run as a whole: a process for each of its cases would
# take longer than most cases do. By hand: build/PRESET/tests/NAME --gtest_filter=CASE.
function(port_mgr_add_test name)
  cmake_parse_arguments(arg "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} gmock gtest_main)
  target_precompile_headers(${name} REUSE_FROM test_framework_headers)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
  # The sanitizers' dlopen loses the caller's run path, so the libraries loaded at run time are named here.
  set_tests_properties(${name} PROPERTIES TIMEOUT 300 ENVIRONMENT LD_LIBRARY_PATH=${CMAKE_BINARY_DIR}/lib)
endfunction()
