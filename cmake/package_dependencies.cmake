# SPDX-License-Identifier: Apache-2.0
# Read by CPack: what each package depends on. Versions are those that the symbols in its files ask for.

# port_mgr_needed_version(RESULT PREFIX VERSION_INFO): the highest version after PREFIX, or nothing.
function(port_mgr_needed_version result prefix version_info)
  string(REGEX MATCHALL "Name: ${prefix}_[0-9.]+" names "${version_info}")
  list(TRANSFORM names REPLACE ".*_" "")
  list(SORT names COMPARE NATURAL ORDER DESCENDING)
  list(POP_FRONT names highest)
  set(${result} "${highest}" PARENT_SCOPE)
endfunction()

# Prefix of the symbols' versions, and the package that has the library with them.
set(system_packages "GLIBC:libc6" "GLIBCXX:libstdc++6" "GCC:libgcc-s1")

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER ${component} key)
  set(depends ${CPACK_PORT_MGR_${key}_DEPENDS})
  file(READ ${CPACK_PORT_MGR_FOLDER}/${component}.files files)
  if(files)
    execute_process(COMMAND readelf --version-info --wide ${files} OUTPUT_VARIABLE version_info
                    COMMAND_ERROR_IS_FATAL ANY)
    foreach(entry IN LISTS system_packages)
      string(REGEX MATCH "^(.*):(.*)$" matched ${entry})
      set(package ${CMAKE_MATCH_2})
      port_mgr_needed_version(version ${CMAKE_MATCH_1} "${version_info}")
      if(version AND package STREQUAL "libstdc++6")
        set(version ${CPACK_PORT_MGR_COMPILER_VERSION})  # the library's versions are the compiler's
      endif()
      if(version)
        list(APPEND depends "${package} (>= ${version})")
      endif()
    endforeach()
  endif()
  list(JOIN depends ", " CPACK_DEBIAN_${key}_PACKAGE_DEPENDS)
endforeach()
