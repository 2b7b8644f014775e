// Builds the processor from the installed content and feeds it in pieces of at most 2048 frames.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "DirectTarget.h"

#include <algorithm>
#include <array>
#include <optional>

#include "core/EngineRate.h"
#include "host/shell/Construction.h"
#include "host/shell/MidiIntake.h"
#include "storage/state/EditBufferRecord.h"

namespace sivray::render {
namespace {

using tesh::bramel::vst::EditBufferRecord;
using tesh::vimo::MacroCommand;
using tesh::vimo::MacroCommandKind;

using tesh::cofu::core::kEngineRate;
constexpr int kLongestPiece = 2048;
constexpr std::size_t kAutomationEntries = 4096;
constexpr std::size_t kEchoEntries = 1024;
constexpr float kStartTempo = 120.0F;
constexpr std::array<std::uint8_t, 3> kTransportStart{0xFA, 0, 0};

}  // namespace

DirectTarget::DirectTarget()
    : processor(tesh::bramel::vst::makeProcessor()),
      automation(kAutomationEntries),
      echoes(kEchoEntries),
      tempo(kStartTempo) {}

double DirectTarget::sampleRate() const { return kEngineRate; }

std::vector<std::uint8_t> DirectTarget::state() {
  flush();
  const auto content = processor->getStateContent();
  return tesh::bramel::vst::packState({.content = {content.begin(), content.end()}});
}

void DirectTarget::setState(std::span<const std::uint8_t> chunk) {
  const std::optional<EditBufferRecord> record = tesh::bramel::vst::unpackState(chunk);
  if (!record) {
    return;
  }
  flush();
  processor->generator().deactivate();
  processor->setStateContent(record->content);
  processor->generator().activate();
  flush();
}

void DirectTarget::start(int) {
  processor->generator().activate();
  midiIn.emplace_back(kTransportStart, 0);
}

void DirectTarget::setTempo(double beatsPerMinute) {
  if (const auto bpm = static_cast<float>(beatsPerMinute); bpm != tempo) {
    tempo = bpm;
    processor->generator().tempoChanged(static_cast<double>(bpm));
  }
}

void DirectTarget::move(const Move& move) {
  MacroCommand command;
  command.kind = move.target == MoveTarget::macro ? MacroCommandKind::setMacro : MacroCommandKind::setParameter;
  command.index = move.index;
  command.value = move.value;
  processor->commandQueue.put(command);
}

void DirectTarget::sendMidi(std::span<const std::uint8_t> bytes, int frame) {
  const auto& controller = processor->controller();
  const auto verdict = tesh::bramel::vst::judgeMidi(
      tesh::bramel::vst::ShortMessage(bytes), [&](std::uint8_t key) -> std::optional<std::uint64_t> {
        const std::int64_t macro = controller.macroForController(key);
        return macro < 0 ? std::nullopt : std::optional(static_cast<std::uint64_t>(macro));
      });
  if (verdict.parameterId) {
    move({.index = static_cast<std::uint32_t>(*verdict.parameterId), .value = verdict.value});
  }
  if (verdict.toEngine) {
    // Short messages are padded to three bytes, as hosts do.
    midiIn.emplace_back(verdict.message.bytes(), static_cast<std::uint32_t>(frame));
  }
}

void DirectTarget::process(float* left, float* right, int frames) {
  for (int done = 0; done < frames; done += kLongestPiece) {
    runBlock(left + done, right + done, std::min(frames - done, kLongestPiece));
  }
}

void DirectTarget::runBlock(float* left, float* right, int frames) {
  std::array<float*, 2> outputs{left, right};
  tesh::vimo::ProcessBlock block;
  block.outputs = outputs.data();
  block.frames = frames;
  block.automationRing = &automation;
  block.notificationRing = &echoes;
  block.midiIn = &midiIn;
  block.midiOut = &midiOut;
  processor->process(block, 0, 1.0, 0.0);
  midiIn.clear();
  midiOut.clear();
}

std::vector<std::string> DirectTarget::hostNames() {
  std::vector<std::string> names;
  const auto& controller = processor->controller();
  for (std::uint64_t macro = 0; macro < controller.macroCount(); ++macro) {
    if (!controller.isHidden(macro)) {
      names.push_back(controller.macroAt(macro)->name());
    }
  }
  return names;
}

}  // namespace sivray::render
