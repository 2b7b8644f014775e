// A law with every member. try_laws.py breaks one after the other and expects the compiler to reject each.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/interfaces/TwoKnobEffect.h"

namespace tesh::bramel::plugin::sivray::effects {

struct CompleteLaw {
  static constexpr LawParts kParts{
      .aims = true, .glides = true, .derives = true, .lanes = LaneParts::baselineAndAvx2, .sleepsAfter = 64};
  static constexpr std::size_t kRequiredSamples = 64;
  static constexpr unsigned kLineLength = 64;

  struct Settings {
    std::int32_t level = 0;
  };

  static Settings settingsOf(const Knobs& knobs);
  void reset(const Settings& to);
  void aim(const Settings& to, bool immediate);
  void eachSmoothed(const Settings& to, auto&& visit) { visit(level, to.level); }
  void derive();
  void step(const Settings& to, std::int16_t& left, std::int16_t& right);
  bool fitsLanes(const Settings& to) const;
  static const RunInLanes<CompleteLaw> runBaseline;
  static const RunInLanes<CompleteLaw> runAvx2;
  bool isSilent(unsigned count) const;
  void skip(const Settings& to, unsigned count);

  SmoothedValue level;
  unsigned writeIndex = 0;
  std::int16_t* lines = nullptr;
};

template class TwoKnobMemoryEffect<CompleteLaw>;

}  // namespace tesh::bramel::plugin::sivray::effects
