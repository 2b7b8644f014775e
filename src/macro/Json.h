// The JSON files of the macro layer: parsing, and the few questions that their readers ask.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <picojson.h>

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace tesh::vimo {

/// The document, or null when its text has a syntax error: the reader's first question then fails with the library's
/// own text. Bytes behind the first value are not looked at.
picojson::value parseJson(std::span<const std::uint8_t> text);

/// The member `key` of an object, null when it is not there. Throws std::runtime_error when `object` is none.
const picojson::value& memberOf(const picojson::value& object, const std::string& key);

/// The nearest integer, within the range of 64 bits; nothing when the value is no number.
std::optional<std::int64_t> roundedNumber(const picojson::value& value);

}  // namespace tesh::vimo
