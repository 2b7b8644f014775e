# The pictures and fonts of the panel, drawn and packed by sivray-art and linked into what uses them. The same bytes come out
# of every build; a build for another system, which cannot run the tool, takes those of the release build.
set(fonts "${PROJECT_SOURCE_DIR}/resources/fonts")
set(stage "${PROJECT_BINARY_DIR}/resources")
if(CMAKE_CROSSCOMPILING)
  set(stage "${PROJECT_SOURCE_DIR}/build/release/resources")
else()
  find_package(Python3 REQUIRED COMPONENTS Interpreter)
  file(GLOB_RECURSE font_files CONFIGURE_DEPENDS "${fonts}/*.ttf")
  set(face_script "${PROJECT_SOURCE_DIR}/tools/art/display_face.py")
  add_custom_command(
    OUTPUT "${stage}/display-face.ttf"
    COMMAND "${CMAKE_COMMAND}" -E make_directory "${stage}"
    COMMAND "${Python3_EXECUTABLE}" "${face_script}" "${fonts}/display/face.txt" "${stage}/display-face.ttf"
    DEPENDS "${face_script}" "${fonts}/display/face.txt"
    COMMENT "Making the display face"
    VERBATIM)
  add_custom_command(
    OUTPUT "${stage}/resources.bin" "${stage}/ResourceTable.cpp"
    COMMAND sivray-art pack "${fonts}" "${stage}/display-face.ttf" -o "${stage}"
    DEPENDS sivray-art ${font_files} "${stage}/display-face.ttf"
    COMMENT "Drawing the panel's pictures"
    VERBATIM)
endif()

# The assembler is called without debug information, which would name the folders of this machine.
enable_language(ASM)
set(bytes_source "${PROJECT_SOURCE_DIR}/cmake/resources.S")
set_source_files_properties("${bytes_source}" PROPERTIES
  OBJECT_DEPENDS "${stage}/resources.bin" COMPILE_OPTIONS "-g0;-I${stage}")
add_library(sivray_resource_objects OBJECT "${stage}/ResourceTable.cpp" "${bytes_source}")
target_link_libraries(sivray_resource_objects PRIVATE sivray_platform)

# Objects, not an archive: the lookup lies in a library that the linker has already passed when it reaches this one.
add_library(sivray_resources INTERFACE)
target_link_libraries(sivray_resources INTERFACE $<TARGET_OBJECTS:sivray_resource_objects> sivray_platform)
add_dependencies(sivray_resources sivray_resource_objects)
