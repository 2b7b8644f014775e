// Implements the renderer's calls by calls of the plug-in interface.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "LibraryTarget.h"

namespace sivray::render {

std::vector<std::uint8_t> LibraryTarget::state() {
  // effGetProgram makes the plug-in apply the changes that wait for its next block.
  host.call(tesh::bramel::vst::effGetProgram);
  return host.chunk();
}

std::vector<std::string> LibraryTarget::hostNames() {
  std::vector<std::string> names;
  names.reserve(static_cast<std::size_t>(host.parameterCount()));
  for (int index = 0; index < host.parameterCount(); ++index) {
    names.push_back(host.parameterName(index));
  }
  return names;
}

void LibraryTarget::move(const Move& move) {
  if (move.hostIndex >= 0) {
    host.setParameter(move.hostIndex, move.value);
  }
}

}  // namespace sivray::render
