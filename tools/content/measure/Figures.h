// The figures of a hit: how it starts and decays, where its energy lies, and how dense its spectrum is.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

#include "content/measure/Hit.h"
#include "sheet/Spectrum.h"

namespace sivray::content {

enum class Figure : std::size_t {
  attack,        ///< From 10 to 90 % of the peak of the level.
  fall20,        ///< From the peak of the level until it stays 20 dB below it.
  fall60,        ///< As fall20, with 60 dB.
  lowFall20,     ///< As fall20, of the band from 40 to 250 Hz.
  midFall20,     ///< As fall20, of the band from 250 to 2000 Hz.
  highFall20,    ///< As fall20, of the band from 2 to 8 kHz.
  airFall20,     ///< As fall20, of the band from 8 to 18 kHz.
  tail,          ///< Level between 250 and 500 ms, relative to the peak.
  energySub,     ///< Energy below 60 Hz, relative to the whole hit; the next six are of higher bands.
  energyBass,    ///< 60 to 120 Hz.
  energyLow,     ///< 120 to 250 Hz.
  energyMid,     ///< 250 to 2000 Hz.
  energyHigh,    ///< 2 to 6 kHz.
  energyBright,  ///< 6 to 12 kHz.
  energyAir,     ///< Above 12 kHz.
  centroid,      ///< The mean frequency, weighted by energy.
  peakHertz,     ///< The strongest frequency.
  toneFall60,    ///< Time in which the strongest frequency below 2 kHz falls 60 dB, from its slope.
  secondMode,    ///< Level of the strongest frequency between 1.25 and 3.3 times the strongest one below 2 kHz.
  peaks,         ///< Number of spectral peaks within 30 dB of the strongest, up to 4 kHz.
  ringing,       ///< The strongest frequency over the median, from 300 to 3000 Hz.
  ringingHigh,   ///< As ringing, from 3 to 12 kHz.
  ripple,        ///< Roughness of the level from 2 to 8 kHz, in steps of 10 ms.
  echoes,        ///< Number of times that the level rises by 3 dB or more from 4 to 30 ms: early reflections.
  body,          ///< Energy from 5 to 50 ms relative to that of the first 5 ms, 250 to 8000 Hz.
  rise,          ///< As attack, measured with an envelope twice as fine, which shows a beater's contact.
  crest,         ///< The highest sample over the loudest 50 ms.
  lateCentroid,  ///< The mean frequency from 200 to 800 ms, weighted by energy.
  flatness,      ///< The geometric over the arithmetic mean of the power, 2 to 12 kHz: white noise is at -2.5 dB.
};

inline constexpr std::size_t kFigures = 29;

struct FigureName {
  std::string_view name;
  std::string_view unit;
};

/// Names in the order of Figure, as the command prints them.
extern const std::array<FigureName, kFigures> kFigureNames;

using Figures = std::array<double, kFigures>;

/// Measures hits. Keeps its buffers, so each thread needs its own.
class FigureMeter {
 public:
  FigureMeter();

  /// The figures of an empty hit are all 0.
  Figures figuresOf(const Hit& hit);

 private:
  void measureLevels(const Hit& hit, Figures& figures);
  void measureSpectrum(const Hit& hit, Figures& figures);
  void measureLateSpectrum(const Hit& hit, Figures& figures);
  void measurePeaks(const Hit& hit, Figures& figures);
  double toneFall(const Hit& hit, double hertz);

  Spectrum whole;   ///< Of the first 1.5 s.
  Spectrum start;   ///< Of the first 0.19 s.
  Spectrum late;    ///< Of 0.6 s.
  Spectrum moment;  ///< Of 46 ms.
};

}  // namespace sivray::content
