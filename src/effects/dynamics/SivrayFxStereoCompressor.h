// "Master Compressor": the compressor for a whole mix, with a low and narrow range of sensitivity.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/dynamics/SivrayFxCompressor.h"

namespace tesh::bramel::plugin::sivray::effects {

struct SivrayFxStereoCompressor {
  /// Edit1 is the sensitivity, Edit2 the attack.
  struct StereoCompressorImpl : CompressorParts {
    static constexpr LawParts kParts{.start = Knobs{50, 0},
                                     .resetTakesPending = true,
                                     .aims = true,
                                     .glides = true,
                                     .derives = true,
                                     .lanes = LaneParts::avx2,
                                     .sleeps = true};

    static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;

    /// Starts from silence. The DC blocks keep their outputs.
    void reset(const Settings&) SIVRAY_NONBLOCKING;
    void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;
    static RunInLanes<StereoCompressorImpl> runAvx2;
  };
};

extern template class TwoKnobEffect<SivrayFxStereoCompressor::StereoCompressorImpl>;

}  // namespace tesh::bramel::plugin::sivray::effects
