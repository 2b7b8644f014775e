// Which waves of a sample library sound alike, and how loud each is: what sivray-content has measured, read from the
// file similar.bin beside the library's index.
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

/// What is known of one wave. Waves are named by their numbers in the engine.
struct WaveKin {
  static constexpr std::size_t kMost = 8;

  std::int32_t wave = 0;
  float loudness = 0.0F;              ///< Of its loudest 400 ms, in LUFS, to a hundredth.
  std::vector<std::int32_t> nearest;  ///< At most kMost, the nearest first; never the wave itself.
  std::int32_t farthest = -1;         ///< The most different wave of its category; -1 if it is alone.
};

/// Without a file that fits the library nothing is known of any wave. Message thread.
class SimilarWaves {
 public:
  static constexpr std::string_view kFileName = "similar.bin";

  // The file: a word that names the format, hashOf the library's index, and a record for each wave.
  static constexpr std::uint32_t kFormat = 0x314D4953;  // "SIM1"
  static constexpr std::size_t kRecordBytes = 24;

  /// `index` are the bytes of the library's drumparam_category.bin: a file that was measured for another library is
  /// refused, as is one that is cut. Replaces what was there; false leaves nothing known.
  bool loadFrom(std::span<const std::uint8_t> bytes, std::span<const std::uint8_t> index);

  /// Null if nothing is known of the wave.
  const WaveKin* of(std::int32_t wave) const;

  static std::uint32_t hashOf(std::span<const std::uint8_t> bytes);
  /// Reads one record; words past its end count as 0.
  static WaveKin kinIn(std::span<const std::uint8_t> record);

  /// The bytes of a file for the library with this index. Numbers are 0 to 65534.
  static std::vector<std::uint8_t> pack(std::span<const WaveKin> kins, std::span<const std::uint8_t> index);

 private:
  std::map<std::int32_t, WaveKin> kins;
};

/// What a pad plays.
struct PadSound {
  std::int32_t wave = 0;
  std::int32_t level = 100;  ///< 0 to 127.
  bool operator==(const PadSound&) const = default;
};

/// The level at which wave `to` is as loud as wave `from` at `level`, as near as 1 to 127 comes; 0 stays 0. `level`
/// itself if the loudness of either is not known.
std::int32_t levelKept(const SimilarWaves& waves, std::int32_t from, std::int32_t to, std::int32_t level);

/// Gives each pad one of the waves nearest to its own, by chance, as loud as before. The same seed gives the same
/// waves on every machine. Pads of whose wave nothing is known stay.
std::vector<PadSound> varied(const SimilarWaves& waves, std::span<const PadSound> pads, std::uint32_t seed);

}  // namespace tesh::vimo
