# Functions that build a room as a library, and the compiler flags of all our own code.
# SPDX-License-Identifier: GPL-3.0-or-later
#
# A room sees only the headers of the rooms that it links: each room exports an include path that contains only a link
# to its own folder, so including any other room does not compile.

option(SIVRAY_BUILD_TOOLS "Build the programs that people run; the tests need them" ON)
option(SIVRAY_BUILD_EDITOR "Build the editor and link it into the library (needs JUCE)" ON)
option(SIVRAY_BUILD_TESTS "Build the test programs" ON)
option(SIVRAY_BUILD_BENCHMARKS "Build the benchmark programs" OFF)
option(SIVRAY_FROM_RELEASE
  "Use the pictures, the content and, in a build for this system, the compiled JUCE of build/release, which must be built" OFF)
# Of the sanitizer builds, only one has to build the forms.
if(SIVRAY_FROM_RELEASE)
  set(SIVRAY_BUILD_FORMS OFF CACHE BOOL "Build the VST 3 and LV2 plug-ins")
else()
  option(SIVRAY_BUILD_FORMS "Build the VST 3 and LV2 plug-ins" ON)
endif()
option(SIVRAY_BUILD_FUZZERS "Build the fuzz targets (Clang only)" OFF)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")

# GCC collects garbage when its memory has doubled, from 128 MB on, which files with JUCE's headers exceed at once. From
# 512 MB on it compiles them 10 % faster.
add_compile_options($<$<COMPILE_LANG_AND_ID:CXX,GNU>:--param=ggc-min-heapsize=524288>)

set(SIVRAY_RELEASE_BUILD "${PROJECT_SOURCE_DIR}/build/release")
if(SIVRAY_FROM_RELEASE AND NOT EXISTS "${SIVRAY_RELEASE_BUILD}/libsivray_juce.a")
  message(FATAL_ERROR "This build uses parts of build/release: build that first")
endif()

# Coverage guides the fuzzers through the rooms that read bytes from files and hosts. The other rooms, and code outside
# of the rooms, are built without it, which makes them compile and run faster.
set(SIVRAY_UNGUIDED)
if(SIVRAY_BUILD_FUZZERS)
  set(SIVRAY_UNGUIDED -fno-sanitize-coverage=trace-cmp,inline-8bit-counters,pc-table,indirect-calls,stack-depth)
endif()

find_package(Threads REQUIRED)

# Other processors use only the vector code for 128-bit registers. The Windows cross compiler targets x86.
set(SIVRAY_FOR_X86 OFF)
if(WIN32 OR CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64|i[3-6]86)$")
  set(SIVRAY_FOR_X86 ON)
endif()

# Warnings and floating-point rules of our own code. No contraction, so that each single-precision operation is rounded
# separately and results are equal on every machine and with every compiler.
add_library(sivray_options INTERFACE)
target_compile_options(sivray_options INTERFACE
  -Wall -Wextra -Wshadow -Wconversion -Werror -ffp-contract=off)
if(WIN32)
  # On 64-bit Windows GCC aligns the stack to 16 bytes only, also for its 32-byte vectors: use unaligned moves.
  target_compile_options(sivray_options INTERFACE -Wa,-muse-unaligned-vector-move)
endif()
target_link_libraries(sivray_options INTERFACE Threads::Threads)
# Tests and checkers reduce their work in builds in which each step takes several times as long.
if(CMAKE_CXX_FLAGS MATCHES "-fsanitize")
  target_compile_definitions(sivray_options INTERFACE SIVRAY_SANITIZED=1)
elseif(CMAKE_CROSSCOMPILING AND NOT WIN32)
  target_compile_definitions(sivray_options INTERFACE SIVRAY_EMULATED=1)
endif()

# sivray_sources(<variable> <folder> [<sub-folders>...])
# Lists the source files in the folder itself and in the named sub-folders. Files for x86 instruction sets are omitted
# for other processors. A unity build merges files of one folder only.
function(sivray_sources variable folder)
  file(GLOB sources CONFIGURE_DEPENDS "${folder}/*.cpp")
  set_source_files_properties(${sources} PROPERTIES UNITY_GROUP own)
  foreach(sub_folder ${ARGN})
    file(GLOB more CONFIGURE_DEPENDS "${folder}/${sub_folder}/*.cpp")
    set_source_files_properties(${more} PROPERTIES UNITY_GROUP "${sub_folder}")
    list(APPEND sources ${more})
  endforeach()
  if(NOT SIVRAY_FOR_X86)
    list(FILTER sources EXCLUDE REGEX "(Sse41|Avx2)(Test)?\\.cpp$")
  endif()
  set(${variable} "${sources}" PARENT_SCOPE)
endfunction()

# sivray_room(<name> FOLDER <folder below src> [FOLDERS <sub-folders>...] [FILE_BY_FILE] [COLD] [READS_BYTES]
#   [LINKS <rooms>...] [PRIVATE <rooms>...] [EXTERNAL <libraries>...])
# Builds the library sivray_<name> from all sources in the folder itself and in FOLDERS. The order is from the ground
# up: each folder may include those named before it, and the folder itself all of them. LINKS are the rooms that the
# room's headers include, PRIVATE those that only its sources include; scripts/check_links.py compares this with the
# code. FILE_BY_FILE: no file is merged with others in a unity build. COLD: no code in it runs often. READS_BYTES: its
# coverage guides the fuzzers.
function(sivray_room name)
  cmake_parse_arguments(ROOM "FILE_BY_FILE;COLD;READS_BYTES" "FOLDER" "FOLDERS;LINKS;PRIVATE;EXTERNAL" ${ARGN})
  set(folder "${PROJECT_SOURCE_DIR}/src/${ROOM_FOLDER}")
  set(root "${PROJECT_BINARY_DIR}/rooms/${name}")
  cmake_path(GET ROOM_FOLDER PARENT_PATH parent)
  file(MAKE_DIRECTORY "${root}/${parent}")
  file(CREATE_LINK "${folder}" "${root}/${ROOM_FOLDER}" SYMBOLIC)

  sivray_sources(sources "${folder}" ${ROOM_FOLDERS})
  list(TRANSFORM ROOM_LINKS PREPEND sivray_)
  list(TRANSFORM ROOM_PRIVATE PREPEND sivray_)
  if(sources)
    add_library(sivray_${name} STATIC ${sources})
    set(scope PUBLIC)
    target_link_libraries(sivray_${name} PRIVATE sivray_options ${ROOM_PRIVATE})
    # Functions marked for the audio thread must not call functions that may block. Tests are exempt, because their
    # listeners record.
    target_compile_options(sivray_${name} PRIVATE
      $<$<AND:$<CXX_COMPILER_ID:Clang>,$<VERSION_GREATER_EQUAL:$<CXX_COMPILER_VERSION>,20>>:-Wfunction-effects>)
  else()
    add_library(sivray_${name} INTERFACE)
    set(scope INTERFACE)
  endif()
  target_include_directories(sivray_${name} ${scope} "${root}")
  target_link_libraries(sivray_${name} ${scope} ${ROOM_LINKS} ${ROOM_EXTERNAL})
  if(ROOM_FOLDERS)
    set_target_properties(sivray_${name} PROPERTIES UNITY_BUILD_MODE GROUP)
  endif()
  if(ROOM_FILE_BY_FILE AND ROOM_FOLDERS
      AND (CMAKE_CXX_FLAGS MATCHES "-fsanitize" OR (CMAKE_CROSSCOMPILING AND NOT WIN32)))
    # Builds for tests only need not run fast, so their files are merged to compile faster. Except these, whose
    # instruction sets differ or whose names clash.
    set(apart ${sources})
    list(FILTER apart INCLUDE REGEX "(Baseline|Sse2|Sse41|Avx2|/SivrayFxChorusFlanger|/VoiceKernel)\\.cpp$")
    set_source_files_properties(${apart} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
  elseif(ROOM_FILE_BY_FILE)
    set_target_properties(sivray_${name} PROPERTIES UNITY_BUILD OFF)
  elseif(WIN32)
    # Files with code for Windows are compiled separately, so that the macros of its headers affect no other file and
    # clang-tidy finds their commands.
    foreach(source ${sources})
      file(STRINGS "${source}" windows_lines REGEX "_WIN32" LIMIT_COUNT 1)
      if(windows_lines)
        set_source_files_properties("${source}" PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
      endif()
    endforeach()
  endif()
  if(sources AND NOT ROOM_READS_BYTES)
    target_compile_options(sivray_${name} PRIVATE ${SIVRAY_UNGUIDED})
  endif()
  if(sources AND ROOM_COLD)
    sivray_build_fast(sivray_${name})
  endif()
  if(sources AND ROOM_EXTERNAL MATCHES sivray_juce)
    sivray_precompile(sivray_${name} juce)
  elseif(sources)
    sivray_precompile(sivray_${name} standard)
  endif()
endfunction()

# sivray_link_compiler_libraries(<target>)
# Links the compiler's libraries, such as libstdc++, statically into the Linux binaries that users get. These then run
# on systems with older versions, and share no library state with a host. Clang's builds are for sanitizers, which need
# the shared libraries.
function(sivray_link_compiler_libraries target)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT WIN32)
    target_link_options(${target} PRIVATE -static-libstdc++ -static-libgcc)
    get_target_property(type ${target} TYPE)
    if(type STREQUAL "MODULE_LIBRARY")
      target_sources(${target} PRIVATE "${PROJECT_SOURCE_DIR}/src/host/runtime/ExceptionPool.cpp")
    endif()
  endif()
endfunction()

# sivray_link_product(<target>)
# Links what users get, without unused functions. On Windows the compiler's libraries are linked statically, so that the file needs
# only the DLLs of every Windows. Its header has no time stamp there, so the same sources give the same bytes.
function(sivray_link_product target)
  if(WIN32)
    target_link_options(${target} PRIVATE -static -s -Wl,--no-insert-timestamp)
  else()
    target_link_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wl,--gc-sections>)
    sivray_link_compiler_libraries(${target})
  endif()
endfunction()

# sivray_module(<name> FOLDER <folder below src> LINKS <rooms>... [BUNDLE <folder>])
# Builds the library that hosts load, in a folder of its own name that also holds its content, or in the folder BUNDLE
# of the build. It exports only the names in the folder's exports.map, so that its symbols cannot clash with those of a
# host or another plug-in, and so that no unique symbol keeps it in memory after the host has unloaded it.
function(sivray_module name)
  cmake_parse_arguments(MODULE "" "FOLDER;BUNDLE" "LINKS" ${ARGN})
  if(NOT MODULE_BUNDLE)
    set(MODULE_BUNDLE "${name}")
  endif()
  set(folder "${PROJECT_SOURCE_DIR}/src/${MODULE_FOLDER}")
  file(GLOB sources CONFIGURE_DEPENDS "${folder}/*.cpp")
  list(TRANSFORM MODULE_LINKS PREPEND sivray_)
  add_library(${name} MODULE ${sources})
  target_link_libraries(${name} PRIVATE sivray_options ${MODULE_LINKS})
  set_target_properties(${name} PROPERTIES PREFIX "" OUTPUT_NAME Sivray
    LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/${MODULE_BUNDLE}")
  if(WIN32)
    sivray_link_product(${name})  # The code marks the exports.
  else()
    # An undefined symbol is an error, except with Clang's sanitizers, whose symbols are in the host program. Calls
    # between our own functions are bound inside the library, even if a host exports the same names. Unused functions
    # are dropped, a third of JUCE's code.
    target_link_options(${name} PRIVATE "-Wl,--version-script=${folder}/exports.map" -Wl,-Bsymbolic
      "$<$<CXX_COMPILER_ID:GNU>:-Wl,-z,defs;-Wl,--gc-sections>")
    sivray_link_compiler_libraries(${name})
    set_target_properties(${name} PROPERTIES LINK_DEPENDS "${folder}/exports.map")
  endif()
endfunction()

# sivray_program(<name> FOLDER <folder below src> LINKS <rooms>...)
# Builds the program that people start, in the same folder as the library that hosts load, beside their common content.
function(sivray_program name)
  cmake_parse_arguments(PROGRAM "" "FOLDER" "LINKS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/src/${PROGRAM_FOLDER}/*.cpp")
  list(TRANSFORM PROGRAM_LINKS PREPEND sivray_)
  add_executable(${name} WIN32 ${sources})
  target_link_libraries(${name} PRIVATE sivray_options ${PROGRAM_LINKS})
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/Sivray")
  sivray_precompile(${name} juce)
  sivray_link_product(${name})
endfunction()

# sivray_test(<name> [FOLDERS <sub-folders>...] [LINKS <libraries>...] [COMPUTES])
# Builds the program test_<name> from all sources in the calling folder's sub-folder <name> and in FOLDERS below that.
# COMPUTES: the test's own code handles so many samples that, without a sanitizer, unoptimized code would cost more at
# run time than it saves in compiling. Of the tests whose code computes on one thread, the thread sanitizer build
# compiles only the sources and runs only the tests with "Thread" in their names.
function(sivray_test name)
  cmake_parse_arguments(TEST "COMPUTES" "" "FOLDERS;LINKS" ${ARGN})
  sivray_sources(sources "${CMAKE_CURRENT_SOURCE_DIR}/${name}" ${TEST_FOLDERS})
  if(NOT sources)
    return()
  endif()
  if(TEST_COMPUTES AND CMAKE_CXX_FLAGS MATCHES "-fsanitize=thread")
    set(others)
    foreach(source ${sources})
      file(STRINGS "${source}" tests REGEX "^TEST" LIMIT_COUNT 1)
      file(STRINGS "${source}" thread_tests REGEX "^TEST.*Thread" LIMIT_COUNT 1)
      if(tests AND NOT thread_tests)
        list(APPEND others "${source}")
      endif()
    endforeach()
    if(NOT others STREQUAL sources)
      list(REMOVE_ITEM sources ${others})
    endif()
  endif()
  add_executable(test_${name} ${sources})
  if(TEST_FOLDERS)
    set_target_properties(test_${name} PROPERTIES UNITY_BUILD_MODE GROUP)
  endif()
  target_link_libraries(test_${name} PRIVATE sivray_options ${TEST_LINKS} GTest::gtest_main GTest::gmock)
  target_include_directories(test_${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
  target_compile_options(test_${name} PRIVATE ${SIVRAY_UNGUIDED})
  if(TEST_COMPUTES)
    sivray_precompile(test_${name} sound_tests)
  else()
    sivray_precompile(test_${name} tests)
  endif()
  add_test(NAME ${name} COMMAND test_${name})
  set(seconds 600)
  if(CMAKE_CXX_FLAGS MATCHES "-fsanitize")
    set(seconds 1500)  # Which take ten times as long, beside others.
  endif()
  set_tests_properties(${name} PROPERTIES TIMEOUT ${seconds})
endfunction()
