// The Marlo family: chorus, phase and ensemble, three ways to read two moving delay lines, in single precision.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>

#include "core/RealTime.h"
#include "effects/interfaces/AtomicWord.h"
#include "effects/interfaces/PendingSettings.h"
#include "effects/interfaces/SivrayFx.h"

namespace tesh::bramel::plugin::sivray::effects {

/// "Marlo Chorus", "Marlo Phase" and "Marlo Ensemble": Edit1 is the speed (the depth of the ensemble), Edit2 the
/// spread. It has no immediate mode: its own smoothing runs on.
class SivrayFxIMarloEffects : public SivrayFx {
 public:
  /// `mode` is 1 for chorus, 2 for phase, and 3 for ensemble.
  explicit SivrayFxIMarloEffects(int mode);

  void process(StereoBlock& block, unsigned count) override;
  int setParameter(unsigned index, int value) override;
  void reset() override;
  void setImmediate(bool) override {}
  void notify(int code) override;

 private:
  static constexpr std::size_t kLineLength = 4096;

  /// The two knobs on 0.0 .. 1.0.
  struct Settings {
    float speed = 0.0F;
    float spread = 0.0F;
  };

  /// A one-pole highpass on an input that is scaled first.
  struct Highpass {
    float previousInput = 0.0F;
    float output = 0.0F;

    float run(float x, float coefficient, float inputScale);
  };

  struct Channel {
    /// The last entry always copies entry 0, so that interpolation may read one past the end.
    std::array<float, kLineLength + 1> line{};
    float lfo = 0.0F;
    Highpass dry;
    Highpass wet;

    void write(std::size_t at, float x);
    float read(float position) const;
    float followTriangle(float lfoPhase);
  };

  /// One value per ensemble voice, and a fourth that copies the last voice and is not heard.
  using Voices = float __attribute__((vector_size(16)));

  /// Phases of the ensemble voices, fast and slow, on -2 .. 2.
  struct Bank {
    Voices fast;
    Voices slow;
  };

  void takeSettings();
  void advance();
  float rightPhase() const;
  float chorus(Channel& channel, float lfoPhase, float x) const SIVRAY_NONBLOCKING;
  float phaser(Channel& channel, float lfoPhase, float x) const SIVRAY_NONBLOCKING;
  float ensemble(const Channel& channel, const Bank& bank) const;
  void advanceEnsemble();

  template <int kMode>
  void render(std::int16_t* left, std::int16_t* right, unsigned count);

  const int mode;
  Relaxed<int> edit1 = 0;
  Relaxed<int> edit2 = 0;
  Settings live;
  PendingSettings<Settings> pending{Settings{}, true};
  std::size_t writeIndex = 0;
  float rate = 0.0F;  ///< Cycles per sample.
  float depthStep = 0.0F;
  float spreadStep = 0.0F;
  float depthSmooth = 0.0F;
  float spreadSmooth = 0.0F;
  float phase = 0.0F;
  Channel leftChannel;
  Channel rightChannel;
  Bank leftBank;
  Bank rightBank;
};

}  // namespace tesh::bramel::plugin::sivray::effects
