# JUCE 7.0.5 with changed lines. The installed modules are not touched: for each changed module, the folder
# <build>/juce/<module> of the build holds links to its files, and changed copies instead of the changed ones. Targets
# that include a changed header or wrapper put <build>/juce before JUCE's own modules in their include path.
# SPDX-License-Identifier: GPL-3.0-or-later

# sivray_patch_juce(): applies cmake/juce-7.0.5/*.patch, each of which gives its reason, and compiles the modules from
# the changed files. Fails if a patch does not fit exactly, as with another version of JUCE.
function(sivray_patch_juce)
  set(folder "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/juce-7.0.5")
  file(GLOB patches CONFIGURE_DEPENDS "${folder}/*.patch")
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${patches})
  find_program(SIVRAY_PATCH patch REQUIRED)
  set(changed "${PROJECT_BINARY_DIR}/juce-changed")
  file(REMOVE_RECURSE "${changed}")

  set(all_files)
  foreach(patch ${patches})
    file(STRINGS "${patch}" files REGEX "^[+][+][+] b/")
    list(TRANSFORM files REPLACE "^[+][+][+] b/" "")
    foreach(file ${files})
      if(NOT EXISTS "${JUCE_MODULES_DIR}/${file}")
        message(FATAL_ERROR "${patch} changes ${file}, which JUCE ${JUCE_VERSION} in ${JUCE_MODULES_DIR} lacks")
      endif()
      if(NOT EXISTS "${changed}/${file}")
        file(READ "${JUCE_MODULES_DIR}/${file}" text)  # Reads line ends of Windows as ours.
        file(WRITE "${changed}/${file}" "${text}")
      endif()
    endforeach()
    list(APPEND all_files ${files})
    execute_process(
      COMMAND "${SIVRAY_PATCH}" --fuzz=0 --force --no-backup-if-mismatch --reject-file=- --strip=1 "--input=${patch}"
      WORKING_DIRECTORY "${changed}"
      RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
      message(FATAL_ERROR "${patch} does not fit JUCE ${JUCE_VERSION} in ${JUCE_MODULES_DIR}:\n${output}")
    endif()
  endforeach()

  list(REMOVE_DUPLICATES all_files)
  if(WIN32)
    list(REMOVE_ITEM all_files juce_graphics/image_formats/juce_PNGLoader.cpp)  # Replaced below.
  endif()
  foreach(path ${all_files})
    file(READ "${changed}/${path}" text)
    sivray_change_juce_file("${path}" "${text}")
  endforeach()
  if(WIN32)
    # Debian's modules lack JUCE's own PNG code, and Debian's Windows compiler lacks libpng.
    file(READ "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/windows/juce_PNGLoader.cpp" text)
    sivray_change_juce_file(juce_graphics/image_formats/juce_PNGLoader.cpp "${text}")
  endif()
endfunction()

# sivray_leave_out_of_juce(<module> <file>...): compiles the module without these source files.
function(sivray_leave_out_of_juce module)
  set_property(GLOBAL APPEND PROPERTY SIVRAY_CHANGED_MODULES ${module})
  set_property(GLOBAL APPEND PROPERTY SIVRAY_LEFT_OUT_${module} ${ARGN})
endfunction()

# sivray_compile_changed_juce(): compiles the modules that have changed or omitted files from their folders in
# <build>/juce. The compiler reports an error if it includes the original of a changed file.
function(sivray_compile_changed_juce)
  get_property(modules GLOBAL PROPERTY SIVRAY_CHANGED_MODULES)
  list(REMOVE_DUPLICATES modules)
  foreach(module ${modules})
    get_target_property(sources ${module} INTERFACE_SOURCES)
    if(NOT sources)  # Wrappers: what includes them asks for the changes itself.
      continue()
    endif()
    set(from "${JUCE_MODULES_DIR}/${module}/${module}.cpp")
    if(NOT from IN_LIST sources)
      message(FATAL_ERROR "JUCE ${JUCE_VERSION} compiles ${module} from ${sources}, not from ${from}")
    endif()
    file(READ "${from}" text)
    get_property(files GLOBAL PROPERTY SIVRAY_LEFT_OUT_${module})
    foreach(file ${files})
      set(include "#include \"${file}\"")
      string(FIND "${text}" "${include}" found)
      if(found EQUAL -1)
        message(FATAL_ERROR "JUCE ${JUCE_VERSION} has no ${file} in ${module}, which cmake/TrimmedJuce.cmake leaves out")
      endif()
      string(REPLACE "${include}" "" text "${text}")
    endforeach()
    get_property(files GLOBAL PROPERTY SIVRAY_CHANGED_${module})
    foreach(file ${files})
      cmake_path(GET file STEM stem)
      set(include "#include \"${file}\"")
      string(REPLACE "${include}"
        "${include}\n#ifndef SIVRAY_CHANGED_${stem}\n #error \"Not the changed ${file}\"\n#endif" text "${text}")
    endforeach()
    sivray_place_juce_file(${module}/${module}.cpp "${text}")
    list(TRANSFORM sources REPLACE "^${from}$" "${PROJECT_BINARY_DIR}/juce/${module}/${module}.cpp")
    set_target_properties(${module} PROPERTIES INTERFACE_SOURCES "${sources}")
  endforeach()

  # Restores files that an earlier configuration changed and this one does not.
  get_property(placed GLOBAL PROPERTY SIVRAY_PLACED)
  file(GLOB_RECURSE files LIST_DIRECTORIES false RELATIVE "${PROJECT_BINARY_DIR}/juce" "${PROJECT_BINARY_DIR}/juce/*")
  foreach(file ${files})
    set(path "${PROJECT_BINARY_DIR}/juce/${file}")
    if(NOT IS_SYMLINK "${path}" AND NOT path IN_LIST placed)
      file(REMOVE "${path}")
      file(CREATE_LINK "${JUCE_MODULES_DIR}/${file}" "${path}" SYMBOLIC)
    endif()
  endforeach()
endfunction()

# sivray_change_juce_file(<path below the modules> <text>): compiles the module with `text` instead of the file. The
# text is preceded by a definition of SIVRAY_CHANGED_<stem of the file>, by which including files recognise it.
function(sivray_change_juce_file path text)
  string(REGEX MATCH "^([^/]+)/(.+)$" unused "${path}")
  set_property(GLOBAL APPEND PROPERTY SIVRAY_CHANGED_MODULES ${CMAKE_MATCH_1})
  set_property(GLOBAL APPEND PROPERTY SIVRAY_CHANGED_${CMAKE_MATCH_1} ${CMAKE_MATCH_2})
  cmake_path(GET path STEM stem)
  sivray_place_juce_file("${path}" "#define SIVRAY_CHANGED_${stem} 1\n${text}")
endfunction()

# sivray_place_juce_file(<path below the modules> <text>): writes the file below <build>/juce, unless it has that text
# already, and links to its neighbours.
function(sivray_place_juce_file path text)
  set(from "${JUCE_MODULES_DIR}")
  set(to "${PROJECT_BINARY_DIR}/juce")
  cmake_path(GET path PARENT_PATH folder)
  string(REPLACE "/" ";" names "${folder}")
  foreach(name ${names})
    string(APPEND from "/${name}")
    string(APPEND to "/${name}")
    if(IS_SYMLINK "${to}")  # From a file that was placed in another folder.
      file(REMOVE "${to}")
    endif()
    file(MAKE_DIRECTORY "${to}")
    file(GLOB entries RELATIVE "${from}" "${from}/*")
    foreach(entry ${entries})
      if(NOT EXISTS "${to}/${entry}")
        file(CREATE_LINK "${from}/${entry}" "${to}/${entry}" SYMBOLIC)
      endif()
    endforeach()
  endforeach()

  set_property(GLOBAL APPEND PROPERTY SIVRAY_PLACED "${PROJECT_BINARY_DIR}/juce/${path}")
  set(file "${PROJECT_BINARY_DIR}/juce/${path}")
  if(IS_SYMLINK "${file}")
    file(REMOVE "${file}")
  endif()
  set(before "")
  if(EXISTS "${file}")
    file(READ "${file}" before)
  endif()
  if(NOT before STREQUAL text)
    file(WRITE "${file}" "${text}")
  endif()
endfunction()
