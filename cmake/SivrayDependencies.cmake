# What the system calls but does not contain. JUCE's modules are compiled once, into one library.
find_package(JUCE CONFIG REQUIRED)
find_package(PNG REQUIRED)
find_package(JPEG REQUIRED)
find_package(PkgConfig REQUIRED)
pkg_check_modules(FLAC REQUIRED IMPORTED_TARGET flac)
find_package(msgpackc-cxx CONFIG NAMES msgpackc-cxx msgpack REQUIRED)
find_path(PICOJSON_INCLUDE_DIR picojson.h REQUIRED)

add_library(picojson INTERFACE)
target_include_directories(picojson SYSTEM INTERFACE "${PICOJSON_INCLUDE_DIR}")

add_library(sivray_juce STATIC)
target_link_libraries(sivray_juce PRIVATE juce::juce_audio_formats juce::juce_dsp juce::juce_graphics)
# Debian's JUCE takes images and FLAC from the system's libraries.
target_link_libraries(sivray_juce PUBLIC PNG::PNG JPEG::JPEG PkgConfig::FLAC)
target_compile_definitions(sivray_juce
  PUBLIC
    JUCE_STANDALONE_APPLICATION=1
    JUCE_USE_CURL=0
    JUCE_WEB_BROWSER=0
    JUCE_USE_MP3AUDIOFORMAT=0
    JUCE_USE_OGGVORBIS=0
    $<IF:$<CONFIG:Debug>,DEBUG=1,NDEBUG=1>
  INTERFACE
    $<TARGET_PROPERTY:sivray_juce,COMPILE_DEFINITIONS>)
target_include_directories(sivray_juce SYSTEM INTERFACE
  $<TARGET_PROPERTY:sivray_juce,INCLUDE_DIRECTORIES>)

if(SIVRAY_BUILD_TESTS)
  find_package(GTest CONFIG REQUIRED)
endif()
if(SIVRAY_BUILD_BENCHMARKS)
  find_package(benchmark CONFIG REQUIRED)
endif()
