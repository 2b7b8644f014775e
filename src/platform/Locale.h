// The language that the user reads.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tesh::bramel::platform {

inline constexpr std::uint16_t kLanguageJapanese = 0x411;
inline constexpr std::uint16_t kLanguageEnglish = 0x409;

/// The default language of the user interface as a language id; everything but Japanese reads as English.
std::uint16_t userInterfaceLanguage();

}  // namespace tesh::bramel::platform
