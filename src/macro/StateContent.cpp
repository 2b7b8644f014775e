// The processor's share of a host's state: what goes into each section, and what is taken from it.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/state/StateContent.h"

#include "core/LittleEndian.h"
#include "macro/PluginMacroControllable.h"

namespace tesh::vimo {
namespace {

/// Zeros behind the run flags of a state.
constexpr std::size_t kReservedBytes = 8;

}  // namespace

namespace vst = bramel::vst;
using Controllable = PluginMacroControllable<Generator<float>>;

std::span<const std::uint8_t> Controllable::getStateContent() {
  std::vector<std::uint8_t> flags;
  writeMisc(flags);
  std::vector<std::uint8_t> macroChunk;
  ownController.writeChunk(macroChunk);
  stateContent.clear();
  vst::appendStateContent(stateContent, {flags, ownGenerator->getState(), macroChunk});
  return stateContent;
}

bool Controllable::setStateContent(std::span<const std::uint8_t> bytes) {
  const auto content = vst::readStateContent(bytes);
  if (!content) {
    return false;
  }
  readMisc(content->runFlags);
  if (storeEngineChunk) {
    ownGenerator->setState(content->engine);
  }
  if (!content->macros.empty()) {
    ownController.readChunk(content->macros, Controller::ChunkParts::valuesOnly);
  }
  return true;
}

void Controllable::addReadsOfState(std::span<const std::uint8_t> bytes, ComingValues& coming) const {
  if (const auto content = vst::readStateContent(bytes)) {
    ownController.addReadsOfChunk(content->macros, coming);
  }
}

void Controllable::readMisc(std::span<const std::uint8_t> misc) {
  if (const auto flags = vst::readRunFlags(misc)) {
    running = flags->running;
    storeEngineChunk = flags->storesEngineChunk;
  }
}

void Controllable::writeMisc(std::vector<std::uint8_t>& out) const {
  vst::appendRunFlags(out, {running, storeEngineChunk});
  cofu::core::ByteWriter(out).zeros(kReservedBytes);
}

}  // namespace tesh::vimo
