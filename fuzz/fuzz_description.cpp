// Fuzzes the macro description. The input is split at "@@@@": first the JSON text, then one piece for each file that it
// names, in the order in which they are requested. The result plays one block and is saved as a state.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>

#include "macro/MacroDescription.h"
#include "support/QuietGenerator.h"

namespace {

using namespace tesh::vimo;
using Processor = PluginMacroControllable<Generator<float>>;
using Bytes = std::vector<std::uint8_t>;

/// Returns the pieces of the input in order.
class Pieces {
 public:
  explicit Pieces(std::span<const std::uint8_t> input) : rest(input) {}

  std::optional<Bytes> next() {
    if (isSpent) {
      return std::nullopt;
    }
    static constexpr std::array<std::uint8_t, 4> kCut{'@', '@', '@', '@'};
    const auto cut = std::search(rest.begin(), rest.end(), kCut.begin(), kCut.end());
    Bytes piece(rest.begin(), cut);
    isSpent = cut == rest.end();
    rest = isSpent ? std::span<const std::uint8_t>() : rest.subspan(piece.size() + kCut.size());
    return piece;
  }

 private:
  std::span<const std::uint8_t> rest;
  bool isSpent = false;
};

void playAndSave(Processor& processor) {
  TimedValueRing automation(64);
  TimedValueRing echoes(64);
  ProcessBlock block;
  block.automationRing = &automation;
  block.notificationRing = &echoes;
  processor.programQueue.put(MidiEvent::programChange(1, 0, 1));
  processor.running = true;
  processor.process(block, 0, 1.0, 0.0);
  for (std::uint64_t i = 0; i < processor.controller().macroCount(); ++i) {
    processor.controller().stepCount(i);
  }
  const auto view = processor.getStateContent();
  const Bytes content(view.begin(), view.end());
  processor.setStateContent(content);
  const auto again = processor.getStateContent();
  if (!std::equal(again.begin(), again.end(), content.begin(), content.end())) {
    std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Pieces pieces({data, size});
  Processor processor("Sivray", std::make_unique<QuietGenerator>());
  const auto text = pieces.next();
  try {
    loadDescription(*text, {[&pieces](const std::string&) { return pieces.next(); }, "", "", ""}, processor,
                    Processor::Controller::ChunkParts::all);
  } catch (const std::runtime_error&) {
  }
  playAndSave(processor);
  return 0;
}
