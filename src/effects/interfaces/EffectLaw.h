// The interface of an effect's law, its algorithm for one sample, which the frame in TwoKnobEffect.h runs. A law is a
// struct that holds the state between two samples. Its `kParts` states which optional features it has. The frame does
// not compile if a stated feature is missing or incomplete, or if the law has a feature that it does not state.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "effects/interfaces/Knobs.h"
#include "effects/interfaces/SivrayFx.h"
#include "effects/interfaces/SmoothedValue.h"

namespace tesh::bramel::plugin::sivray::effects {

/// The most samples that lanes compute at once. Feedback must be at least that old.
inline constexpr int kMostLanes = 16;

/// The vector registers in which a law can run.
enum class LaneParts : std::uint8_t { none, avx2, baselineAndAvx2 };

/// The optional features of a law.
struct LawParts {
  std::optional<Knobs> start{};       ///< Knobs at construction; without them the initial settings are Settings{}.
  bool followsTempo = false;          ///< The settings depend on the tempo.
  bool resetTakesPending = false;     ///< A reset first applies pending settings.
  std::optional<int> otherRestart{};  ///< A second transport code that resets, besides kRestart.
  bool aims = false;                  ///< See AimingLaw.
  bool glides = false;                ///< See GlidingLaw.
  bool derives = false;               ///< See DerivingLaw.
  LaneParts lanes = LaneParts::none;  ///< See LaneLaw.
  /// See SleepingLaw. Silent samples that fill its longest line; 0 without lines.
  std::optional<unsigned> sleepsAfter{};
};

// clang-format off
/// One sample of both channels, in place.
template <typename Law>
concept StepsBoth = requires(Law law, const typename Law::Settings& to, std::int16_t& sample) {
  law.step(to, sample, sample);
};

/// One sample of one channel, with separate state per channel: the channels share nothing, so each may run alone while
/// no smoothed value moves.
template <typename Law>
concept StepsSides = requires(Law law, const typename Law::Settings& to, std::int16_t& sample) {
  law.stepSide(to, law.left, sample);
  law.stepSide(to, law.right, sample);
};

template <typename Law>
concept EffectLaw = requires(Law law, const typename Law::Settings& to, const Knobs& knobs) {
  /// The settings for knob values. Any thread.
  { Law::settingsOf(knobs) } -> std::same_as<typename Law::Settings>;
  /// Clears the sound. Smoothed values have already been set to their targets.
  law.reset(to);
  { Law::kParts } -> std::same_as<const LawParts&>;
} && (StepsBoth<Law> != StepsSides<Law>);

/// Called before every 64 samples, and told whether values jump.
template <typename Law>
concept AimingLaw = requires(Law law, const typename Law::Settings& to, bool immediate) { law.aim(to, immediate); };

/// Calls visit(value, target) for each smoothed value.
template <typename Law>
concept VisitsSmoothed = requires(Law law, const typename Law::Settings& to, void (&visit)(SmoothedValue&, int)) {
  law.eachSmoothed(to, visit);
};

/// Smooths its values in its own way.
template <typename Law>
concept GlidesItself = requires(Law law, const Law& resting, const typename Law::Settings& to, bool immediate) {
  /// Whether smoothing would not change any value.
  { resting.restsAt(to, immediate) } -> std::same_as<bool>;
  /// Moves the values by one sample towards the settings.
  law.glide(to, immediate);
};

template <typename Law>
concept GlidingLaw = VisitsSmoothed<Law> != GlidesItself<Law>;

/// Computes costly values after smoothed values have moved.
template <typename Law>
concept DerivingLaw = requires(Law law) { law.derive(); };

/// Processes as many of the samples as fill whole registers, in place, and returns their number.
template <typename Law>
using RunInLanes = unsigned (*)(Law& law, std::int16_t* left, std::int16_t* right, unsigned count) SIVRAY_NONBLOCKING;

/// Runs in lanes while its values are at rest. The rest of a run goes to shorter registers, and the rest of that to the
/// step.
template <typename Law>
concept LaneLaw = requires(Law& law, const Law& resting, const typename Law::Settings& to, std::int16_t* samples) {
  /// Whether no feedback is shorter than kMostLanes and all other values are at rest too.
  { resting.fitsLanes(to) } -> std::same_as<bool>;
  { Law::runAvx2(law, samples, samples, 1U) } -> std::same_as<unsigned>;
  requires Law::kParts.lanes == LaneParts::avx2 || requires {
    { Law::runBaseline(law, samples, samples, 1U) } -> std::same_as<unsigned>;
  };
};

/// Once its memory is zero, silent input gives silent output. The frame then skips silent blocks while the settings are
/// at rest.
template <typename Law>
concept SleepingLaw = requires(Law law, const Law& resting, const typename Law::Settings& to, unsigned count) {
  /// Whether the state is zero, and so is everything that the last `count` samples (at most 64) wrote to the lines.
  { resting.isSilent(count) } -> std::same_as<bool>;
  /// Advances indices, clocks and followers by `count` silent samples.
  law.skip(to, count);
};

/// Has delay lines in the shared pool, one after another, each a ring to which every sample writes one sample.
template <typename Law>
concept BorrowingLaw = requires(Law law, std::int16_t* area) {
  { Law::kRequiredSamples } -> std::same_as<const std::size_t&>;
  { Law::kLineLength } -> std::same_as<const unsigned&>;
  law.lines = area;
  /// Where the next sample writes.
  { law.writeIndex } -> std::same_as<unsigned&>;
};

// Whether a law has anything that belongs to a feature.
template <typename Law>
concept NamesGlide = VisitsSmoothed<Law> || requires { &Law::restsAt; } || requires { &Law::glide; };
template <typename Law>
concept NamesBaseline = requires { &Law::runBaseline; };
template <typename Law>
concept NamesLanes = NamesBaseline<Law> || requires { &Law::fitsLanes; } || requires { &Law::runAvx2; };
template <typename Law>
concept NamesSleep = requires { &Law::isSilent; } || requires { &Law::skip; };
// clang-format on

/// Whether each stated feature is complete, and no other is present.
template <EffectLaw Law>
consteval bool keepsItsParts() {
  constexpr LawParts kParts = Law::kParts;
  static_assert(kParts.aims == AimingLaw<Law>, "the law says otherwise whether it aims");
  static_assert(kParts.glides ? GlidingLaw<Law> : !NamesGlide<Law>, "the law says otherwise whether it glides");
  static_assert(kParts.derives == DerivingLaw<Law>, "the law says otherwise whether it derives");
  if constexpr (kParts.lanes == LaneParts::none) {
    static_assert(!NamesLanes<Law>, "the law says that it has no lanes");
  } else {
    static_assert(LaneLaw<Law>, "the law says that it runs in lanes");
    static_assert((kParts.lanes == LaneParts::avx2) != NamesBaseline<Law>,
                  "the law says otherwise in which lanes it runs");
  }
  static_assert(kParts.sleepsAfter ? SleepingLaw<Law> : !NamesSleep<Law>, "the law says otherwise whether it sleeps");
  return true;
}

}  // namespace tesh::bramel::plugin::sivray::effects
