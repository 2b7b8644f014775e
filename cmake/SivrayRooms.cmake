# How a room becomes a library, and the flags that all of our own code is built with.
#
# A room sees the headers of the rooms that it links and no others: each room exports an include root that
# holds nothing but a link to its own folder, so that an include against the order of the house fails to compile.

option(SIVRAY_BUILD_TOOLS "Build the programs that people run; the tests need them" ON)
option(SIVRAY_BUILD_EDITOR "Build the editor and link it into the library (needs JUCE)" ON)
option(SIVRAY_BUILD_TESTS "Build the test programs" ON)
option(SIVRAY_BUILD_BENCHMARKS "Build the benchmark programs" OFF)
option(SIVRAY_BUILD_FUZZERS "Build the fuzz targets (Clang only)" OFF)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")

find_package(Threads REQUIRED)

# Warnings and floating-point rules of our own code. No contraction: single-precision steps round one by one,
# the same on every machine and compiler.
add_library(sivray_options INTERFACE)
target_compile_options(sivray_options INTERFACE
  -Wall -Wextra -Wshadow -Wconversion -Werror -ffp-contract=off)
if(WIN32)
  # On 64-bit Windows GCC aligns the stack to 16 bytes only, whatever its 32-byte vectors ask: they move unaligned.
  target_compile_options(sivray_options INTERFACE -Wa,-muse-unaligned-vector-move)
endif()
target_link_libraries(sivray_options INTERFACE Threads::Threads)

# sivray_room(<name> FOLDER <folder below src> [LINKS <rooms>...] [PRIVATE <rooms>...] [EXTERNAL <libraries>...])
# Makes the library sivray_<name> of all sources in the folder itself (not in its sub-folders). LINKS are the rooms that
# its headers include, PRIVATE those that only its sources include; scripts/check_links.py compares both with the code.
function(sivray_room name)
  cmake_parse_arguments(ROOM "" "FOLDER" "LINKS;PRIVATE;EXTERNAL" ${ARGN})
  set(folder "${PROJECT_SOURCE_DIR}/src/${ROOM_FOLDER}")
  set(root "${PROJECT_BINARY_DIR}/rooms/${name}")
  cmake_path(GET ROOM_FOLDER PARENT_PATH parent)
  file(MAKE_DIRECTORY "${root}/${parent}")
  file(CREATE_LINK "${folder}" "${root}/${ROOM_FOLDER}" SYMBOLIC)

  file(GLOB sources CONFIGURE_DEPENDS "${folder}/*.cpp")
  file(GLOB headers CONFIGURE_DEPENDS "${folder}/*.h")
  list(TRANSFORM ROOM_LINKS PREPEND sivray_)
  list(TRANSFORM ROOM_PRIVATE PREPEND sivray_)
  if(sources)
    add_library(sivray_${name} STATIC ${sources} ${headers})
    set(scope PUBLIC)
    target_link_libraries(sivray_${name} PRIVATE sivray_options ${ROOM_PRIVATE})
    # What bears the audio thread's mark calls nothing that may wait. Tests are free to: their listeners write records.
    target_compile_options(sivray_${name} PRIVATE
      $<$<AND:$<CXX_COMPILER_ID:Clang>,$<VERSION_GREATER_EQUAL:$<CXX_COMPILER_VERSION>,20>>:-Wfunction-effects>)
  else()
    add_library(sivray_${name} INTERFACE)
    set(scope INTERFACE)
  endif()
  target_include_directories(sivray_${name} ${scope} "${root}")
  target_link_libraries(sivray_${name} ${scope} ${ROOM_LINKS} ${ROOM_EXTERNAL})
endfunction()

# sivray_module(<name> FOLDER <folder below src> LINKS <rooms>...)
# Makes the library that hosts load, in a folder of its own name that also takes its content. It exports what the
# folder's exports.map names; everything else stays inside, so that neither a host's symbols nor another plug-in's
# meet ours, and so that nothing keeps the library in memory when its host lets go of it.
function(sivray_module name)
  cmake_parse_arguments(MODULE "" "FOLDER" "LINKS" ${ARGN})
  set(folder "${PROJECT_SOURCE_DIR}/src/${MODULE_FOLDER}")
  file(GLOB sources CONFIGURE_DEPENDS "${folder}/*.cpp")
  list(TRANSFORM MODULE_LINKS PREPEND sivray_)
  add_library(${name} MODULE ${sources})
  target_link_libraries(${name} PRIVATE sivray_options ${MODULE_LINKS})
  set_target_properties(${name} PROPERTIES PREFIX "" LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/${name}")
  if(WIN32)
    # The compiler's libraries go in, so that the library needs nothing but what every Windows has. What it exports is
    # marked in the code. No time goes into its head: the same sources give the same bytes.
    target_link_options(${name} PRIVATE -static -s -Wl,--no-insert-timestamp)
  else()
    # A name that nobody defines is an error here, but for what Clang's sanitizers bring into the host's program.
    # Its own calls stay inside, whatever a host exports under the same names.
    target_link_options(${name} PRIVATE "-Wl,--version-script=${folder}/exports.map" -Wl,-Bsymbolic
      $<$<CXX_COMPILER_ID:GNU>:-Wl,-z,defs>)
    set_target_properties(${name} PROPERTIES LINK_DEPENDS "${folder}/exports.map")
  endif()
endfunction()

# sivray_test(<name> [LINKS <libraries>...])
# Makes the program test_<name> of all sources in the calling folder's <name> sub-folder.
function(sivray_test name)
  cmake_parse_arguments(TEST "" "" "LINKS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp")
  if(NOT sources)
    return()
  endif()
  add_executable(test_${name} ${sources})
  target_link_libraries(test_${name} PRIVATE sivray_options ${TEST_LINKS} GTest::gtest_main GTest::gmock)
  target_include_directories(test_${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
  add_test(NAME ${name} COMMAND test_${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 600)
endfunction()
