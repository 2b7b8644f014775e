// The audio side of the shell: passes the host's blocks through the sample-rate converter and runs the engine.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "core/RealTime.h"
#include "host/resample/CFsConvListener.h"
#include "host/resample/CFsConverterWrapper.h"
#include "host/shell/ChangeList.h"
#include "host/shell/ShellCore.h"
#include "host/shell/ShellMidi.h"
#include "host/shell/ShellParameters.h"

namespace tesh::bramel::vst {

/// Operations without a MainLock argument take the main lock themselves.
class ShellBlock final : public CFsConvListener, public vimo::MacroEchoListener {
 public:
  ShellBlock(ShellCore& shellCore, ShellParameters& shellParameters);

  void process(float** inputs, std::span<float*> outputs, std::int32_t frames) SIVRAY_NONBLOCKING;
  void makeOuts();
  void sendMidi(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames) SIVRAY_NONBLOCKING {
    midi.send(data, size, deltaFrames);
  }
  void sendEvents(const VstEvents& vstEvents) SIVRAY_NONBLOCKING { midi.sendEvents(vstEvents); }
  void sendKeyboardMidi(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames);
  void setSampleRate(float rate);
  void setTempo(float bpm) SIVRAY_NONBLOCKING;
  void resume();
  void suspend();
  bool isActive() const;

  /// Applies all waiting writes, commands and program changes, without rendering.
  void flush(const MainLock& lock);
  /// As above, but only if writes wait.
  void flushWrites(const MainLock& lock);

  // Called by the converter and the processor, inside `process` and `flush`.

  void onProcess(float** inputs, std::span<float*> outputs, std::int32_t frames) override;
  bool gaveSilence() const override { return isSilent; }
  void onMidi(std::uint32_t packed, std::int32_t frame) override;
  void macroMoved(std::uint32_t index, float value, std::uint32_t frame) override;
  void programSelected() override { hasSelected = true; }
  void noteReceived(std::uint16_t) override {}

 private:
  void runBlock(float** inputs, std::span<float*> outputs, std::int32_t frames) SIVRAY_NONBLOCKING;
  void takeWrites() SIVRAY_NONBLOCKING;
  void sendMidiOut() SIVRAY_NONBLOCKING;
  void reportChanges() SIVRAY_NONBLOCKING;
  void tellSounds() SIVRAY_NONBLOCKING;

  ShellCore& core;
  ShellParameters& parameters;
  CFsConverterWrapper converter;
  ShellMidi midi;
  bool active = false;
  float hostSampleRate = 0.0F;          ///< 0 until the host gives one.
  std::atomic<float> tempo = 120.0F;    ///< Beats per minute.
  std::vector<vimo::MidiEvent> midiIn;  ///< In engine frames, like `midiOut`.
  std::vector<vimo::MidiEvent> midiOut;
  vimo::TimedValueRing automationRing{4096};
  vimo::TimedValueRing notificationRing{1024};
  ChangeList latest;
  bool takesInput = false;              ///< The engine has inputs.
  bool hasSelected = false;             ///< The block has selected a program.
  const MainLock* blockLock = nullptr;  ///< Of the running block; null between blocks.
  bool isSilent = false;                ///< The converter's last block was silent.
};

}  // namespace tesh::bramel::vst
