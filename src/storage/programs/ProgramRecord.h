// A program: a stored value for every macro, with a name, a comment and a time.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/RealTime.h"
#include "core/Uuid.h"
#include "storage/programs/ProgramEntries.h"

namespace tesh::vimo {

struct ProgramRecord {
  /// `marker` distinguishes programs that were stored in this session from those that were read from an image. It is
  /// written to images but not read.
  static constexpr std::uint32_t kMarkerNew = 1024;
  static constexpr std::uint32_t kMarkerLoaded = 2;
  static constexpr std::size_t kTextBytes = 96;
  using Text = std::array<char, kTextBytes>;

  /// A program without name, with the current time and a new id.
  explicit ProgramRecord(ProgramEntries programEntries);

  /// Copies `text` up to its first zero byte, at most 95 bytes, and fills the rest of the field with zeros.
  static void setText(Text& field, std::string_view text);
  static std::string_view textOf(const Text& field) SIVRAY_NONBLOCKING;

  std::uint32_t marker = kMarkerNew;
  Text name{};
  Text comment{};
  std::uint32_t time = 0;  ///< Seconds since 1970.
  cofu::core::Uuid id{};
  ProgramEntries entries;
};

}  // namespace tesh::vimo
