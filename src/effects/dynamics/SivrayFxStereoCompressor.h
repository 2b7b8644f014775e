// "Master Compressor": the compressor for a whole mix, with a low and narrow range of sensitivity.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/dynamics/CompressorGain.h"
#include "effects/interfaces/TwoKnobEffect.h"

namespace tesh::bramel::plugin::sivray::effects {

struct SivrayFxStereoCompressor {
  /// Edit1 is the sensitivity, Edit2 the attack.
  struct StereoCompressorImpl {
    static constexpr LawParts kParts{.start = Knobs{50, 0},
                                     .resetTakesPending = true,
                                     .aims = true,
                                     .glides = true,
                                     .derives = true,
                                     .lanes = LaneParts::avx2,
                                     .sleeps = true};

    struct Settings {
      std::int32_t sens;    ///< Q15.
      std::int32_t attack;  ///< Q15 share per sample.
    };

    static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;

    /// Starts from silence. The DC blocks keep their outputs.
    void reset(const Settings&) SIVRAY_NONBLOCKING;
    void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;
    void aim(const Settings& to, bool) { attack = to.attack; }
    static bool fitsLanes(const Settings&) { return true; }
    static unsigned runAvx2(StereoCompressorImpl& law, std::int16_t* left, std::int16_t* right,
                            unsigned count) SIVRAY_NONBLOCKING;

    static constexpr unsigned kMemory = 0;
    bool isSilent(unsigned) const { return law.isSilent(); }
    void skip(const Settings& to, unsigned count) { law.skip(count, to.attack); }

    void eachSmoothed(const Settings& to, auto&& visit) { visit(sens, to.sens); }
    void derive() { law.setSens(sens.value()); }

    SmoothedValue sens;
    std::int32_t attack = 0;  ///< Of the lanes.
    CompressorGain law;
  };
};

extern template class TwoKnobEffect<SivrayFxStereoCompressor::StereoCompressorImpl>;

}  // namespace tesh::bramel::plugin::sivray::effects
