# Two faults of JUCE 7.0.5, cured at build time. The modules stay where the system has them: in the build stands a folder of
# links to each one's files, with the patched copy in its place.
# SPDX-License-Identifier: GPL-3.0-or-later

# sivray_patch_juce(): replaces the sources of the patched modules. Fails if a file to patch has another form than that of
# JUCE 7.0.5.
function(sivray_patch_juce)
  # The window for X11 runs a timer of 60 to 100 Hz for as long as it is open, painted or not: most of a percent of a core for
  # a panel that nobody touches. Ours rests while nothing waits to be painted, and its listeners with it.
  file(READ "${JUCE_MODULES_DIR}/juce_gui_basics/native/juce_linux_Windowing.cpp" text)
  sivray_replace_once(text
    "regionsNeedingRepaint.add (area * peer.currentScaleFactor);"
    "regionsNeedingRepaint.add (area * peer.currentScaleFactor);\n\n            if (! peer.vBlankManager.isTimerRunning())\n                peer.updateVBlankTimer();")
  sivray_replace_once(text
    "        void performAnyPendingRepaintsNow()\n        {"
    "        bool isIdle() const\n        {\n            return regionsNeedingRepaint.isEmpty() && image.isNull()\n                && XWindowSystem::getInstance()->getNumPaintsPendingForWindow (peer.windowH) == 0;\n        }\n\n        void performAnyPendingRepaintsNow()\n        {")
  sivray_replace_once(text
    "            repainter->dispatchDeferredRepaints();"
    "            repainter->dispatchDeferredRepaints();\n\n        if (repainter == nullptr || repainter->isIdle())\n            vBlankManager.stopTimer();")
  sivray_replace_file(juce_gui_basics native juce_linux_Windowing.cpp "${text}")

  # Clipping one line of a shape copies its edges to a place that may overlap them.
  file(READ "${JUCE_MODULES_DIR}/juce_graphics/geometry/juce_EdgeTable.cpp" text)
  sivray_replace_once(text "memcpy (temp, src1," "memmove (temp, src1,")
  sivray_replace_file(juce_graphics geometry juce_EdgeTable.cpp "${text}")
endfunction()

# sivray_replace_file(<module> <folder> <file> <text>): compiles the module with `text` in place of the file.
function(sivray_replace_file module folder file text)
  set(from "${JUCE_MODULES_DIR}/${module}")
  set(to "${PROJECT_BINARY_DIR}/juce/${module}")
  file(MAKE_DIRECTORY "${to}/${folder}")
  file(GLOB entries RELATIVE "${from}" "${from}/*" "${from}/${folder}/*")
  list(REMOVE_ITEM entries "${folder}" "${folder}/${file}")
  foreach(entry ${entries})
    file(CREATE_LINK "${from}/${entry}" "${to}/${entry}" SYMBOLIC)
  endforeach()
  set(before "")
  if(EXISTS "${to}/${folder}/${file}")
    file(READ "${to}/${folder}/${file}" before)
  endif()
  if(NOT before STREQUAL text)
    file(WRITE "${to}/${folder}/${file}" "${text}")
  endif()

  get_target_property(sources ${module} INTERFACE_SOURCES)
  list(TRANSFORM sources REPLACE "^${from}/${module}.cpp$" "${to}/${module}.cpp")
  set_target_properties(${module} PROPERTIES INTERFACE_SOURCES "${sources}")
endfunction()

# Replaces `from` by `to` in the text that the variable `name` holds; `from` must stand there exactly once.
function(sivray_replace_once name from to)
  string(FIND "${${name}}" "${from}" first)
  string(FIND "${${name}}" "${from}" last REVERSE)
  if(first EQUAL -1 OR NOT first EQUAL last)
    message(FATAL_ERROR "This JUCE has another form than 7.0.5; see cmake/PatchedJuce.cmake. Not found once: ${from}")
  endif()
  string(REPLACE "${from}" "${to}" result "${${name}}")
  set(${name} "${result}" PARENT_SCOPE)
endfunction()
