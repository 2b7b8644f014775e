# External libraries: the headers of msgpack-c and picojson, and JUCE, whose modules are compiled once into one library for
# the editor and the tools.
# SPDX-License-Identifier: GPL-3.0-or-later

# sivray_headers(<name> <entry> [<header or folder>...])
# Creates the interface library <name> for headers in the system's include folder. A cross compiler must not search that
# folder, which belongs to the build system, so it gets a folder of links to these headers only.
function(sivray_headers name entry)
  find_path(${name}_INCLUDE_DIR ${entry} PATHS /usr/include REQUIRED)
  set(folder "${${name}_INCLUDE_DIR}")
  if(CMAKE_CROSSCOMPILING)
    set(folder "${PROJECT_BINARY_DIR}/headers")
    file(MAKE_DIRECTORY "${folder}")
    foreach(header ${entry} ${ARGN})
      cmake_path(GET header PARENT_PATH parent)
      file(MAKE_DIRECTORY "${folder}/${parent}")
      file(CREATE_LINK "${${name}_INCLUDE_DIR}/${header}" "${folder}/${header}" SYMBOLIC)
    endforeach()
  endif()
  add_library(${name} INTERFACE)
  target_include_directories(${name} SYSTEM INTERFACE "${folder}")
endfunction()

sivray_headers(picojson picojson.h)
sivray_headers(msgpack msgpack.hpp msgpack)
target_compile_definitions(msgpack INTERFACE MSGPACK_DEFAULT_API_VERSION=3 MSGPACK_NO_BOOST)
# x86 vector instructions, implemented with those of other processors.
if(NOT SIVRAY_FOR_X86)
  sivray_headers(simde simde)
endif()

if(SIVRAY_BUILD_TOOLS OR SIVRAY_BUILD_EDITOR)
  # Modules are source files, the same for all systems, but a cross compiler does not search Debian's folder for them.
  # If the package is not installed, scripts/setup.sh has unpacked it.
  set(folder "usr/lib/${CMAKE_HOST_SYSTEM_PROCESSOR}-linux-gnu/cmake")
  find_package(JUCE CONFIG REQUIRED PATHS "/${folder}" "${PROJECT_SOURCE_DIR}/build/unpacked/${folder}")
  if(WIN32)
    sivray_headers(stb_image stb/stb_image.h)
  else()
    find_package(PNG REQUIRED)
    find_package(Freetype REQUIRED)
    find_package(X11 REQUIRED)
    find_package(ALSA REQUIRED)
    find_package(PkgConfig REQUIRED)
  endif()

  include(PatchedJuce)
  include(TrimmedJuce)
  sivray_patch_juce()
  sivray_trim_juce()
  sivray_compile_changed_juce()

  add_library(sivray_juce_modules STATIC)
  set_target_properties(sivray_juce_modules PROPERTIES OUTPUT_NAME sivray_juce UNITY_BUILD OFF)
  target_link_libraries(sivray_juce_modules PRIVATE juce::juce_audio_formats juce::juce_gui_basics)
  if(WIN32)
    target_link_libraries(sivray_juce_modules PRIVATE stb_image)
  else()
    target_include_directories(sivray_juce_modules PRIVATE ${X11_INCLUDE_DIR})
  endif()
  target_compile_definitions(sivray_juce_modules
    PUBLIC
      JUCE_STANDALONE_APPLICATION=0
      JUCE_MODAL_LOOPS_PERMITTED=1
      JUCE_DISPLAY_SPLASH_SCREEN=0
      JUCE_USE_CURL=0
      JUCE_WEB_BROWSER=0
      JUCE_USE_MP3AUDIOFORMAT=0
      JUCE_USE_OGGVORBIS=0
      JUCE_USE_FLAC=0
      $<$<PLATFORM_ID:Windows>:JUCE_USE_WINDOWS_MEDIA_FORMAT=0>
      $<IF:$<CONFIG:Debug>,DEBUG=1,NDEBUG=1>)
  # JUCE is not performance-critical: it is compiled for a short build, in sections, so that the linker can drop unused
  # functions.
  set(juce_options -O1 -g0 "$<$<PLATFORM_ID:Linux>:-ffunction-sections;-fdata-sections>")
  target_compile_options(sivray_juce_modules PRIVATE ${juce_options})
  # Opening a panel spends most of its time on painting and decoding pictures, so this module is optimized.
  get_target_property(sources juce::juce_graphics INTERFACE_SOURCES)
  list(FILTER sources INCLUDE REGEX "/juce_graphics\\.cpp$")
  set_source_files_properties(${sources} PROPERTIES COMPILE_OPTIONS -O2)
  if(WIN32)
    # It uses the date of its compilation, which would make each build differ.
    target_compile_options(sivray_juce_modules PRIVATE -Wno-builtin-macro-redefined
      "-D__DATE__=\"Jan 1 2020\"" "-D__TIME__=\"00:00:00\"")
  endif()

  # The library that our own code links: the compiled modules with their headers and definitions. A sanitizer build
  # links the modules of the release build, since only our own code is checked.
  add_library(sivray_juce INTERFACE)
  target_compile_definitions(sivray_juce INTERFACE $<TARGET_PROPERTY:sivray_juce_modules,COMPILE_DEFINITIONS>)
  target_include_directories(sivray_juce SYSTEM INTERFACE $<TARGET_PROPERTY:sivray_juce_modules,INCLUDE_DIRECTORIES>)
  # Debian's JUCE uses the system's libraries for images and fonts, and loads those of X11 when it opens a window. On
  # Windows it uses the system's functions, and the compiler's zlib.
  set(juce_libraries PNG::PNG Freetype::Freetype ${CMAKE_DL_LIBS} Threads::Threads rt
    $<$<CXX_COMPILER_ID:Clang>:atomic>)
  if(WIN32)
    set(juce_libraries uuid wsock32 wininet version ole32 ws2_32 oleaut32 imm32 comdlg32 shlwapi rpcrt4 winmm z)
  endif()
  if(SIVRAY_FROM_RELEASE AND NOT CMAKE_CROSSCOMPILING)
    set_target_properties(sivray_juce_modules PROPERTIES EXCLUDE_FROM_ALL ON)
    target_link_libraries(sivray_juce INTERFACE "${SIVRAY_RELEASE_BUILD}/libsivray_juce.a" ${juce_libraries})
  else()
    target_link_libraries(sivray_juce INTERFACE sivray_juce_modules ${juce_libraries})
  endif()

  # The additional modules of all forms but VST 2, compiled once for all of them. Targets that use sound devices link
  # ALSA themselves.
  add_library(sivray_juce_client_modules STATIC EXCLUDE_FROM_ALL)
  set_target_properties(sivray_juce_client_modules PROPERTIES OUTPUT_NAME sivray_juce_client UNITY_BUILD OFF)
  foreach(module juce_audio_processors juce_audio_devices)
    get_target_property(sources juce::${module} INTERFACE_SOURCES)
    list(FILTER sources INCLUDE REGEX "/${module}/[a-z0-9_]*\\.cpp$")
    target_sources(sivray_juce_client_modules PRIVATE ${sources})
    list(APPEND client_modules JUCE_MODULE_AVAILABLE_${module}=1)
  endforeach()
  target_link_libraries(sivray_juce_client_modules PRIVATE sivray_juce)
  if(NOT WIN32)
    target_include_directories(sivray_juce_client_modules PRIVATE ${X11_INCLUDE_DIR})
  endif()
  target_compile_definitions(sivray_juce_client_modules PUBLIC ${client_modules}
    JUCE_ALSA=1 JUCE_JACK=1 JUCE_JACK_CLIENT_NAME="Sivray" JUCE_ALSA_MIDI_NAME="Sivray" JUCE_PLUGINHOST_VST=0 JUCE_VST3_CAN_REPLACE_VST2=0)
  target_compile_options(sivray_juce_client_modules PRIVATE ${juce_options})

  add_library(sivray_juce_client INTERFACE)
  set(sdks "${JUCE_MODULES_DIR}/juce_audio_processors/format_types")
  target_include_directories(sivray_juce_client SYSTEM INTERFACE "${sdks}/VST3_SDK" "${sdks}/LV2_SDK" "${sdks}/LV2_SDK/lv2")
  target_compile_definitions(sivray_juce_client INTERFACE
    $<TARGET_PROPERTY:sivray_juce_client_modules,INTERFACE_COMPILE_DEFINITIONS>)
  if(SIVRAY_FROM_RELEASE AND NOT CMAKE_CROSSCOMPILING)
    target_link_libraries(sivray_juce_client INTERFACE "${SIVRAY_RELEASE_BUILD}/libsivray_juce_client.a" sivray_juce)
  else()
    target_link_libraries(sivray_juce_client INTERFACE sivray_juce_client_modules sivray_juce)
  endif()
endif()

if(SIVRAY_BUILD_TOOLS)
  # JUCE's hosts of VST 3 and LV2, for the tools: a separate library, so that the plug-in contains none of them. It must
  # precede the plug-in's modules in the link order, so that its build of juce_audio_processors is used instead of
  # theirs.
  set(lv2 "${JUCE_MODULES_DIR}/juce_audio_processors/format_types/LV2_SDK")
  add_library(sivray_juce_hosts_modules STATIC
    "${PROJECT_BINARY_DIR}/juce/juce_audio_processors/juce_audio_processors.cpp"
    "${JUCE_MODULES_DIR}/juce_audio_processors/juce_audio_processors_lv2_libs.cpp"
    "${PROJECT_BINARY_DIR}/juce/juce_gui_extra/juce_gui_extra.cpp")
  set_target_properties(sivray_juce_hosts_modules PROPERTIES OUTPUT_NAME sivray_juce_hosts UNITY_BUILD OFF)
  target_link_libraries(sivray_juce_hosts_modules PUBLIC sivray_juce)
  target_include_directories(sivray_juce_hosts_modules
    PRIVATE ${X11_INCLUDE_DIR} "${lv2}/../VST3_SDK" "${lv2}" "${lv2}/lv2" "${lv2}/serd" "${lv2}/sord" "${lv2}/sord/src" "${lv2}/sratom" "${lv2}/lilv"
      "${lv2}/lilv/src")
  target_compile_definitions(sivray_juce_hosts_modules
    PUBLIC
      JUCE_PLUGINHOST_VST3=1
      JUCE_PLUGINHOST_LV2=1
      JUCE_MODULE_AVAILABLE_juce_audio_processors=1
      JUCE_MODULE_AVAILABLE_juce_gui_extra=1)
  target_compile_options(sivray_juce_hosts_modules PRIVATE -O1 -g0 -w)

  add_library(sivray_juce_hosts INTERFACE)
  target_compile_definitions(sivray_juce_hosts
    INTERFACE $<TARGET_PROPERTY:sivray_juce_hosts_modules,INTERFACE_COMPILE_DEFINITIONS>)
  if(SIVRAY_FROM_RELEASE)
    set_target_properties(sivray_juce_hosts_modules PROPERTIES EXCLUDE_FROM_ALL ON)
    target_link_libraries(sivray_juce_hosts INTERFACE "${SIVRAY_RELEASE_BUILD}/libsivray_juce_hosts.a" sivray_juce)
  else()
    target_link_libraries(sivray_juce_hosts INTERFACE sivray_juce_hosts_modules)
  endif()
endif()

if(SIVRAY_BUILD_TESTS)
  if(CMAKE_CROSSCOMPILING)
    set(INSTALL_GTEST OFF)
    add_subdirectory(/usr/src/googletest "${PROJECT_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL SYSTEM)
  else()
    find_package(GTest CONFIG REQUIRED)
  endif()
endif()
if(SIVRAY_BUILD_BENCHMARKS)
  find_package(benchmark CONFIG REQUIRED)
endif()
