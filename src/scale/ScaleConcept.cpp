// Inversion and transposition of chords, and the octave flags of most scales.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "scale/ScaleConcept.h"

namespace scale {
namespace {

constexpr std::int32_t floorDivide(std::int32_t a, std::int32_t b) { return a / b - (a % b < 0 ? 1 : 0); }

}  // namespace

const OctaveFlags& ScaleConcept::octaveFlags() const {
  static constexpr OctaveFlags kAllFollow{};
  return kAllFollow;
}

void invertChord(ChordRecord& record, std::int32_t inversion) {
  if (record.count <= 0) {
    return;
  }
  const ChordRecord old = record;
  for (std::int32_t k = 0; k < old.count; ++k) {
    const std::int32_t lifted = floorDivide(k + inversion, old.count);
    const std::int32_t source = k + inversion - old.count * lifted;
    const std::int32_t note = 12 * lifted + old.notes[static_cast<std::size_t>(source)];
    record.notes[static_cast<std::size_t>(k)] = static_cast<std::uint16_t>(note);
  }
}

void transposeNotes(ChordRecord& record, std::int32_t semitones) {
  for (std::uint16_t& note : record.notes) {
    note = static_cast<std::uint16_t>(note + static_cast<std::uint32_t>(semitones));
  }
}

}  // namespace scale
