// What a host's state holds of the instrument: run flags, the generator's own state, and the macro chunk.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <string_view>

#include "core/LittleEndian.h"
#include "macro/PluginMacroControllable.h"

namespace tesh::vimo {
namespace {

using cofu::core::ByteReader;
using cofu::core::ByteWriter;

constexpr std::uint32_t kContentLayout = 0;
constexpr std::size_t kContentHeadBytes = 16;
constexpr std::string_view kMiscTag = "csim";
constexpr std::uint32_t kMiscRunningOnly = 256;
constexpr std::uint32_t kMiscVersion = 512;
constexpr std::size_t kMiscReservedBytes = 8;
constexpr std::uint32_t kMiscBytes = 24;

}  // namespace

using Controllable = PluginMacroControllable<Generator<float>>;

std::span<const std::uint8_t> Controllable::getStateContent() {
  const auto plugin = ownGenerator->getState();
  std::vector<std::uint8_t> macroChunk;
  ownController.writeChunk(macroChunk);

  stateContent.clear();
  ByteWriter writer(stateContent);
  writer.word(kContentLayout);
  writer.word(kMiscBytes);
  writer.word(static_cast<std::uint32_t>(plugin.size()));
  writer.word(static_cast<std::uint32_t>(macroChunk.size()));
  writeMisc(stateContent);
  writer.bytes(plugin);
  writer.bytes(macroChunk);
  return stateContent;
}

void Controllable::setStateContent(std::span<const std::uint8_t> content) {
  if (content.size() < kContentHeadBytes) {
    return;
  }
  ByteReader reader(content);
  const std::uint32_t layout = reader.word();
  const std::uint64_t miscSize = reader.word();
  const std::uint64_t pluginSize = reader.word();
  const std::uint64_t macroSize = reader.word();
  if (layout != kContentLayout || reader.remaining() != miscSize + pluginSize + macroSize) {
    return;
  }
  readMisc(reader.take(miscSize));
  const auto plugin = reader.take(pluginSize);
  if (storeEngineChunk) {
    ownGenerator->setState(plugin);
  }
  if (macroSize != 0) {
    ownController.readChunk(reader.take(macroSize), Controller::ChunkParts::valuesOnly);
  }
}

void Controllable::readMisc(std::span<const std::uint8_t> misc) {
  ByteReader reader(misc);
  const std::uint32_t version = reader.word();
  const auto tag = reader.take(kMiscTag.size());
  const bool isRunning = reader.word() != 0;
  const bool storesEngine = version == kMiscVersion && reader.word() != 0;
  const bool isKnown = version == kMiscRunningOnly || version == kMiscVersion;
  if (reader.hasFailed() || !isKnown || !std::equal(tag.begin(), tag.end(), kMiscTag.begin(), kMiscTag.end())) {
    return;
  }
  running = isRunning;
  storeEngineChunk = storesEngine;
}

void Controllable::writeMisc(std::vector<std::uint8_t>& out) const {
  ByteWriter writer(out);
  writer.word(kMiscVersion);
  writer.text(kMiscTag);
  writer.word(running ? 1 : 0);
  writer.word(storeEngineChunk ? 1 : 0);
  writer.zeros(kMiscReservedBytes);
}

}  // namespace tesh::vimo
