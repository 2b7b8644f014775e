// A face that borrows what it lacks: names of programs may hold any letters, and our faces have Latin ones.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include <juce_graphics/juce_graphics.h>

namespace tesh::bramel {

class InstalledGlyphs;

/// The installed faces, opened as their characters are asked for. Shared by all faces that borrow from them; null on
/// Windows, whose faces borrow by themselves.
std::shared_ptr<InstalledGlyphs> makeInstalledGlyphs();

/// Returns a face that draws with `face`. Characters that it lacks come from the desktop's preferred installed face, at
/// the same size and on the same baseline. `bytes` are those of `face` and must outlive it.
/// Message thread only.
juce::Typeface::Ptr withFallback(juce::Typeface::Ptr face, std::span<const std::uint8_t> bytes,
                                 std::shared_ptr<InstalledGlyphs> installed);

}  // namespace tesh::bramel
