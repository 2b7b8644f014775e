// The change of a pad's wave, as the engine's parameters trigger it: three steps with the interface of a parameter
// group, and the object that runs them in order. A group has one parameter per pad, whose value is a wave number.
// Values can be set but not read.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "core/RealTime.h"
#include "engine/samples/PadWaves.h"
#include "parameters/IParameter.h"

namespace tesh::bramel::plugin::sivray {

/// The base of the steps. `setValue` runs the step for a pad, and ignores a pad out of range.
class WaveChangeStep : public IParameter {
 public:
  explicit WaveChangeStep(PadWaves& padWaves) : waves(padWaves) {}

  int count() const override { return static_cast<int>(waves.pool().slotCount()); }
  int setValue(int pad, std::int32_t* wave) override;
  std::int32_t value(int) const override { return 0; }
  std::string format(int, std::int32_t) const override { return {}; }
  const ParameterRow* info(int) const override { return nullptr; }
  int indexOf(std::string_view) const override { return 0; }

 protected:
  virtual void run(std::size_t pad, std::int32_t wave) SIVRAY_NONBLOCKING = 0;

  PadWaves& waves;
};

/// Empties the pad's slot, so that a voice which starts during the read finds length 0.
class PrepareWaveChange final : public WaveChangeStep {
 public:
  using WaveChangeStep::WaveChangeStep;

 protected:
  void run(std::size_t pad, std::int32_t wave) SIVRAY_NONBLOCKING override;
};

/// Gives the pad its wave.
class PCMLoadTask final : public WaveChangeStep {
 public:
  /// `voiceBases` holds, for each voice, the frame number of the memory that it plays from, and `voicePads` the pad of
  /// that memory; both have the same length. When a memory moves, `voiceBases` is updated.
  explicit PCMLoadTask(PadWaves& padWaves, std::span<std::int32_t> voiceBases = {},
                       std::span<const std::int32_t> voicePads = {})
      : WaveChangeStep(padWaves), bases(voiceBases), pads(voicePads) {}

 protected:
  void run(std::size_t pad, std::int32_t wave) SIVRAY_NONBLOCKING override;

 private:
  std::span<std::int32_t> bases;
  std::span<const std::int32_t> pads;
};

/// Marks the slot as filled. No voice reads this mark: voices only check the slot's length.
class PCMLoadAck final : public WaveChangeStep {
 public:
  using WaveChangeStep::WaveChangeStep;

 protected:
  void run(std::size_t pad, std::int32_t wave) SIVRAY_NONBLOCKING override;
};

/// Runs the three steps one after the other on the calling thread.
class ThroughBack final : public IParameter {
 public:
  ThroughBack(PrepareWaveChange& first, PCMLoadTask& second, PCMLoadAck& third)
      : prepare(first), load(second), acknowledge(third) {}

  int count() const override { return load.count(); }
  int setValue(int pad, std::int32_t* wave) override;
  std::int32_t value(int pad) const override { return load.value(pad); }
  std::string format(int pad, std::int32_t wave) const override { return load.format(pad, wave); }
  const ParameterRow* info(int pad) const override { return load.info(pad); }
  int indexOf(std::string_view name) const override { return load.indexOf(name); }

 private:
  PrepareWaveChange& prepare;
  PCMLoadTask& load;
  PCMLoadAck& acknowledge;
};

}  // namespace tesh::bramel::plugin::sivray
