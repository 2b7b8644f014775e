# Run by cpack before it packs: puts into the archive what only it holds, and lets everybody read what is packed, also where
# it was built by somebody whose files are private.
# SPDX-License-Identifier: GPL-3.0-or-later
if(CPACK_GENERATOR STREQUAL "TGZ")
  file(COPY ${CPACK_SIVRAY_ARCHIVE_FILES} DESTINATION "${CPACK_TEMPORARY_INSTALL_DIRECTORY}")
endif()
execute_process(COMMAND chmod -R u=rwX,go=rX "${CPACK_TEMPORARY_INSTALL_DIRECTORY}" COMMAND_ERROR_IS_FATAL ANY)
