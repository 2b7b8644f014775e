// The 35 scales. Each is a row of the tables, read by one of four families that make their chords in different ways.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "scale/ScaleConcept.h"
#include "scale/ScaleTables.h"

namespace scale {

/// A scale whose notes and orders come from a table, which must outlive it.
class TabledScale : public ScaleConcept {
 public:
  explicit TabledScale(const ScaleTable& scaleTable) : table(scaleTable) {}
  std::size_t noteCount() const override { return table.noteCount; }
  std::int32_t interval(std::int32_t degree) const override { return table.intervals[index(degree)]; }
  const std::int32_t* keyOrder() const override { return table.keyOrder.data(); }
  const std::int32_t* chordOrder() const override { return table.chordOrder.data(); }

 protected:
  static std::size_t index(std::int32_t degree) { return static_cast<std::size_t>(degree); }
  const ScaleTable& table;
};

/// The table names a chord for each degree, and the note that it is built on.
class ChordScale : public TabledScale {
 public:
  using TabledScale::TabledScale;
  ChordRecord chord(std::int32_t degree) const override;
  ChordRecord chordVoicing(std::int32_t degree, std::int32_t inversion, std::int32_t noteCount) const override;
  std::int32_t chordRoot(std::int32_t degree) const { return table.chordRoots[index(degree)]; }
  const ChordRow& openChordRow(std::int32_t degree) const;
  const ChordRow& closedChordRow(std::int32_t degree) const;
};

/// Close chords are made of degrees of the scale, such as every second one. Open chords come from the table: one for
/// all degrees (the pattern), or one per degree.
class DiatonicScale : public TabledScale {
 public:
  using TabledScale::TabledScale;
  ChordRecord chord(std::int32_t degree) const override;
  ChordRecord chordVoicing(std::int32_t degree, std::int32_t inversion, std::int32_t noteCount) const override;
  const ChordRow& chordRow(std::int32_t degree) const;
};

/// A degree is played over a drone of three notes, which stay when the octave changes.
class RagaScale : public TabledScale {
 public:
  using TabledScale::TabledScale;
  ChordRecord chord(std::int32_t degree) const override;
  ChordRecord chordVoicing(std::int32_t degree, std::int32_t inversion, std::int32_t noteCount) const override;
  const OctaveFlags& octaveFlags() const override;
};

/// The same form of chord on every degree.
class UniformChordScale : public TabledScale {
 public:
  using TabledScale::TabledScale;
  ChordRecord chord(std::int32_t degree) const override;
  ChordRecord chordVoicing(std::int32_t degree, std::int32_t inversion, std::int32_t noteCount) const override;
};

class ChromaticScale final : public UniformChordScale {
 public:
  ChromaticScale() : UniformChordScale(kScaleTables[0]) {}
};

class DiminishScale final : public UniformChordScale {
 public:
  DiminishScale() : UniformChordScale(kScaleTables[12]) {}
};

class CombinationDiminishScale final : public UniformChordScale {
 public:
  CombinationDiminishScale() : UniformChordScale(kScaleTables[13]) {}
};

class IonianScale final : public DiatonicScale {
 public:
  IonianScale() : DiatonicScale(kScaleTables[1]) {}
};

class DorianScale final : public DiatonicScale {
 public:
  DorianScale() : DiatonicScale(kScaleTables[2]) {}
};

class PhrygianScale final : public DiatonicScale {
 public:
  PhrygianScale() : DiatonicScale(kScaleTables[3]) {}
};

class LydianScale final : public DiatonicScale {
 public:
  LydianScale() : DiatonicScale(kScaleTables[4]) {}
};

class MixolydianScale final : public DiatonicScale {
 public:
  MixolydianScale() : DiatonicScale(kScaleTables[5]) {}
};

class AeolianScale final : public DiatonicScale {
 public:
  AeolianScale() : DiatonicScale(kScaleTables[6]) {}
};

class LocrianScale final : public DiatonicScale {
 public:
  LocrianScale() : DiatonicScale(kScaleTables[7]) {}
};

class HarmonicMinorScale final : public ChordScale {
 public:
  HarmonicMinorScale() : ChordScale(kScaleTables[8]) {}
};

class MelodicMinorScale final : public ChordScale {
 public:
  MelodicMinorScale() : ChordScale(kScaleTables[9]) {}
};

class MajorBluesScale final : public ChordScale {
 public:
  MajorBluesScale() : ChordScale(kScaleTables[10]) {}
};

class MinorBluesScale final : public ChordScale {
 public:
  MinorBluesScale() : ChordScale(kScaleTables[11]) {}
};

class MajorPentatonicScale final : public ChordScale {
 public:
  MajorPentatonicScale() : ChordScale(kScaleTables[14]) {}
};

class MinorPentatonicScale final : public ChordScale {
 public:
  MinorPentatonicScale() : ChordScale(kScaleTables[15]) {}
};

class RagaBhairavScale final : public RagaScale {
 public:
  RagaBhairavScale() : RagaScale(kScaleTables[16]) {}
};

class RagaGamanasramaScale final : public RagaScale {
 public:
  RagaGamanasramaScale() : RagaScale(kScaleTables[17]) {}
};

class RagaTodiScale final : public RagaScale {
 public:
  RagaTodiScale() : RagaScale(kScaleTables[18]) {}
};

class ArabicScale final : public RagaScale {
 public:
  ArabicScale() : RagaScale(kScaleTables[19]) {}
};

class SpanishScale final : public ChordScale {
 public:
  SpanishScale() : ChordScale(kScaleTables[20]) {}
};

class GypsyScale final : public ChordScale {
 public:
  GypsyScale() : ChordScale(kScaleTables[21]) {}
};

class EgyptianScale final : public ChordScale {
 public:
  EgyptianScale() : ChordScale(kScaleTables[22]) {}
};

class HawaiianScale final : public ChordScale {
 public:
  HawaiianScale() : ChordScale(kScaleTables[23]) {}
};

class BaliIslandPelogScale final : public ChordScale {
 public:
  BaliIslandPelogScale() : ChordScale(kScaleTables[24]) {}
};

class JapaneseScale final : public ChordScale {
 public:
  JapaneseScale() : ChordScale(kScaleTables[25]) {}
};

class RyukyuScale final : public ChordScale {
 public:
  RyukyuScale() : ChordScale(kScaleTables[26]) {}
};

class ChineseScale final : public ChordScale {
 public:
  ChineseScale() : ChordScale(kScaleTables[27]) {}
};

class BassLineScale final : public ChordScale {
 public:
  BassLineScale() : ChordScale(kScaleTables[28]) {}
};

class WholeToneScale final : public DiatonicScale {
 public:
  WholeToneScale() : DiatonicScale(kScaleTables[29]) {}
};

class Minor3rdScale final : public DiatonicScale {
 public:
  Minor3rdScale() : DiatonicScale(kScaleTables[30]) {}
};

class Major3rdScale final : public DiatonicScale {
 public:
  Major3rdScale() : DiatonicScale(kScaleTables[31]) {}
};

class Interval4thScale final : public DiatonicScale {
 public:
  Interval4thScale() : DiatonicScale(kScaleTables[32]) {}
};

class Interval5thScale final : public DiatonicScale {
 public:
  Interval5thScale() : DiatonicScale(kScaleTables[33]) {}
};

class OctaveScale final : public DiatonicScale {
 public:
  OctaveScale() : DiatonicScale(kScaleTables[34]) {}
};

}  // namespace scale
