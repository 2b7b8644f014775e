// Text for Windows calls, which take UTF-16.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#ifdef _WIN32

#include <string>

namespace tesh::bramel::platform {

/// UTF-8 to UTF-16. Invalid bytes become the replacement character.
std::wstring toWide(const std::string& text);

/// UTF-16 to UTF-8. An unpaired surrogate becomes the replacement character.
std::string toUtf8(const std::wstring& text);

}  // namespace tesh::bramel::platform
#endif
