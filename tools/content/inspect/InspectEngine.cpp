// The engine's own chunk: an edit buffer and 128 programs.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/inspect/Inspectors.h"
#include "effects/EffectTable.h"
#include "engine/ProgramBank.h"

namespace sivray::content {
namespace {

namespace engine = tesh::bramel::plugin::sivray;

constexpr std::uint64_t kNameBytes = 32;
constexpr std::size_t kEffectWords = 10;
constexpr std::size_t kPads = 16;
constexpr std::size_t kPlayedPads = 8;
constexpr std::size_t kPadWords = 18;

void inspectRecord(CheckedReader& reader, bool isOlder, Report& report) {
  const CheckedReader start = reader;
  const std::uint32_t version = reader.word("the version of a program");
  if (!isOlder && version != 1) {
    start.fail("a program of the engine has the version 1, not " + std::to_string(version));
  }
  report.addText("name", reader.text(kNameBytes, "the name"));
  CheckedReader effect = reader.part(kEffectWords * 4, "the effect");
  const std::uint32_t type = effect.peek(0);
  const bool isKnown = type < engine::effects::kEffectTypeCount;
  report.addText("effect", isKnown ? engine::effects::effectTypeName(static_cast<int>(type)) : "unknown");
  Report& effectWords = report.add("effectValues", Report::list());
  for (std::size_t i = 0; i < kEffectWords; ++i) {
    effectWords.add(Report::number(effect.word("the effect")));
  }
  Report& pads = report.add("pads", Report::list());
  for (std::size_t pad = 0; pad < kPads; ++pad) {
    CheckedReader words = reader.part(kPadWords * 4, "a pad");
    if (pad >= kPlayedPads) {
      continue;
    }
    Report& row = pads.add(Report::list());
    while (words.remaining() > 0) {
      row.add(Report::number(words.word("a pad")));
    }
  }
  if (!isOlder) {
    report.addNumber("master", reader.word("the master level"));
  }
}

}  // namespace

void inspectEngineChunk(CheckedReader reader, Report& report) {
  report.addText("kind", "engine state");
  const bool isOlder = reader.remaining() == engine::kOlderChunkSize;
  const CheckedReader start = reader;
  const std::uint32_t version = reader.word("the version");
  report.addNumber("version", version);
  if (!isOlder && version != 1) {
    start.fail("there is no engine state of the version " + std::to_string(version));
  }
  report.addText("bankName", reader.text(kNameBytes, "the bank's name"));
  inspectRecord(reader, isOlder, report.add("editBuffer", Report::object()));
  Report& programs = report.add("programs", Report::list());
  for (std::size_t i = 0; i < engine::kPrograms; ++i) {
    inspectRecord(reader, isOlder, programs.add(Report::object()));
  }
  reader.requireEnd("the last program");
}

}  // namespace sivray::content
