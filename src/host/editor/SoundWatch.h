// The instrument's reports on their way to the panel, in forms whose hosts show the names of the pads' sounds.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "core/RealTime.h"
#include "host/shell/BramelInstrumentCallbacks.h"
#include "host/shell/SoundNames.h"

namespace tesh::bramel::vst {

/// Hears that a pad may have another sound. Any thread, the audio thread too.
class SoundListener {
 public:
  virtual ~SoundListener() = default;
  virtual void soundChanged() SIVRAY_NONBLOCKING = 0;
};

/// Passes all reports on, and tells the listener of those by which a pad may have another sound.
class SoundWatch final : public BramelInstrumentUICallback {
 public:
  /// `toPanel` is not null; `toListener` outlives this object.
  SoundWatch(std::shared_ptr<BramelInstrumentUICallback> toPanel, SoundListener& toListener)
      : panel(std::move(toPanel)), listener(toListener) {}

  void holdUpdates() SIVRAY_NONBLOCKING override { panel->holdUpdates(); }
  void releaseUpdates() SIVRAY_NONBLOCKING override { panel->releaseUpdates(); }
  void programSaved(const std::string& bankName, const std::uint64_t* programIds, std::uint64_t count) override {
    panel->programSaved(bankName, programIds, count);
  }
  void programDeleted(const std::string& bankName, const std::uint64_t* programIds, std::uint64_t count) override {
    panel->programDeleted(bankName, programIds, count);
  }
  void programMoved(const std::string& bankName, std::uint64_t fromIndex, std::uint64_t toIndex) override {
    panel->programMoved(bankName, fromIndex, toIndex);
  }
  void programChanged() override {
    listener.soundChanged();
    panel->programChanged();
  }
  void parameterChanged(std::uint64_t parameterId) SIVRAY_NONBLOCKING override {
    if (choosesSound(parameterId)) {
      listener.soundChanged();
    }
    panel->parameterChanged(parameterId);
  }
  void midiReceived(const std::uint8_t* data, std::size_t size) SIVRAY_NONBLOCKING override {
    panel->midiReceived(data, size);
  }

 private:
  const std::shared_ptr<BramelInstrumentUICallback> panel;
  SoundListener& listener;
};

}  // namespace tesh::bramel::vst
