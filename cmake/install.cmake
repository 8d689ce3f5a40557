# SPDX-License-Identifier: Apache-2.0
# What `cmake --install` installs, in components that are also the packages of cmake/packages.cmake:
#   library         libport_mgr_common.so. Its name has no version: on the switch it takes the place of the file of that name.
#   platform        the development platform's shared objects, which stand in for the switch's own on other hosts
#   development     what programs are built with: headers, CMake package, pkg-config file, examples, manual pages; and
#                   what shows their messages in Wireshark
#   virtual-switch  the daemon, its example chassis and its system service
#   pmctl           the client

# Libraries lie in a folder that names their architecture, so that both widths fit into one prefix.
if(NOT DEFINED CMAKE_INSTALL_LIBDIR)
  separate_arguments(flags UNIX_COMMAND "${CMAKE_C_FLAGS}")
  execute_process(COMMAND ${CMAKE_C_COMPILER} ${flags} -print-multiarch
                  OUTPUT_VARIABLE multiarch OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  if(multiarch)
    set(CMAKE_INSTALL_LIBDIR lib/${multiarch} CACHE PATH "Libraries, in the prefix")
  endif()
endif()
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(platform_libraries mts utils pcm pfm_intf sdwrap bmp)
set(libraries_loaded_at_run_time pcm_sdb fsrv_client)

# All that is built of what is installed.
add_custom_target(product DEPENDS port_mgr_common ${platform_libraries} ${libraries_loaded_at_run_time}
                                  pm-virtual-switch pmctl wireshark_dissector)

# They find each other wherever the prefix is, and in the build directory by the same run paths: an install changes no file.
file(RELATIVE_PATH libdir_of_programs /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
set_target_properties(port_mgr_common ${platform_libraries} ${libraries_loaded_at_run_time} PROPERTIES
                      BUILD_WITH_INSTALL_RPATH ON INSTALL_RPATH "$ORIGIN")
set_target_properties(pm-virtual-switch pmctl PROPERTIES
                      BUILD_WITH_INSTALL_RPATH ON INSTALL_RPATH "$ORIGIN/${libdir_of_programs}")
set(built_libdir ${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR})
file(MAKE_DIRECTORY ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
if(NOT EXISTS ${built_libdir})
  cmake_path(GET built_libdir PARENT_PATH parent)
  cmake_path(RELATIVE_PATH CMAKE_LIBRARY_OUTPUT_DIRECTORY BASE_DIRECTORY ${parent} OUTPUT_VARIABLE target)
  file(CREATE_LINK ${target} ${built_libdir} SYMBOLIC)
endif()

install(TARGETS port_mgr_common EXPORT port_mgr_common LIBRARY COMPONENT library)
install(TARGETS ${platform_libraries} EXPORT port_mgr_common LIBRARY COMPONENT platform)
install(TARGETS ${libraries_loaded_at_run_time} LIBRARY COMPONENT platform)
install(TARGETS pm-virtual-switch RUNTIME COMPONENT virtual-switch)
install(TARGETS pmctl RUNTIME COMPONENT pmctl)

# The publisher of the chassis database is a part of the virtual switch and in no shared object.
install(DIRECTORY infra/port_manager/include/port_mgr infra/platform/include/platform
                  infra/platform/dev/include/platform_dev
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
        FILES_MATCHING PATTERN "*.h" PATTERN "*.hpp" PATTERN chassis_db.h EXCLUDE)
install(TARGETS port_mgr_headers platform_headers platform_dev_headers EXPORT port_mgr_common)

set(cmake_package ${CMAKE_INSTALL_LIBDIR}/cmake/port_mgr_common)
install(EXPORT port_mgr_common NAMESPACE port_mgr_common:: FILE port_mgr_common-config.cmake
        DESTINATION ${cmake_package} COMPONENT development)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/packaging/port_mgr_common-config-version.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/packaging/port_mgr_common-config-version.cmake
        DESTINATION ${cmake_package} COMPONENT development)

file(RELATIVE_PATH prefix_from_pcfiledir /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" prefix_from_pcfiledir ${prefix_from_pcfiledir})
configure_file(packaging/port_mgr_common.pc.in packaging/port_mgr_common.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/packaging/port_mgr_common.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libport-mgr-common-dev COMPONENT development
        REGEX "/examples/(chassis|CMakeLists.txt)$" EXCLUDE)
install(FILES ${PORT_MGR_DISSECTOR} DESTINATION ${CMAKE_INSTALL_DATADIR}/port_mgr/wireshark COMPONENT development)
# Generated, where doxygen is installed, by the target `docs`.
install(DIRECTORY ${PROJECT_SOURCE_DIR}/build/docs/man/man3 DESTINATION ${CMAKE_INSTALL_MANDIR}
        COMPONENT development OPTIONAL)

install(DIRECTORY examples/chassis DESTINATION ${CMAKE_INSTALL_DATADIR}/port_mgr COMPONENT virtual-switch)
install(FILES packaging/port-mgr.conf DESTINATION lib/sysusers.d COMPONENT virtual-switch)
# The service names its files by absolute paths, known when the prefix is.
set(service_architectures native)
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  string(APPEND service_architectures " x86")  # also where the system is a 64-bit one
endif()
install(CODE "
  cmake_path(ABSOLUTE_PATH CMAKE_INSTALL_PREFIX OUTPUT_VARIABLE prefix)
  set(bindir \${prefix}/${CMAKE_INSTALL_BINDIR})
  set(datadir \${prefix}/${CMAKE_INSTALL_DATADIR})
  set(service_architectures \"${service_architectures}\")
  set(service \${prefix}/lib/systemd/system/pm-virtual-switch.service)
  message(STATUS \"Installing: \$ENV{DESTDIR}\${service}\")
  configure_file(${PROJECT_SOURCE_DIR}/packaging/pm-virtual-switch.service.in \$ENV{DESTDIR}\${service}
                 NO_SOURCE_PERMISSIONS @ONLY)
  list(APPEND CMAKE_INSTALL_MANIFEST_FILES \${service})"
        COMPONENT virtual-switch)

install(FILES tools/pmctl/completion/pmctl.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
        RENAME pmctl COMPONENT pmctl)
install(DIRECTORY docs/schema DESTINATION ${CMAKE_INSTALL_DATADIR}/port_mgr COMPONENT pmctl)

# Manual pages: of the program that the name begins with, else of the library.
file(GLOB manual_pages CONFIGURE_DEPENDS docs/man/*.[1-8])
foreach(page IN LISTS manual_pages)
  if(page MATCHES "/pmctl[^/]*$")
    set(component pmctl)
  elseif(page MATCHES "/(pm-virtual-switch|port_mgr_(chassis|state))[^/]*$")
    set(component virtual-switch)
  else()
    set(component development)
  endif()
  string(REGEX MATCH "[1-8]$" section ${page})
  install(FILES ${page} DESTINATION ${CMAKE_INSTALL_MANDIR}/man${section} COMPONENT ${component})
endforeach()

include(cmake/packages.cmake)
