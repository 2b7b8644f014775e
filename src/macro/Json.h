// Parses the macro layer's JSON files and reads their members.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <picojson.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tesh::vimo {

/// Returns the document. For a syntax error or a number that is too large it returns null, for which memberOf throws.
/// Ignores a byte-order mark in front and bytes behind the first value.
picojson::value parseJson(std::span<const std::uint8_t> text);

/// Documents that all instances share, each parsed once. An instance keeps those that it has read, so that the next
/// instance finds them. Not on the audio thread.
class JsonDocuments {
 public:
  /// Like `parseJson`. The reference is valid as long as this object.
  const picojson::value& parse(std::span<const std::uint8_t> text);

 private:
  std::vector<std::shared_ptr<const picojson::value>> held;
};

/// Returns the member `key`, or null if there is none. Throws std::runtime_error with the library's text if `object` is
/// not an object.
const picojson::value& memberOf(const picojson::value& object, const std::string& key);

/// Returns the nearest integer, clamped to +-9e18, or nothing if the value is not a number.
std::optional<std::int64_t> roundedNumber(const picojson::value& value);

}  // namespace tesh::vimo
