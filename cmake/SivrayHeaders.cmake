# Precompiled headers of libraries that are not ours: reading them takes most of the time of many files.
# SPDX-License-Identifier: GPL-3.0-or-later

# Clang writes the times of headers into what it precompiles. Without them the compiler cache knows it again in a new build of
# the same folder. Another checkout compiles its own, since paths are in it too; what GCC precompiles is shared by all checkouts.
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  list(APPEND CMAKE_CXX_COMPILE_OPTIONS_CREATE_PCH -Xclang -fno-pch-timestamp)
endif()

# sivray_precompile(<target> standard|juce|computing_juce|tests|sound_tests)
# Lets a target of our own read headers precompiled: those of the standard library, those of JUCE's user interface with them,
# or those of GoogleTest with them. All targets share what was compiled once, so they must have the same flags. What is built with
# `tests` is not optimized, which takes the compiler half of the time, and under the sanitizers neither is what is built with `juce`
# and `sound_tests`. What computes much keeps its flags: `computing_juce`, and `sound_tests` without a sanitizer. A file
# includes what it uses nevertheless, as `./test --release` shows.
function(sivray_precompile target headers)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "^(GNU|Clang)$")
    return()
  endif()
  set(options)
  if(CMAKE_CXX_FLAGS MATCHES "-fsanitize=")
    if(headers STREQUAL sound_tests)
      set(headers tests)
    endif()
    if(headers MATCHES "^(juce|tests)$")
      set(options $<$<COMPILE_LANGUAGE:CXX>:-O0>)
    endif()
  elseif(headers STREQUAL computing_juce)
    set(headers juce)
  elseif(headers STREQUAL tests)
    set(options $<$<COMPILE_LANGUAGE:CXX>:-O0>)
  endif()
  target_compile_options(${target} PRIVATE ${options})
  if(NOT TARGET sivray_${headers}_headers)
    set(files <algorithm> <array> <cmath> <functional> <map> <memory> <optional> <span> <string> <vector>)
    set(libraries sivray_options)
    if(headers MATCHES juce)
      list(APPEND files <juce_gui_basics/juce_gui_basics.h>)
      list(APPEND libraries sivray_juce)
    elseif(headers MATCHES tests)
      list(APPEND files <gmock/gmock.h> <gtest/gtest.h>)
      list(APPEND libraries GTest::gtest_main GTest::gmock)
    endif()
    set(source "${PROJECT_BINARY_DIR}/precompiled/${headers}.cpp")
    if(headers MATCHES tests)
      # Programs are compiled with other flags than libraries.
      file(WRITE "${source}" "int main() {}\n")
      add_executable(sivray_${headers}_headers "${source}")
    else()
      file(WRITE "${source}" "")
      add_library(sivray_${headers}_headers OBJECT "${source}")
    endif()
    target_compile_options(sivray_${headers}_headers PRIVATE ${options})
    target_link_libraries(sivray_${headers}_headers PRIVATE ${libraries})
    target_precompile_headers(sivray_${headers}_headers PRIVATE ${files})
    if(CMAKE_CXX_COMPILER_LAUNCHER)
      set_target_properties(sivray_${headers}_headers PROPERTIES
        CXX_COMPILER_LAUNCHER "${PROJECT_SOURCE_DIR}/cmake/sum_output.sh;${CMAKE_CXX_COMPILER_LAUNCHER}")
    endif()
  endif()
  get_target_property(type ${target} TYPE)
  if(type STREQUAL "EXECUTABLE" AND NOT headers MATCHES tests AND NOT WIN32)
    # A library's flags, since it shares with libraries.
    set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE OFF)
    target_compile_options(${target} PRIVATE -fPIC)
  endif()
  target_precompile_headers(${target} REUSE_FROM sivray_${headers}_headers)
endfunction()

# sivray_build_fast(<target>)
# For code that runs once or at a click: compiled in three quarters of the time. For GCC alone, as above.
function(sivray_build_fast target)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-O1>)
  endif()
endfunction()
