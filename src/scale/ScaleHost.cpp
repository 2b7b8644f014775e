// The setters, the tables that they rebuild, and the notes and chords of keys.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "scale/ScaleHost.h"

#include <algorithm>

#include "scale/Scales.h"

namespace scale {
namespace {

std::array<std::unique_ptr<ScaleConcept>, kScaleCount> makeCatalogue() {
  return {
      std::make_unique<ChromaticScale>(),       std::make_unique<IonianScale>(),
      std::make_unique<DorianScale>(),          std::make_unique<PhrygianScale>(),
      std::make_unique<LydianScale>(),          std::make_unique<MixolydianScale>(),
      std::make_unique<AeolianScale>(),         std::make_unique<LocrianScale>(),
      std::make_unique<HarmonicMinorScale>(),   std::make_unique<MelodicMinorScale>(),
      std::make_unique<MajorBluesScale>(),      std::make_unique<MinorBluesScale>(),
      std::make_unique<DiminishScale>(),        std::make_unique<CombinationDiminishScale>(),
      std::make_unique<MajorPentatonicScale>(), std::make_unique<MinorPentatonicScale>(),
      std::make_unique<RagaBhairavScale>(),     std::make_unique<RagaGamanasramaScale>(),
      std::make_unique<RagaTodiScale>(),        std::make_unique<ArabicScale>(),
      std::make_unique<SpanishScale>(),         std::make_unique<GypsyScale>(),
      std::make_unique<EgyptianScale>(),        std::make_unique<HawaiianScale>(),
      std::make_unique<BaliIslandPelogScale>(), std::make_unique<JapaneseScale>(),
      std::make_unique<RyukyuScale>(),          std::make_unique<ChineseScale>(),
      std::make_unique<BassLineScale>(),        std::make_unique<WholeToneScale>(),
      std::make_unique<Minor3rdScale>(),        std::make_unique<Major3rdScale>(),
      std::make_unique<Interval4thScale>(),     std::make_unique<Interval5thScale>(),
      std::make_unique<OctaveScale>(),
  };
}

}  // namespace

const char* scaleName(std::int32_t index) {
  const auto last = static_cast<std::int32_t>(kScaleCount) - 1;
  return kScaleTables[static_cast<std::size_t>(std::clamp(index, 0, last))].name;
}

ScaleHost::ScaleHost(ScaleHostListener* hostListener) : listener(hostListener), scales(makeCatalogue()) {
  for (std::vector<std::int32_t>* table : {&degrees, &notes}) {
    table->reserve(kMostDegrees);
  }
  chords.reserve(kMostDegrees);
  setScale(0);
}

void ScaleHost::setScale(std::int32_t index) {
  if (index < 0 || index >= static_cast<std::int32_t>(kScaleCount)) {
    return;
  }
  currentScale = index;
  keysPerOctave = std::min<std::uint64_t>(currentConcept().noteCount(), ceiling);
  rebuild();
  tell(&ScaleHostListener::scaleChanged);
}

void ScaleHost::setKey(std::uint32_t key) {
  root = key;
  tell(&ScaleHostListener::keyChanged);
}

void ScaleHost::setOctave(std::int32_t newOctave) {
  viewOctave = newOctave;
  tell(&ScaleHostListener::octaveChanged);
}

void ScaleHost::setKeyRange(std::uint64_t range) {
  viewKeyRange = range;
  tell(&ScaleHostListener::keyRangeChanged);
}

void ScaleHost::setNoteCount(std::uint64_t count) {
  if (count < 1) {
    return;
  }
  ceiling = std::min<std::uint64_t>(count, currentConcept().noteCount());
  keysPerOctave = ceiling;
  rebuild();
  tell(&ScaleHostListener::noteCountChanged);
}

void ScaleHost::setChordMode(bool on) {
  viewChordMode = on;
  tell(&ScaleHostListener::chordModeChanged);
}

std::int32_t ScaleHost::noteForKey(std::int32_t key, std::int32_t octaveOffset) const {
  const auto keys = static_cast<std::int32_t>(keysPerOctave);
  const std::int32_t from = std::max(key, 0);
  // In 64 bits: a key or a root past all notes wraps, and signed overflow would be undefined.
  const std::int64_t lift = 12 * (std::int64_t{from / keys} + octaveOffset) + root;
  return static_cast<std::int32_t>(notes[static_cast<std::size_t>(from % keys)] + lift);
}

ChordRecord ScaleHost::chordForKey(std::int32_t key, std::int32_t octaveOffset) const {
  const auto keys = static_cast<std::int32_t>(keysPerOctave);
  const std::int32_t from = std::max(key, 0);
  ChordRecord record = chords[static_cast<std::size_t>(from % keys)];
  transposeNotes(record, static_cast<std::int32_t>(root));
  const std::int64_t lift = 12 * (std::int64_t{octaveOffset} + from / keys);
  record.bass = static_cast<std::int32_t>(record.bass + lift + root);
  const OctaveFlags& stays = currentConcept().octaveFlags();
  for (std::size_t k = 0; k < static_cast<std::size_t>(record.count); ++k) {
    if (stays[k] == 0) {
      record.notes[k] = static_cast<std::uint16_t>(record.notes[k] + lift);
    }
  }
  // Every chord of the tables has all four notes.
  std::ranges::sort(record.notes);
  const auto end = std::unique(record.notes.begin(), record.notes.end());
  record.count = static_cast<std::int32_t>(end - record.notes.begin());
  return record;
}

void ScaleHost::rebuild() {
  const ScaleConcept& now = currentConcept();
  const auto size = static_cast<std::size_t>(keysPerOctave);
  degrees.assign(now.chordOrder(), now.chordOrder() + size);
  notes.resize(size);
  chords.resize(size);
  for (std::size_t k = 0; k < size; ++k) {
    notes[k] = now.interval(now.keyOrder()[k]);
    chords[k] = now.chord(degrees[k]);
  }
  std::sort(degrees.begin(), degrees.end());
  std::sort(notes.begin(), notes.end());
  std::sort(chords.begin(), chords.end(), [](const ChordRecord& a, const ChordRecord& b) { return a.bass < b.bass; });
}

void ScaleHost::tell(void (ScaleHostListener::*event)()) {
  if (listener != nullptr) {
    (listener->*event)();
  }
}

}  // namespace scale
