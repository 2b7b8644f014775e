// An instrument for fuzz targets that neither finds nor writes files on this machine, and a block that it plays.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <memory>

#include "FuzzInput.h"
#include "shell/InstrumentScene.h"

namespace fuzz {

inline std::unique_ptr<instrument::BramelInstrument> makeQuietInstrument() {
  ::setenv("BRAMEL_COMMON_FILES", "/nonexistent", 1);
  ::setenv("BRAMEL_DOCUMENTS", "/nonexistent", 1);
  return instrument::makeInstrument();
}

/// Renders a block, whose samples must lie between -1 and 1.
inline void play(instrument::BramelInstrument& shell) {
  constexpr std::int32_t kFrames = 64;
  std::array<float, 2 * kFrames> samples{};
  std::array<float*, 2> outputs{samples.data(), samples.data() + kFrames};
  shell.process(nullptr, outputs.data(), kFrames);
  for (const float sample : samples) {
    require(std::abs(sample) <= 1.0F);
  }
}

}  // namespace fuzz
