# Precompiled headers of external libraries, which many files spend most of their compile time reading.
# SPDX-License-Identifier: GPL-3.0-or-later

# Clang stores the times of headers in its precompiled ones. Without them, the compiler cache finds the precompiled
# headers again in a new build of the same folder. Other checkouts need their own, because these also hold paths; those
# of GCC are shared by all checkouts.
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  list(APPEND CMAKE_CXX_COMPILE_OPTIONS_CREATE_PCH -Xclang -fno-pch-timestamp)
endif()

# sivray_precompile(<target> standard|juce|computing_juce|tests|sound_tests)
# Makes one of our own targets use precompiled headers: those of the standard library, optionally with those of JUCE's
# user interface or of GoogleTest. Targets share the compiled headers, so they must have the same flags. `tests` is
# compiled without optimization, which halves the compile time; in sanitizer builds so are `juce` and `sound_tests`.
# Code that computes much keeps its flags: `computing_juce`, and `sound_tests` without a sanitizer. Files must include
# the headers that they use nevertheless, which `./test --release` checks.
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
      # Programs have other compiler flags than libraries.
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
    # The flags of a library, because libraries share these headers.
    set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE OFF)
    target_compile_options(${target} PRIVATE -fPIC)
  endif()
  target_precompile_headers(${target} REUSE_FROM sivray_${headers}_headers)
endfunction()

# sivray_build_fast(<target>)
# For code that runs once or on a click: reduces the compile time by a quarter. For GCC only, as above.
function(sivray_build_fast target)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-O1>)
  endif()
endfunction()
