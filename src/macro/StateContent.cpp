// The processor's sections of a host's state: written and read.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/state/StateContent.h"

#include <algorithm>

#include "core/LittleEndian.h"
#include "macro/PluginMacroControllable.h"

namespace tesh::vimo {
namespace {

/// Zero bytes after the run flags of a state.
constexpr std::size_t kReservedBytes = 8;
/// Room for the macro list, values and texts, so that the content needs one allocation.
constexpr std::size_t kExpectedRest = 32768;

}  // namespace

namespace vst = bramel::vst;
using Controllable = PluginMacroControllable<Generator<float>>;

std::span<const std::uint8_t> Controllable::getStateContent() {
  stateContent.clear();
  writeStateContent(snapshotState(), stateContent);
  return stateContent;
}

StateSnapshot Controllable::snapshotState() {
  StateSnapshot snapshot{{}, ownGenerator->snapshot(), ownController.takeValues()};
  writeMisc(snapshot.flags);
  return snapshot;
}

void Controllable::writeStateContent(const StateSnapshot& snapshot, std::vector<std::uint8_t>& out) const {
  const auto append = [&out](std::span<const std::uint8_t> bytes) {
    out.insert(out.end(), bytes.begin(), bytes.end());
  };
  const std::size_t engineBytes = snapshot.engine.changing.size() + snapshot.engine.constant.size();
  const std::size_t bankBytes = ownController.programs().databaseByteSize(Bank::factory);
  const std::size_t head = out.size();
  out.reserve(head + engineBytes + bankBytes + kExpectedRest);
  out.resize(head + vst::kContentHeadBytes);
  append(snapshot.flags);
  append(snapshot.engine.changing);
  append(snapshot.engine.constant);
  const std::size_t macros = out.size();
  ownController.writeChunk(snapshot.macros, out);
  const auto words = vst::contentHead(snapshot.flags.size(), engineBytes, out.size() - macros);
  std::copy(words.begin(), words.end(), out.begin() + static_cast<std::ptrdiff_t>(head));
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
