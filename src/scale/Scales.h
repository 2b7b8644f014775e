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

/// A scale whose table gives a chord and its root for each degree.
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

/// Plays a degree over a drone of three notes, which stay when the octave changes.
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

/// Row `kRow` of the tables.
template <typename Family, std::size_t kRow>
class CatalogueScale final : public Family {
 public:
  CatalogueScale() : Family(kScaleTables[kRow]) {}
};

using ChromaticScale = CatalogueScale<UniformChordScale, 0>;
using IonianScale = CatalogueScale<DiatonicScale, 1>;
using DorianScale = CatalogueScale<DiatonicScale, 2>;
using PhrygianScale = CatalogueScale<DiatonicScale, 3>;
using LydianScale = CatalogueScale<DiatonicScale, 4>;
using MixolydianScale = CatalogueScale<DiatonicScale, 5>;
using AeolianScale = CatalogueScale<DiatonicScale, 6>;
using LocrianScale = CatalogueScale<DiatonicScale, 7>;
using HarmonicMinorScale = CatalogueScale<ChordScale, 8>;
using MelodicMinorScale = CatalogueScale<ChordScale, 9>;
using MajorBluesScale = CatalogueScale<ChordScale, 10>;
using MinorBluesScale = CatalogueScale<ChordScale, 11>;
using DiminishScale = CatalogueScale<UniformChordScale, 12>;
using CombinationDiminishScale = CatalogueScale<UniformChordScale, 13>;
using MajorPentatonicScale = CatalogueScale<ChordScale, 14>;
using MinorPentatonicScale = CatalogueScale<ChordScale, 15>;
using RagaBhairavScale = CatalogueScale<RagaScale, 16>;
using RagaGamanasramaScale = CatalogueScale<RagaScale, 17>;
using RagaTodiScale = CatalogueScale<RagaScale, 18>;
using ArabicScale = CatalogueScale<RagaScale, 19>;
using SpanishScale = CatalogueScale<ChordScale, 20>;
using GypsyScale = CatalogueScale<ChordScale, 21>;
using EgyptianScale = CatalogueScale<ChordScale, 22>;
using HawaiianScale = CatalogueScale<ChordScale, 23>;
using BaliIslandPelogScale = CatalogueScale<ChordScale, 24>;
using JapaneseScale = CatalogueScale<ChordScale, 25>;
using RyukyuScale = CatalogueScale<ChordScale, 26>;
using ChineseScale = CatalogueScale<ChordScale, 27>;
using BassLineScale = CatalogueScale<ChordScale, 28>;
using WholeToneScale = CatalogueScale<DiatonicScale, 29>;
using Minor3rdScale = CatalogueScale<DiatonicScale, 30>;
using Major3rdScale = CatalogueScale<DiatonicScale, 31>;
using Interval4thScale = CatalogueScale<DiatonicScale, 32>;
using Interval5thScale = CatalogueScale<DiatonicScale, 33>;
using OctaveScale = CatalogueScale<DiatonicScale, 34>;

}  // namespace scale
