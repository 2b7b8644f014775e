// The panel's colours, as 0xAARRGGBB for `juce::Colour`.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tesh::bramel::colours {

inline constexpr std::uint32_t kCobalt = 0xff222792;
inline constexpr std::uint32_t kNight = 0xff15162c;
inline constexpr std::uint32_t kPeriwinkle = 0xff95a8ef;
inline constexpr std::uint32_t kAmber = 0xffffc100;
inline constexpr std::uint32_t kSlate = 0xff2f2f39;       ///< Text on white pop-ups, opaque.
inline constexpr std::uint32_t kActionText = 0xe62f2f39;  ///< The same at 0.9, for rows and buttons.
inline constexpr std::uint32_t kActionFill = 0xe6d4d9dc;  ///< Buttons, selected text, selected cells, at 0.9.
inline constexpr std::uint32_t kSeparator = 0xffd3d3d3;
inline constexpr std::uint32_t kEditLabel = 0xffa8b1cd;
inline constexpr std::uint32_t kListLabel = 0xff595959;
inline constexpr std::uint32_t kTabsBottomLeft = 0xff065692;
inline constexpr std::uint32_t kTabsTopRight = 0xff2e303b;

/// Opacity of a disabled control; nothing else about it changes.
inline constexpr float kDisabledAlpha = 0.4F;

}  // namespace tesh::bramel::colours
