// The law of the Marlo ensemble, three voices side by side.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/modulation/MarloEnsemble.h"

#include "effects/modulation/EnsembleStep.h"

namespace tesh::bramel::plugin::sivray::effects {

void MarloEnsemble::skip(const Settings&, unsigned count) { skipEnsemble(*this, count); }

void MarloEnsemble::step(const Settings&, std::int16_t& left, std::int16_t& right) {
  runEnsemble<MarloOne>(*this, &left, &right, 1);
}

unsigned MarloEnsemble::runBaseline(MarloEnsemble& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runEnsemble<MarloIn<cofu::registers::Registers128>>(law, left, right, count);
}

template class TwoKnobEffect<MarloEnsemble>;

}  // namespace tesh::bramel::plugin::sivray::effects
