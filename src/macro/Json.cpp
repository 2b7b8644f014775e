// JSON through picojson.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "macro/Json.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "core/SharedByBytes.h"
#include "core/Utf8.h"

namespace tesh::vimo {
namespace {

/// Largest magnitude at which every whole double fits 64 bits with room to spare.
constexpr double kLargestWhole = 9.0e18;

}  // namespace

picojson::value parseJson(std::span<const std::uint8_t> text) {
  picojson::value document;
  std::string error;
  const auto json = cofu::core::withoutByteOrderMark({reinterpret_cast<const char*>(text.data()), text.size()});
  try {
    picojson::parse(document, json.begin(), json.end(), &error);
  } catch (const std::overflow_error&) {  // A number that no double can hold.
    return {};
  }
  if (!error.empty()) {
    return {};
  }
  return document;
}

const picojson::value& JsonDocuments::parse(std::span<const std::uint8_t> text) {
  static cofu::core::SharedByBytes<picojson::value> shared;
  return *held.emplace_back(shared.get(text, parseJson));
}

const picojson::value& memberOf(const picojson::value& object, const std::string& key) {
  static const picojson::value null;
  const auto& members = object.get<picojson::object>();
  const auto found = members.find(key);
  return found == members.end() ? null : found->second;
}

std::optional<std::int64_t> roundedNumber(const picojson::value& value) {
  if (!value.is<double>()) {
    return std::nullopt;
  }
  return static_cast<std::int64_t>(std::clamp(std::round(value.get<double>()), -kLargestWhole, kLargestWhole));
}

}  // namespace tesh::vimo
