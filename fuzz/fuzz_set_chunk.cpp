// Fuzzes loading a host's state into a playing instrument: for any bytes, parameters and audio stay in range, and the
// instrument loads its own saved state unchanged. The first byte selects the kind of the rest: a state, the content of
// its envelope, or the macro section of the content.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <span>

#include "QuietInstrument.h"
#include "storage/state/EditBufferRecord.h"
#include "storage/state/StateContent.h"

namespace {

using namespace fuzz;
using namespace instrument;

/// A first byte below this requests the round trip, which takes most of the time.
constexpr std::uint8_t kRoundTrips = 32;

Bytes enveloped(Bytes content) {
  bramel::vst::EditBufferRecord record;
  record.content = std::move(content);
  return bramel::vst::packState(record);
}

Bytes contentWithMacros(std::span<const std::uint8_t> section) {
  Bytes flags;
  bramel::vst::appendRunFlags(flags, {});
  Bytes content;
  bramel::vst::appendStateContent(content, {flags, {}, section});
  return content;
}

Bytes stateOf(std::span<const std::uint8_t> data) {
  if (data.empty()) {
    return {};
  }
  const auto rest = data.subspan(1);
  switch (data[0] % 3) {
    case 0:
      return {rest.begin(), rest.end()};
    case 1:
      return enveloped({rest.begin(), rest.end()});
    default:
      return enveloped(contentWithMacros(rest));
  }
}

void renderALittle(BramelInstrument& shell) {
  const std::array<std::uint8_t, 3> note{0x90, 36, 100};
  shell.sendMidi(note.data(), note.size(), 5);
  play(shell);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::unique_ptr<BramelInstrument> shell = makeQuietInstrument();
  const Bytes state = stateOf({data, size});
  shell->setState(state.data(), state.size());
  for (std::uint64_t id = 0; id < shell->cachedParameterCount(); ++id) {
    const float value = shell->parameterValue(id);
    require(value >= 0.0F && value <= 1.0F);
    shell->parameterDisplay(id);
  }
  shell->currentBank();
  shell->currentProgramName();
  renderALittle(*shell);
  if (size == 0 || data[0] < kRoundTrips) {
    const Bytes saved = shell->getState();
    shell->setState(saved.data(), saved.size());
    require(shell->getState() == saved);
    renderALittle(*shell);
  }
  return 0;
}
