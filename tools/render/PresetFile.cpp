// The header of a preset file, field by field, as published for the plug-in interface.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "PresetFile.h"

#include <algorithm>

#include "RenderError.h"
#include "core/Utf8.h"
#include "host/shell/Construction.h"
#include "host/vst/PluginIds.h"
#include "host/vst/VstRecords.h"

namespace sivray::render {
namespace {

using tesh::bramel::vst::fourCharacters;

constexpr std::string_view kEnding = ".fxp";

constexpr std::int32_t kFileMagic = fourCharacters('C', 'c', 'n', 'K');
constexpr std::int32_t kOpaqueStateMagic = fourCharacters('F', 'P', 'C', 'h');
constexpr std::int32_t kLayoutVersion = 1;
constexpr std::size_t kNameBytes = 28;  ///< Including the terminating zero.
constexpr std::size_t kHeadBytes = 60;  ///< Seven numbers, the name, and the size of the state.
constexpr std::size_t kUncounted = 8;   ///< The size field does not count itself and the magic number before it.

constexpr std::int32_t kPluginId = tesh::bramel::vst::pluginIdOf(tesh::bramel::vst::kInstrumentName);
/// Equals AEffect::version in the plug-in's record.
constexpr std::int32_t kPluginVersion = 1;

void append(std::vector<std::uint8_t>& out, std::uint32_t number) {
  for (int shift = 24; shift >= 0; shift -= 8) {
    out.push_back(static_cast<std::uint8_t>(number >> shift));
  }
}

void append(std::vector<std::uint8_t>& out, std::int32_t number) { append(out, static_cast<std::uint32_t>(number)); }

/// Returns the number at `offset`; all its four bytes must exist.
std::int32_t numberAt(std::span<const std::uint8_t> bytes, std::size_t offset) {
  std::uint32_t number = 0;
  for (const std::uint8_t byte : bytes.subspan(offset, 4)) {
    number = number << 8 | byte;
  }
  return static_cast<std::int32_t>(number);
}

void appendName(std::vector<std::uint8_t>& out, std::string_view name) {
  const std::size_t end = out.size() + kNameBytes;
  const std::string_view kept = tesh::cofu::core::utf8Start(name, kNameBytes - 1);
  out.insert(out.end(), kept.begin(), kept.end());
  out.resize(end);
}

/// Returns the fault of a preset file; empty if there is none.
std::string faultOf(std::span<const std::uint8_t> bytes) {
  if (bytes.empty()) {
    return "it is missing or empty";
  }
  if (bytes.size() < kHeadBytes || numberAt(bytes, 0) != kFileMagic) {
    return "it is no preset file";
  }
  if (numberAt(bytes, 8) != kOpaqueStateMagic) {
    return "it holds parameters or a bank instead of a preset's state";
  }
  if (numberAt(bytes, 16) != kPluginId) {
    return "it belongs to another plug-in";
  }
  // The size at offset 4 is ignored, because hosts write different ones.
  if (static_cast<std::uint32_t>(numberAt(bytes, kHeadBytes - 4)) != bytes.size() - kHeadBytes) {
    return "it is cut short, or has bytes behind its end";
  }
  return {};
}

}  // namespace

bool isPresetPath(std::string_view path) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
  return path.size() >= kEnding.size() && std::equal(kEnding.begin(), kEnding.end(), path.end() - kEnding.size(),
                                                     [&](char a, char b) { return a == lower(b); });
}

std::vector<std::uint8_t> packPreset(std::string_view name, std::size_t parameters,
                                     std::span<const std::uint8_t> state) {
  const auto size = static_cast<std::uint32_t>(state.size());
  std::vector<std::uint8_t> out;
  out.reserve(kHeadBytes + state.size());
  append(out, kFileMagic);
  append(out, static_cast<std::uint32_t>(kHeadBytes - kUncounted) + size);
  append(out, kOpaqueStateMagic);
  append(out, kLayoutVersion);
  append(out, kPluginId);
  append(out, kPluginVersion);
  append(out, static_cast<std::uint32_t>(parameters));
  appendName(out, name);
  append(out, size);
  out.insert(out.end(), state.begin(), state.end());
  return out;
}

std::vector<std::uint8_t> stateInPreset(std::span<const std::uint8_t> bytes, const std::string& path) {
  if (const std::string fault = faultOf(bytes); !fault.empty()) {
    throw RenderError("cannot load the preset '" + path + "': " + fault);
  }
  const auto state = bytes.subspan(kHeadBytes);
  return {state.begin(), state.end()};
}

std::string presetFileName(std::string_view name) {
  std::string file(name);
  for (char& c : file) {
    if (static_cast<unsigned char>(c) < ' ' || std::string_view("/\\:*?\"<>|").find(c) != std::string_view::npos) {
      c = '-';
    }
  }
  return file.append(kEnding);
}

}  // namespace sivray::render
