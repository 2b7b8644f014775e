# Copies the built content from the folder FROM into the folder TO, or prints a message if there is none. Unchanged
# files are not written.
# SPDX-License-Identifier: GPL-3.0-or-later
if(EXISTS "${FROM}/Tesh/Bramel/Macro/Sivray/readme.json")
  file(COPY "${FROM}/Tesh" "${FROM}/Presets" DESTINATION "${TO}")
  message(STATUS "${TO} holds the library and its content")
else()
  message(STATUS "${TO} holds the library alone: build the release preset for its content, then this one again")
endif()
