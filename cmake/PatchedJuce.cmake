# JUCE's window for X11 runs a timer of 60 to 100 Hz for as long as a window is open, painted or not: most of a percent of a
# core for a panel that nobody touches. Ours rests while nothing waits to be painted, and its listeners with it. The module's
# files stay where the system has them: a folder of links in the build takes their place, with one patched copy among them.

# sivray_rest_when_idle(): replaces the source of juce_gui_basics. Fails if the file to patch has another form than that of
# JUCE 7.0.5.
function(sivray_rest_when_idle)
  set(module "${JUCE_MODULES_DIR}/juce_gui_basics")
  set(folder "${PROJECT_BINARY_DIR}/juce/juce_gui_basics")
  set(patched "native/juce_linux_Windowing.cpp")
  foreach(subfolder "" "native/")
    file(MAKE_DIRECTORY "${folder}/${subfolder}")
    file(GLOB entries RELATIVE "${module}" "${module}/${subfolder}*")
    list(REMOVE_ITEM entries native "${patched}")
    foreach(entry ${entries})
      file(CREATE_LINK "${module}/${entry}" "${folder}/${entry}" SYMBOLIC)
    endforeach()
  endforeach()

  file(READ "${module}/${patched}" text)
  sivray_replace_once(text
    "regionsNeedingRepaint.add (area * peer.currentScaleFactor);"
    "regionsNeedingRepaint.add (area * peer.currentScaleFactor);\n\n            if (! peer.vBlankManager.isTimerRunning())\n                peer.updateVBlankTimer();")
  sivray_replace_once(text
    "        void performAnyPendingRepaintsNow()\n        {"
    "        bool isIdle() const\n        {\n            return regionsNeedingRepaint.isEmpty() && image.isNull()\n                && XWindowSystem::getInstance()->getNumPaintsPendingForWindow (peer.windowH) == 0;\n        }\n\n        void performAnyPendingRepaintsNow()\n        {")
  sivray_replace_once(text
    "            repainter->dispatchDeferredRepaints();"
    "            repainter->dispatchDeferredRepaints();\n\n        if (repainter == nullptr || repainter->isIdle())\n            vBlankManager.stopTimer();")
  set(before "")
  if(EXISTS "${folder}/${patched}")
    file(READ "${folder}/${patched}" before)
  endif()
  if(NOT before STREQUAL text)
    file(WRITE "${folder}/${patched}" "${text}")
  endif()

  get_target_property(sources juce_gui_basics INTERFACE_SOURCES)
  list(TRANSFORM sources REPLACE "^${module}/juce_gui_basics.cpp$" "${folder}/juce_gui_basics.cpp")
  set_target_properties(juce_gui_basics PROPERTIES INTERFACE_SOURCES "${sources}")
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
