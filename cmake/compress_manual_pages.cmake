# SPDX-License-Identifier: Apache-2.0
# Run by CPack on what it packages: manual pages are compressed there, as a Debian system has them, and the same each time.

file(GLOB pages ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*/usr/share/man/man[1-8]/*.[1-8])
foreach(page IN LISTS pages)
  if(IS_SYMLINK ${page})
    file(READ_SYMLINK ${page} target)
    file(CREATE_LINK ${target}.gz ${page}.gz SYMBOLIC)
    file(REMOVE ${page})
  else()
    list(APPEND regular_pages ${page})
  endif()
endforeach()
execute_process(COMMAND gzip --best --no-name ${regular_pages} COMMAND_ERROR_IS_FATAL ANY)
