# The properties that Windows shows of our programs and libraries: icon, version and manifest, as resources in each
# file.
# SPDX-License-Identifier: GPL-3.0-or-later

# sivray_describe(<target> <description> [FILE <name>])
# Adds icon, version and manifest to the program or library. Does nothing for other systems. FILE is the file's name, if
# it differs from the target's.
function(sivray_describe target description)
  if(NOT WIN32)
    return()
  endif()
  cmake_parse_arguments(DESCRIBED "" "FILE" "" ${ARGN})
  get_target_property(type ${target} TYPE)
  # Windows finds the manifest of a program or library by these numbers.
  set(manifest_id 1)
  set(file_type VFT_APP)
  if(NOT type STREQUAL "EXECUTABLE")
    set(manifest_id 2)
    set(file_type VFT_DLL)
  endif()
  set(file_name "${DESCRIBED_FILE}")
  set(made "${PROJECT_BINARY_DIR}/windows-files")
  set(icon "${made}/sivray.ico")
  set(from "${PROJECT_SOURCE_DIR}/packaging/windows")
  set(manifest "${from}/Sivray.manifest")
  configure_file("${from}/Binary.rc.in" "${made}/${target}.rc" @ONLY)
  set_source_files_properties("${made}/${target}.rc" PROPERTIES OBJECT_DEPENDS "${icon};${manifest}")
  target_sources(${target} PRIVATE "${made}/${target}.rc")
  add_dependencies(${target} windows_icon)
endfunction()

# The icon's pictures, drawn by sivray-art from the release build for this system.
if(WIN32)
  enable_language(RC)
  find_package(Python3 REQUIRED COMPONENTS Interpreter)
  set(art "${SIVRAY_RELEASE_BUILD}/bin/sivray-art")
  set(made "${PROJECT_BINARY_DIR}/windows-files")
  set(make_icon "${PROJECT_SOURCE_DIR}/packaging/windows/make_icon.py")
  set(pictures)
  foreach(side 16 24 32 48 64 128 256)
    list(APPEND pictures "${made}/icons/${side}x${side}/apps/sivray.png")
  endforeach()
  add_custom_command(
    OUTPUT "${made}/sivray.ico"
    COMMAND "${art}" icons -o "${made}/icons"
    COMMAND Python3::Interpreter "${make_icon}" "${made}/sivray.ico" ${pictures}
    DEPENDS "${art}" "${make_icon}"
    COMMENT "Drawing the icon"
    VERBATIM)
  add_custom_target(windows_icon DEPENDS "${made}/sivray.ico")
endif()
