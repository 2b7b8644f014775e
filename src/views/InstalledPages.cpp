// Finds the installed pages in the content folder and opens them in the browser.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/InstalledPages.h"

#include <juce_core/juce_core.h>

#include "platform/Files.h"
#include "storage/paths/Paths.h"

namespace tesh::bramel {
namespace {

// The form of a path differs by system.
[[maybe_unused]] juce::String stringOf(const char* text) { return juce::String::fromUTF8(text); }
[[maybe_unused]] juce::String stringOf(const wchar_t* text) { return juce::String(text); }

}  // namespace

std::string installedPagePath(InstalledPage page) {
  const char* const name = page == InstalledPage::manual ? "manual.html" : "acknowledgements.html";
  return joinPath(joinPath(directoryFor(kBramelDirectory_Resource), "SivrayManual"), name);
}

void openInstalledPage(InstalledPage page) {
  const platform::NativePath path(installedPagePath(page));
  juce::URL(juce::File(stringOf(path.text()))).launchInDefaultBrowser();
}

}  // namespace tesh::bramel
