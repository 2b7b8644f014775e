// What the adapter holds, and how the instrument's reports reach the host. Only the adapter's sources see it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "core/RealTime.h"
#include "host/adapter/BramelVstAdapter.h"
#include "host/adapter/KeyLights.h"
#include "host/shell/BramelInstrument.h"

namespace tesh::bramel::vst {

class BramelVstAdapter::Impl {
 public:
  class Callback;

  /// Registers itself as the instrument's host callback. Throws std::invalid_argument for another kind of instrument.
  Impl(const std::shared_ptr<BramelInstrumentBase>& base, std::shared_ptr<BramelInstrumentEditor> newEditor);

  /// The id of a parameter that the host names by index, or BramelInstrument::kNoParameter.
  std::uint64_t parameterId(std::int32_t index) const SIVRAY_NONBLOCKING;

  BramelVstAdapter* owner = nullptr;
  std::shared_ptr<Callback> callback;  ///< The instrument holds it weakly.
  /// May be null. Goes last of those that hold the instrument: fonts and images in there need JUCE to the end.
  std::shared_ptr<BramelInstrumentEditor> editor;
  std::shared_ptr<BramelInstrument> instrument;
  KeyLights keyLights;
  std::vector<std::uint8_t> latestChunk;  ///< Read by the host until its next getChunk.
};

/// Called on any thread, on several at once too.
class BramelVstAdapter::Impl::Callback : public BramelInstrumentHostCallback {
 public:
  explicit Callback(Impl& newOwner) : owner(newOwner) {}

  void beginEdit(std::uint64_t visibleIndex) override;
  void endEdit(std::uint64_t visibleIndex) override;
  void automate(std::uint64_t visibleIndex, float value) override;
  void sendMidi(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames) override;
  void programChanged(Origin /*origin*/) override {}
  void parametersChanged() override;
  void keyStateChanged(int note) override;

 private:
  Impl& owner;
};

}  // namespace tesh::bramel::vst
