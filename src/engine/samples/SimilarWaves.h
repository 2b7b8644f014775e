// Which waves of a sample library sound alike, and how loud each is: measured by sivray-content, read from the file
// similar.bin beside the library's index.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string_view>
#include <vector>

namespace tesh::vimo {

/// The measurements of one wave. Waves are identified by their engine numbers.
struct WaveKin {
  static constexpr std::size_t kMost = 8;

  std::int32_t wave = 0;
  float loudness = 0.0F;              ///< Of its loudest 400 ms, in LUFS, rounded to 0.01.
  std::vector<std::int32_t> nearest;  ///< At most kMost, the nearest first; never the wave itself.
  std::int32_t farthest = -1;         ///< The most different wave of its category; -1 if it is alone.
};

/// Without a file that belongs to the library, no wave has measurements. Message thread.
class SimilarWaves {
 public:
  static constexpr std::string_view kFileName = "similar.bin";

  // The file: a word that identifies the format, hashOf the library's index, and a record per wave.
  static constexpr std::uint32_t kFormat = 0x314D4953;  // "SIM1"
  static constexpr std::size_t kRecordBytes = 24;

  /// `index` holds the bytes of the library's drumparam_category.bin. Refuses a file that was measured for another
  /// library, and a truncated one. Replaces the previous content; after false there are no measurements.
  bool loadFrom(std::span<const std::uint8_t> bytes, std::span<const std::uint8_t> index);

  /// Null if the wave was not measured.
  const WaveKin* of(std::int32_t wave) const;

  static std::uint32_t hashOf(std::span<const std::uint8_t> bytes);
  /// Reads one record; words past its end count as 0.
  static WaveKin kinIn(std::span<const std::uint8_t> record);

  /// The bytes of a file for the library with this index. Numbers are 0 to 65534.
  static std::vector<std::uint8_t> pack(std::span<const WaveKin> kins, std::span<const std::uint8_t> index);

 private:
  std::map<std::int32_t, WaveKin> kins;
};

/// The wave and level of a pad.
struct PadSound {
  std::int32_t wave = 0;
  std::int32_t level = 100;  ///< 0 to 127.
  bool operator==(const PadSound&) const = default;
};

/// The level, 1 to 127, at which wave `to` is as loud as wave `from` at `level`, as near as possible. 0 stays 0.
/// Returns `level` if either wave was not measured.
std::int32_t levelKept(const SimilarWaves& waves, std::int32_t from, std::int32_t to, std::int32_t level);

/// Gives each pad one of the waves nearest to its own at random, at the same loudness. The same seed gives the same
/// waves on every machine. Pads whose wave was not measured stay unchanged.
std::vector<PadSound> varied(const SimilarWaves& waves, std::span<const PadSound> pads, std::uint32_t seed);

}  // namespace tesh::vimo
