// Finds and loads the library and looks up its entry.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "vsthost/PluginLibrary.h"

#include <cstdlib>

#include "platform/SpecialFolders.h"
#include "terminal/NamedFile.h"
#include "vsthost/Host.h"

namespace sivray::vsthost {
namespace {

constexpr const char* kContentVariable = "BRAMEL_COMMON_FILES";

#ifdef _WIN32
constexpr const char* kLibraryName = "Sivray/Sivray.dll";
void setVariable(const char* name, const std::string& value) { _putenv_s(name, value.c_str()); }
#else
constexpr const char* kLibraryName = "Sivray/Sivray.so";
void setVariable(const char* name, const std::string& value) { ::setenv(name, value.c_str(), 0); }
#endif

}  // namespace

PluginLibrary::PluginLibrary(const std::string& file) : libraryPath(namedFile(file).getFullPathName().toStdString()) {
  if (!namedFile(file).existsAsFile()) {
    throw HostError("cannot load the plug-in '" + file + "': no such file");
  }
  if (!library.open(juce::String::fromUTF8(libraryPath.c_str()))) {
    throw HostError("cannot load the plug-in '" + file + "': it is no library for this system");
  }
  entryPoint = reinterpret_cast<Entry>(library.getFunction("VSTPluginMain"));
  if (entryPoint == nullptr) {
    throw HostError("'" + file + "' is no plug-in: it has no entry VSTPluginMain");
  }
}

std::unique_ptr<hosting::HostedPlugin> PluginLibrary::makeInstance() const { return std::make_unique<Host>(*this); }

std::string findLibrary(const std::string& chosen) {
  if (!chosen.empty()) {
    return chosen;
  }
  if (const char* named = std::getenv("SIVRAY_LIBRARY"); named != nullptr && *named != '\0') {
    return named;
  }
  const juce::File here(juce::String::fromUTF8(tesh::bramel::platform::moduleFolder().c_str()));
  const juce::File above = here.getParentDirectory();
  // The folders of a build, then those of an installation: beside this program, for this user, and for all users.
  for (const juce::File& library :
       {above.getChildFile(kLibraryName), here.getChildFile(kLibraryName), above.getChildFile("lib/vst/Sivray.so"),
        above.getSiblingFile(".vst/Sivray.so"), juce::File("~/.vst/Sivray.so"),
        juce::File("/usr/local/lib/vst/Sivray.so"), juce::File("/usr/lib/vst/Sivray.so")}) {
    if (library.existsAsFile()) {
      return library.getFullPathName().toStdString();
    }
  }
  throw HostError("found no plug-in near this program; name it with --library or SIVRAY_LIBRARY");
}

std::string findBundle(const std::string& libraryPath, const std::string& form, const std::string& chosen) {
  if (!chosen.empty()) {
    return chosen;
  }
  const juce::File folder = namedFile(libraryPath).getParentDirectory();
  const juce::String name = "Sivray." + juce::String(form);
  for (const juce::File& place : {folder, folder.getParentDirectory(), folder.getSiblingFile("forms")}) {
    if (const juce::File bundle = place.getChildFile(name); bundle.exists()) {
      return bundle.getFullPathName().toStdString();
    }
  }
  throw HostError("found no " + name.toStdString() + " near the plug-in; name it with --bundle");
}

void shareContentOf(const std::string& libraryPath) {
  const juce::File folder = namedFile(libraryPath).getParentDirectory();
  const std::string own = tesh::bramel::platform::ownContentFolder();
  if (!own.empty() && tesh::bramel::platform::commonFilesFolder() == own) {
    return;  // The user's own content takes precedence for every program and library.
  }
  if (std::getenv(kContentVariable) == nullptr && folder.getChildFile("Tesh/Bramel").isDirectory()) {
    setVariable(kContentVariable, folder.getFullPathName().toStdString());
  }
}

}  // namespace sivray::vsthost
