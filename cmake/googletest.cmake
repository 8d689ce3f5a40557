# SPDX-License-Identifier: Apache-2.0
# GoogleTest is compiled from Debian's source package, in the width of the preset.

add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
foreach(target gtest gmock gtest_main gmock_main)
  target_compile_options(${target} PRIVATE -w -O0)
endforeach()
include(GoogleTest)

# port_mgr_add_test(NAME sources... LIBRARIES ...): one test program, one ctest entry a test case.
function(port_mgr_add_test name)
  cmake_parse_arguments(arg "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} gmock gtest_main)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  # The sanitizers' dlopen loses the caller's run path, so the libraries loaded at run time are named here.
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60
                       PROPERTIES TIMEOUT 120 ENVIRONMENT LD_LIBRARY_PATH=${CMAKE_BINARY_DIR}/lib)
endfunction()
