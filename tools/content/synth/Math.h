// Elementary functions that give the same bits on every machine: polynomials in plain double arithmetic. The functions
// of the C library choose their code by processor, so none that rounds differently may reach a sample.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>

#include "core/EngineRate.h"

namespace sivray::content {

inline constexpr double kSampleRate = tesh::cofu::core::kEngineRate;

/// The sine of an angle given in turns; one turn is a full circle. Good to 1e-13 for angles below a million turns.
double sineOfTurns(double turns);
double cosineOfTurns(double turns);

/// Two to the power of `x`, from -1000 to 1000.
double powerOfTwo(double x);

/// The logarithm to the base of two of a positive number.
double logarithmOfTwo(double x);

/// A positive number to a power.
double power(double base, double exponent);

/// e to the power of `x`.
double exponential(double x);

/// The factor of a level difference in decibels.
double factorOfDecibels(double decibels);

/// The frequency ratio of an interval in semitones.
double ratioOfSemitones(double semitones);

/// The factor that a sound falls by in one frame when it falls 60 dB in `seconds`; 0 for no time at all.
double decayPerFrame(double seconds);

/// A smooth saturation: slope 1 at zero, ±1 at the ends.
double saturate(double x);

/// A saturation that leaves everything below 0.6 as it is; ±1 at the ends.
double softClip(double x);

/// Frames in a time, rounded to the nearest; at least 0.
std::size_t framesOf(double seconds);

}  // namespace sivray::content
