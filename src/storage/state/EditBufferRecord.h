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

/// The identifier in every state of the family.
inline constexpr const char* kEditBufferName = "zz.tesh.bramel.vst.editbuffer";
inline constexpr std::int32_t kEditBufferVersion = 1;

/// The first four bytes of a state.
inline constexpr std::string_view kStateTag = "MPck";

struct EditBufferRecord {
  std::string name = kEditBufferName;
  std::int32_t version = kEditBufferVersion;
  std::vector<std::uint8_t> content;
};

/// Packs the tag and the record as a msgpack map, sorted by key, each value in its shortest encoding. Throws msgpack's
/// container_size_overflow if the content has more than 2^32 - 1 bytes.
std::vector<std::uint8_t> packState(const EditBufferRecord& record);

/// Reads the result of `packState`. The content may be a msgpack binary or text, the keys may come in any order, and
/// unknown keys are ignored. Nothing if the tag or a key is missing, if a key has another type, or if the bytes are no
/// msgpack map.
std::optional<EditBufferRecord> unpackState(std::span<const std::uint8_t> bytes);

}  // namespace tesh::bramel::vst
