// "BPM Delay": two long lines whose time is a note value, with an inverted feedback from side to side.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/interfaces/AtomicWord.h"
#include "effects/interfaces/SivrayFx.h"
#include "effects/interfaces/SivrayFxMemoryUser.h"
#include "effects/interfaces/SmoothedValue.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Edit1 chooses the note, Edit2 the feedback. A note that does not fit the line at the tempo gives way to the longest
/// that does. Its settings are single words, which the audio thread reads as they come.
class SivrayFxBpmSyncDelay : public SivrayFx, public SivrayFxMemoryUser {
 public:
  void process(StereoBlock& block, unsigned count) override;
  int setParameter(unsigned index, int value) override;

  /// The fraction of a beat per minute is dropped; below 1 counts as 1.
  void setTempo(int tempoTenths) override;

  void reset() override;
  void setImmediate(bool on) override { immediate = on; }
  void notify(int code) override;
  std::size_t requiredSamples() const override { return 2 * kLineLength; }

 private:
  static constexpr unsigned kLineLength = 131072;
  static constexpr unsigned kMask = kLineLength - 1;

  /// Where the settings stand during one block.
  struct Targets {
    std::int32_t inputGain;
    std::int32_t feedback;
    std::int32_t time;
  };

  /// What one sample hands to the next.
  struct Flow {
    SmoothedValue inputGain;
    SmoothedValue feedback;
    std::int32_t time = 0;     ///< Samples with 12 fractional bits.
    std::int32_t tapLeft = 0;  ///< Last delayed sample, times the feedback.
    std::int32_t tapRight = 0;
    unsigned writeIndex = 0;
  };

  void computeTime();
  void computeFeedback();

  Relaxed<int> edit1{0};
  Relaxed<int> edit2{0};
  Relaxed<int> bpm{120};
  Relaxed<unsigned> noteLimit{13};  ///< Longest note index that fits the line.

  Relaxed<std::int32_t> inputGain{32767};  ///< Q15.
  Relaxed<std::int32_t> feedback{0};       ///< Q15.
  Relaxed<std::int32_t> timeTarget{0};     ///< Samples.

  Flow flow;
  std::int16_t* lines = nullptr;  ///< The line of the right output, then that of the left.
  bool immediate = false;
};

}  // namespace tesh::bramel::plugin::sivray::effects
