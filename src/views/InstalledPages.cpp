// Finds the installed pages in the content folder and opens them in the browser.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/InstalledPages.h"

#include <juce_core/juce_core.h>

#include "platform/Files.h"
#include "storage/paths/Paths.h"

namespace tesh::bramel {
namespace {

// The type of a path's characters differs by system.
[[maybe_unused]] juce::String stringOf(const char* text) { return juce::String::fromUTF8(text); }
[[maybe_unused]] juce::String stringOf(const wchar_t* text) { return juce::String(text); }

}  // namespace

std::string installedPagePath(InstalledPage page) {
  const char* const name = page == InstalledPage::manual ? "manual.html" : "acknowledgements.html";
  return pathBelow(pathBelow(directoryFor(kBramelDirectory_Resource), "SivrayManual"), name);
}

bool openInstalledPage(InstalledPage page) {
  const std::string name = installedPagePath(page);
  const platform::NativePath path(name);
  if (name.empty() || !platform::exists(path)) {
    return false;
  }
  const juce::String text = stringOf(path.text());
#ifdef _WIN32
  return juce::Process::openDocument(text, {});  // Windows does not decode percent signs in such an address.
#else
  return juce::URL(juce::File(text)).launchInDefaultBrowser();
#endif
}

}  // namespace tesh::bramel
