// Determines the language of the user interface on each operating system.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Locale.h"

#ifdef _WIN32
#include "platform/WindowsApi.h"
#else
#include <cstdlib>
#include <string>
#endif

namespace tesh::bramel::platform {

std::uint16_t userInterfaceLanguage() {
#ifdef _WIN32
  return GetUserDefaultUILanguage();
#else
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* value = std::getenv(name);
    if (value != nullptr && *value != '\0') {
      return std::string(value).rfind("ja", 0) == 0 ? kLanguageJapanese : kLanguageEnglish;
    }
  }
  return kLanguageEnglish;
#endif
}

}  // namespace tesh::bramel::platform
