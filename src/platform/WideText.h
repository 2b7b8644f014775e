// Text for the calls of Windows: they take UTF-16.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#ifdef _WIN32

#include <string>

namespace tesh::bramel::platform {

/// UTF-8 to UTF-16; what is not UTF-8 becomes the replacement character.
std::wstring toWide(const std::string& text);
std::string toUtf8(const std::wstring& text);

}  // namespace tesh::bramel::platform
#endif
