# Run by cpack before it packs: puts into the archive what only it holds.
# SPDX-License-Identifier: GPL-3.0-or-later
if(CPACK_GENERATOR STREQUAL "TGZ")
  file(COPY ${CPACK_SIVRAY_ARCHIVE_FILES} DESTINATION "${CPACK_TEMPORARY_INSTALL_DIRECTORY}")
endif()
