// A typeface that borrows missing characters: names of programs may hold any letters, and our typefaces have only Latin
// ones.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include <juce_graphics/juce_graphics.h>

namespace tesh::bramel {

class InstalledGlyphs;

/// Installed typefaces, opened when their characters are needed. All borrowing typefaces share it. Null on Windows,
/// whose typefaces borrow by themselves.
std::shared_ptr<InstalledGlyphs> makeInstalledGlyphs();

/// A typeface that draws with `face`. Characters that it lacks come from the desktop's preferred installed typeface, at
/// the same size and on the same baseline. `bytes` is the file of `face` and must outlive it. Message thread only.
juce::Typeface::Ptr withFallback(juce::Typeface::Ptr face, std::span<const std::uint8_t> bytes,
                                 std::shared_ptr<InstalledGlyphs> installed);

}  // namespace tesh::bramel
