# SPDX-License-Identifier: Apache-2.0
# Debian packages, one a component of cmake/install.cmake; scripts/package builds those of both widths.

set(CPACK_GENERATOR DEB)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/compress_manual_pages.cmake)
# The prefix is that of the installed files also while CPack installs, since the service names them.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)  # what is installed is the target `product`, not all that can be built

set(CPACK_PACKAGE_CONTACT "port_mgr developers <port-mgr@localhost>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS OFF)
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE i386)
else()
  set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE amd64)
endif()

# port_mgr_package(COMPONENT NAME SECTION MULTI_ARCH ...): TARGETS are the built files in it, whose needs of the system
# cmake/package_dependencies.cmake finds out; DEPENDS are packages of ours, of this very version. CPack has no variable
# for Multi-Arch: the field follows the section.
function(port_mgr_package component name section multi_arch)
  cmake_parse_arguments(arg "" "DESCRIPTION" "TARGETS;DEPENDS" ${ARGN})
  string(TOUPPER ${component} key)
  set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${name} PARENT_SCOPE)
  set(CPACK_DEBIAN_${key}_PACKAGE_SECTION "${section}\nMulti-Arch: ${multi_arch}" PARENT_SCOPE)
  set(CPACK_COMPONENT_${key}_DESCRIPTION "${arg_DESCRIPTION}" PARENT_SCOPE)
  list(TRANSFORM arg_DEPENDS APPEND " (= ${PROJECT_VERSION})")
  set(CPACK_PORT_MGR_${key}_DEPENDS "${arg_DEPENDS}" PARENT_SCOPE)
  list(TRANSFORM arg_TARGETS REPLACE "(.+)" "$<TARGET_FILE:\\1>")
  file(GENERATE OUTPUT packaging/${component}.files CONTENT "${arg_TARGETS}")
  list(APPEND CPACK_COMPONENTS_ALL ${component})
  set(CPACK_COMPONENTS_ALL ${CPACK_COMPONENTS_ALL} PARENT_SCOPE)
  install(FILES packaging/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${name} COMPONENT ${component})
endfunction()

port_mgr_package(library libport-mgr-common libs same TARGETS port_mgr_common
                 DESCRIPTION "client library of the port manager of a switch
Asks about ports, port channels and modules of a switch, configures them, and
names their attributes in the words that people read.

It calls the platform's libraries: those of the switch, or, on other hosts,
those of libport-mgr-platform.")
port_mgr_package(platform libport-mgr-platform libs same
                 TARGETS ${platform_libraries} ${libraries_loaded_at_run_time}
                 DESCRIPTION "development platform of the port manager of a switch
The libraries of a switch's platform for an ordinary host: message transport,
interface indexes, and the databases of a virtual switch.")
port_mgr_package(development libport-mgr-common-dev libdevel same DEPENDS libport-mgr-common libport-mgr-platform
                 DESCRIPTION "development files of the port manager's client library
Headers, CMake package, pkg-config file, manual pages and examples.")
port_mgr_package(virtual-switch port-mgr-virtual-switch net foreign TARGETS pm-virtual-switch
                 DEPENDS libport-mgr-platform
                 DESCRIPTION "virtual switch for clients of a port manager
A daemon that hosts the services of a switch's port manager for the chassis
that a file describes, and a system service, not enabled, that runs it.")
port_mgr_package(pmctl pmctl net foreign TARGETS pmctl DEPENDS libport-mgr-common libport-mgr-platform
                 DESCRIPTION "command-line client of the port manager of a switch
Shows and configures ports, transceivers, counters and modules.")

# The switch brings a platform of its own.
set(CPACK_DEBIAN_LIBRARY_PACKAGE_RECOMMENDS "libport-mgr-platform (= ${PROJECT_VERSION})")
foreach(key LIBRARY PLATFORM)
  set(CPACK_DEBIAN_${key}_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/triggers)
endforeach()
set(CPACK_DEBIAN_VIRTUAL-SWITCH_PACKAGE_CONTROL_EXTRA
    ${PROJECT_SOURCE_DIR}/packaging/postinst ${PROJECT_SOURCE_DIR}/packaging/prerm ${PROJECT_SOURCE_DIR}/packaging/postrm)

# Read when packages are built, since it looks at the built files.
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/cmake/package_dependencies.cmake)
set(CPACK_PORT_MGR_FOLDER ${PROJECT_BINARY_DIR}/packaging)
set(CPACK_PORT_MGR_COMPILER_VERSION ${CMAKE_CXX_COMPILER_VERSION})
include(CPack)
