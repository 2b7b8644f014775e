// The envelope of the state that a host saves in its song: a tag, and a msgpack map with an identifier, a version and
// the content.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tesh::bramel::vst {

/// The identifier that every state of the family carries.
inline constexpr const char* kEditBufferName = "zz.tesh.bramel.vst.editbuffer";
inline constexpr std::int32_t kEditBufferVersion = 1;

/// The first four bytes of a state.
inline constexpr std::string_view kStateTag = "MPck";

struct EditBufferRecord {
  std::string name = kEditBufferName;
  std::int32_t version = kEditBufferVersion;
  std::vector<std::uint8_t> content;
};

/// The bytes "MPck" and the record as a msgpack map of smallest encodings, sorted by key.
/// Throws msgpack's overflow error for a content above 2^32 - 1 bytes.
std::vector<std::uint8_t> packState(const EditBufferRecord& record);

/// Reads what packState wrote, with the content as bin or str, keys in any order and unknown keys passed over. Gives
/// nothing when the tag is missing, the bytes are no msgpack map, or a key is missing or of another type.
std::optional<EditBufferRecord> unpackState(std::span<const std::uint8_t> bytes);

}  // namespace tesh::bramel::vst
