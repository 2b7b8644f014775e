// The editor of one instrument, for a window of any kind. It owns view and view model while it is open, and carries the
// instrument's reports to the message thread.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "core/Boxed.h"
#include "core/RealTime.h"
#include "host/message/MessageThread.h"
#include "host/shell/BramelInstrumentBase.h"
#include "host/shell/BramelInstrumentCallbacks.h"
#include "views/BramelInstrumentEditorProvider.h"

namespace tesh::bramel::vst {

/// Lives as long as the plug-in. The instrument reports one change at a time, on any thread. Reports are dropped while
/// no view is open. All reports of a block reach the view model together.
class BramelInstrumentEditor final : public BramelInstrumentUICallback {
 public:
  /// Pixels of the panel.
  struct Size {
    std::int32_t width = 0;
    std::int32_t height = 0;
  };

  /// Throws std::invalid_argument when `instrument` is not a BramelInstrument. `provider` is not null. `kind` tells who
  /// runs JUCE's message loop.
  BramelInstrumentEditor(const std::shared_ptr<BramelInstrumentBase>& instrument,
                         std::shared_ptr<BramelInstrumentEditorProvider> provider, MessageThread::Kind kind);

  /// Must not run on a message thread of our own. If a view was ever open, close it on the message thread first.
  ~BramelInstrumentEditor() override;

  static constexpr Size getEditorSize() { return {768, 468}; }

  /// Acquired by the first call, and kept until this object's end; null if it cannot be started. Any thread but the
  /// audio thread; where JUCE runs already, the first call must come on its thread.
  std::shared_ptr<MessageThread> messageThread();

  // Message thread only, once `messageThread` was called.

  /// Returns a copy of the box with the view's `std::shared_ptr<juce::Component>`; null if the provider makes no view.
  /// Makes view and view model if there are none. `imageScale` is passed to the provider.
  cofu::core::boxed::Box createView(int imageScale);

  /// Destroys the view, delivers the reports that wait, then destroys the view model.
  void closeView();

  void holdUpdates() SIVRAY_NONBLOCKING override;
  void releaseUpdates() SIVRAY_NONBLOCKING override;
  void programSaved(const std::string& bankName, const std::uint64_t* programIds, std::uint64_t count) override;
  void programDeleted(const std::string& bankName, const std::uint64_t* programIds, std::uint64_t count) override;
  void programMoved(const std::string& bankName, std::uint64_t fromIndex, std::uint64_t toIndex) override;
  void programChanged() override;
  void parameterChanged(std::uint64_t parameterId) SIVRAY_NONBLOCKING override;
  void midiReceived(const std::uint8_t* data, std::size_t size) SIVRAY_NONBLOCKING override;

 private:
  class Impl;
  std::unique_ptr<Impl> impl;
};

}  // namespace tesh::bramel::vst
