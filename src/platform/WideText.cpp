// Conversion between UTF-8 and UTF-16.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef _WIN32
#include "platform/WideText.h"

#include "platform/WindowsApi.h"

namespace tesh::bramel::platform {

std::wstring toWide(const std::string& text) {
  const int size = static_cast<int>(text.size());
  std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0)), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

std::string toUtf8(const std::wstring& text) {
  const int size = static_cast<int>(text.size());
  const int bytes = WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<std::size_t>(bytes), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), size, narrow.data(), bytes, nullptr, nullptr);
  return narrow;
}

}  // namespace tesh::bramel::platform
#endif
