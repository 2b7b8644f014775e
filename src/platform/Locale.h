// The language of the user interface.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tesh::bramel::platform {

/// Language ids as Windows numbers them.
inline constexpr std::uint16_t kLanguageJapanese = 0x411;
inline constexpr std::uint16_t kLanguageEnglish = 0x409;

/// The user's language as a language id. Outside Windows it is Japanese if $LC_ALL, $LC_MESSAGES or $LANG says so, and
/// English otherwise. Any thread.
std::uint16_t userInterfaceLanguage();

}  // namespace tesh::bramel::platform
