// Implements the renderer's calls by calls of the shell.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ShellTarget.h"

#include <array>

#include "host/shell/Construction.h"

namespace sivray::render {

ShellTarget::ShellTarget(double hostRate) : instrument(tesh::bramel::vst::makeInstrument()), rate(hostRate) {}

std::vector<std::uint8_t> ShellTarget::state() {
  instrument->currentProgram();  // Applies the changes that wait for the next block.
  return instrument->getState();
}

std::vector<std::string> ShellTarget::hostNames() {
  std::vector<std::string> names;
  for (std::uint64_t index = 0; index < instrument->parameterCount(); ++index) {
    names.push_back(instrument->parameterName(instrument->parameterId(index)));
  }
  return names;
}

void ShellTarget::start(int /*longestBlock*/) {
  instrument->setSampleRate(static_cast<float>(rate));
  instrument->makeOuts();
  instrument->resume();
  instrument->setTransport(true);
}

void ShellTarget::move(const Move& move) {
  if (move.hostIndex >= 0) {
    instrument->setParameter(instrument->parameterId(static_cast<std::uint64_t>(move.hostIndex)), move.value);
  }
}

void ShellTarget::process(float* left, float* right, int frames) {
  std::array<float*, 2> outputs{left, right};
  instrument->process(nullptr, outputs.data(), frames);
}

}  // namespace sivray::render
