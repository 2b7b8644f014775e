// Fuzzes the engine's chunk: for any bytes every value stays in its range, and the engine accepts its own export
// unchanged. The first byte chooses the size; the others overwrite the start of a valid chunk.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "FuzzInput.h"
#include "engine/SivrayPlugin.h"

namespace {

using namespace tesh::bramel::plugin::sivray;
using fuzz::require;

/// A short sample slot makes creating and filling the engine fast.
constexpr std::size_t kSlot = 64;

std::vector<std::uint8_t> chunkOf(const std::uint8_t* data, std::size_t size) {
  constexpr std::array<std::size_t, 6> kSizes{0, 158964, 158448, 158963, 158447, 160000};
  const std::size_t whole = size == 0 ? 0 : kSizes[data[0] % kSizes.size()];
  const std::size_t given = size == 0 ? 0 : size - 1;
  std::vector<std::uint8_t> chunk(whole == 0 ? given : whole);
  std::copy_n(data + (size == 0 ? 0 : 1), std::min(given, chunk.size()), chunk.begin());
  return chunk;
}

void playBlock(SivrayPlugin<VstXSynth>& plugin) {
  std::array<float, 16> left{};
  std::array<float, 16> right{};
  std::array<float*, 2> outputs{left.data(), right.data()};
  plugin.renderOnly(outputs.data(), static_cast<int>(left.size()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static SivrayPlugin<VstXSynth> plugin(kSampleFolder, kSlot);
  plugin.setState(chunkOf(data, size));
  for (std::uint32_t id = 0; id < 0x104; ++id) {
    const float value = plugin.getParameter(id);
    require(value == -1.0F || (value >= 0.0F && value <= 1.0F));
    plugin.getParameterDisplay(id);
  }
  plugin.programName();
  plugin.programNameAt(127);
  playBlock(plugin);
  const auto exported = plugin.getState();
  const std::vector<std::uint8_t> state(exported.begin(), exported.end());
  plugin.setState(state);
  const auto again = plugin.getState();
  require(std::equal(again.begin(), again.end(), state.begin(), state.end()));
  return 0;
}
