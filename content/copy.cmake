# Copies the built content from the folder FROM into the folder TO, or says that there is none. Files that are the same
# stay as they are.
if(EXISTS "${FROM}/Tesh/Bramel/Macro/Sivray/readme.json")
  file(COPY "${FROM}/Tesh" DESTINATION "${TO}")
  message(STATUS "${TO} holds the library and its content")
else()
  message(STATUS "${TO} holds the library alone: build the release preset for its content, then this one again")
endif()
