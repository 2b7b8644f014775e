// The change of a pad's wave: three steps with the interface of a parameter group, and the object that runs them in
// order. A group has one parameter per pad, whose value is a wave number. Values can be set but not read.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <vector>

#include "core/RealTime.h"
#include "engine/samples/PcmFile.h"
#include "engine/samples/PcmPool.h"
#include "engine/samples/WaveReading.h"
#include "parameters/IParameter.h"

namespace tesh::bramel::plugin::sivray {

/// The base of the steps. `setValue` runs the step for a pad, and ignores a pad out of range.
class WaveChangeStep : public IParameter {
 public:
  explicit WaveChangeStep(PcmPool& sampleMemory) : pool(sampleMemory) {}

  int count() const override { return static_cast<int>(pool.slotCount()); }
  int setValue(int pad, std::int32_t* wave) override;
  std::int32_t value(int) const override { return 0; }
  std::string format(int, std::int32_t) const override { return {}; }
  const ParameterRow* info(int) const override { return nullptr; }
  int indexOf(std::string_view) const override { return 0; }

 protected:
  virtual void run(std::size_t pad, std::int32_t wave) SIVRAY_NONBLOCKING = 0;

  PcmPool& pool;
};

/// Empties the pad's slot, so that a voice which starts during the read finds length 0.
class PrepareWaveChange final : public WaveChangeStep {
 public:
  using WaveChangeStep::WaveChangeStep;

 protected:
  void run(std::size_t pad, std::int32_t wave) SIVRAY_NONBLOCKING override;
};

/// Told when a slot's memory lies elsewhere from now on; `from` and `to` are the places of its first frame, see
/// PcmPool::frameOf.
class SlotMoveListener {
 public:
  virtual ~SlotMoveListener() = default;
  virtual void slotMoved(std::int32_t from, std::int32_t to) SIVRAY_NONBLOCKING = 0;
};

/// Takes the memory into which `prepare` has read the wave, or begins to read it into the pad's own. Then the pieces
/// that voices are about to play are read when they need them, the others one by one between the blocks. Voices that
/// play from the memory do not notice and read the new samples from then on; no voice runs during the step, since it
/// runs on the audio thread or under the lock of a block. A wave number that names nothing playable reads the first
/// sample of the file.
class PCMLoadTask final : public WaveChangeStep {
 public:
  /// `moveListener`, null for nobody, must outlive the step.
  PCMLoadTask(PcmPool& sampleMemory, PcmFile& sampleFile, SlotMoveListener* moveListener = nullptr)
      : WaveChangeStep(sampleMemory), file(sampleFile), listener(moveListener), readings(sampleMemory.slotCount()) {}

  /// Reads the wave into the pad's spare memory, so that the step only has to exchange both. Any thread but the audio
  /// thread, also during the step. `pad` must exist.
  void prepare(std::size_t pad, std::int32_t wave);

  // On the thread that changes waves and plays them, like the step:

  /// Whether the memory of a pad lacks pieces.
  bool isReading() const { return openReadings != 0; }
  /// Reads what the memory that begins at the frame `base`, see PcmPool::frameOf, lacks of `first` to `last`.
  void need(std::int32_t base, std::size_t first, std::size_t last) SIVRAY_NONBLOCKING;
  /// Reads one missing piece.
  void readOn() SIVRAY_NONBLOCKING;
  /// Reads all missing pieces.
  void finish();

 protected:
  void run(std::size_t pad, std::int32_t wave) SIVRAY_NONBLOCKING override;

 private:
  WaveStretch stretchOf(std::int32_t wave) const SIVRAY_NONBLOCKING;
  void begin(std::size_t pad, std::int32_t wave);
  void settle(std::size_t pad) SIVRAY_NONBLOCKING;
  void countReadings() SIVRAY_NONBLOCKING;

  PcmFile& file;
  SlotMoveListener* listener;
  std::vector<WaveReading> readings;  ///< Of each pad.
  std::size_t openReadings = 0;
  std::size_t latestPad = 0;  ///< Whose turn it was in `readOn`.
  std::mutex prepareMutex;    ///< One `prepare` at a time.
};

/// Marks the slot as filled. Voices only look at its length.
class PCMLoadAck final : public WaveChangeStep {
 public:
  using WaveChangeStep::WaveChangeStep;

 protected:
  void run(std::size_t pad, std::int32_t wave) SIVRAY_NONBLOCKING override;
};

/// Runs the three steps on the calling thread, one after the other.
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
