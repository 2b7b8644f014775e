// What the law of an effect must have, so that the frame of TwoKnobEffect.h can run it. A law is a struct that holds
// what one sample hands to the next. It says in `kParts` which parts it has; the frame refuses to compile where that is
// not so, where a part is incomplete, and where it finds a part that the law does not name.
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

/// Samples that the longest lanes compute at once. Feedback must be at least that old.
inline constexpr int kMostLanes = 16;

/// The vector registers in which a law can run.
enum class LaneParts : std::uint8_t { none, avx2, baselineAndAvx2 };

/// The optional parts of a law.
struct LawParts {
  std::optional<Knobs> start{};       ///< Knobs at construction. Without them Settings{} counts at first.
  bool followsTempo = false;          ///< The tempo changes the settings.
  bool resetTakesPending = false;     ///< A reset takes pending settings first.
  std::optional<int> otherRestart{};  ///< A transport code that resets, beside kRestart.
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

/// One sample of one channel, with a state for each: they share nothing, so that each may run alone while no value
/// moves.
template <typename Law>
concept StepsSides = requires(Law law, const typename Law::Settings& to, std::int16_t& sample) {
  law.stepSide(to, law.left, sample);
  law.stepSide(to, law.right, sample);
};

template <typename Law>
concept EffectLaw = requires(Law law, const typename Law::Settings& to, const Knobs& knobs) {
  /// What the knobs set. Any thread.
  { Law::settingsOf(knobs) } -> std::same_as<typename Law::Settings>;
  /// Clears the sound. Smoothed values are on their targets by then.
  law.reset(to);
  { Law::kParts } -> std::same_as<const LawParts&>;
} && (StepsBoth<Law> != StepsSides<Law>);

/// Before every 64 samples, with whether values jump.
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
  /// Whether a further glide would move nothing.
  { resting.restsAt(to, immediate) } -> std::same_as<bool>;
  /// One sample towards the settings.
  law.glide(to, immediate);
};

template <typename Law>
concept GlidingLaw = VisitsSmoothed<Law> != GlidesItself<Law>;

/// Computes what is costly after smoothed values have moved.
template <typename Law>
concept DerivingLaw = requires(Law law) { law.derive(); };

/// Runs as many of the samples as fill whole registers, in place, and returns their number.
template <typename Law>
using RunInLanes = unsigned (*)(Law& law, std::int16_t* left, std::int16_t* right, unsigned count) SIVRAY_NONBLOCKING;

/// Runs in lanes while its values rest. What is left of a run goes to shorter registers, and what is left by those to
/// the step.
template <typename Law>
concept LaneLaw = requires(Law& law, const Law& resting, const typename Law::Settings& to, std::int16_t* samples) {
  /// Whether no feedback is shorter than kMostLanes and all else rests too.
  { resting.fitsLanes(to) } -> std::same_as<bool>;
  { Law::runAvx2(law, samples, samples, 1U) } -> std::same_as<unsigned>;
  requires Law::kParts.lanes == LaneParts::avx2 || requires {
    { Law::runBaseline(law, samples, samples, 1U) } -> std::same_as<unsigned>;
  };
};

/// Answers silence with silence once its memory is zero. Then the frame skips silent blocks while the settings rest.
template <typename Law>
concept SleepingLaw = requires(Law law, const Law& resting, const typename Law::Settings& to, unsigned count) {
  /// Whether all that sounds is zero in the state, and in what the last `count` samples (at most 64) have put into the
  /// lines.
  { resting.isSilent(count) } -> std::same_as<bool>;
  /// Moves indices, clocks and followers by `count` silent samples.
  law.skip(to, count);
};

/// Keeps delay lines in the shared pool: one after another, each a ring into which every sample writes one.
template <typename Law>
concept BorrowingLaw = requires(Law law, std::int16_t* area) {
  { Law::kRequiredSamples } -> std::same_as<const std::size_t&>;
  { Law::kLineLength } -> std::same_as<const unsigned&>;
  law.lines = area;
  /// Where the next sample writes.
  { law.writeIndex } -> std::same_as<unsigned&>;
};

// Whether a law has anything that belongs to a part.
template <typename Law>
concept NamesGlide = VisitsSmoothed<Law> || requires { &Law::restsAt; } || requires { &Law::glide; };
template <typename Law>
concept NamesBaseline = requires { &Law::runBaseline; };
template <typename Law>
concept NamesLanes = NamesBaseline<Law> || requires { &Law::fitsLanes; } || requires { &Law::runAvx2; };
template <typename Law>
concept NamesSleep = requires { &Law::isSilent; } || requires { &Law::skip; };
// clang-format on

/// Whether each part is there, complete, if the law says so, and not there at all otherwise.
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
