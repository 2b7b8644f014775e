// The inside of the shell: what a block needs, and the locks around it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "core/EngineRate.h"
#include "core/MailServer.h"
#include "core/RealTime.h"
#include "host/resample/CFsConvListener.h"
#include "host/resample/CFsConverterWrapper.h"
#include "host/shell/BramelInstrument.h"
#include "host/shell/ChangeList.h"
#include "host/shell/MidiIntake.h"
#include "host/shell/ParameterCache.h"
#include "host/shell/ParameterMap.h"
#include "host/shell/ProcessorEvent.h"

namespace tesh::bramel::vst {

inline constexpr int kKeys = 128;
inline constexpr std::uint32_t kKeyAtRest = 9;

/// Locks in their order: `mainMutex`, then that of `cache`; `keyMutex` alone. Operations without a note of their own
/// are called under `mainMutex`.
class BramelInstrument::Impl final : public CFsConvListener, public vimo::MacroEchoListener {
 public:
  static constexpr auto kEngineRate = static_cast<float>(cofu::core::kEngineRate);
  /// Frames of the engine that one run of the block routine may have.
  static constexpr std::int32_t kLongestPiece = 2048;
  /// MIDI messages that one block can bring: what the converter holds back, and twice what a host sends at most.
  static constexpr std::size_t kMostMidiIn = 4096;
  /// Bytes of a message that may go out to the host.
  static constexpr std::size_t kLongestMidiOut = 4;

  Impl(BramelInstrument& instrument, std::unique_ptr<Processor> engine);

  // Blocks (BramelInstrumentBlock.cpp).

  /// Takes `mainMutex`.
  void process(float** inputs, float** outputs, std::int32_t frames) SIVRAY_NONBLOCKING;
  /// Applies all mail, commands and program changes that wait, without rendering.
  void flush();
  /// The same where mail waits, else nothing.
  void flushMail();
  void sendMidi(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames) SIVRAY_NONBLOCKING;
  void sendKeyboardMidi(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames);
  /// Forgets what the last blocks left behind: messages that came early, and the tails of the resamplers.
  void restart();

  void onProcess(float** inputs, float** outputs, std::int32_t frames) override;
  void onMidi(std::uint32_t packed, std::int32_t frame) override;

  void macroMoved(std::uint32_t, float, std::uint32_t) override {}
  void programSelected() override { hasSelected = true; }
  void noteReceived(std::uint16_t) override {}

  // Parameters (BramelInstrumentParameters.cpp).

  void setParameter(std::uint64_t id, float value) SIVRAY_NONBLOCKING;
  void setParameterFromEditor(std::uint64_t id, float value);

  /// Sends a program change with the next block.
  void postProgramChange(std::uint64_t program, vimo::Bank database);
  void writeUserPrograms();

  /// Calls `action` on the editor's side, or on the host's, if it is still there.
  template <typename Action>
  void tellEditor(Action action) const {
    tell(uiCallback, action);
  }
  template <typename Action>
  void tellHost(Action action) const {
    tell(hostCallback, action);
  }

  BramelInstrument& owner;
  std::weak_ptr<BramelInstrumentHostCallback> hostCallback;
  std::weak_ptr<BramelInstrumentUICallback> uiCallback;
  mutable std::recursive_mutex mainMutex;
  int hostKind = 0;
  std::string hostVendor;
  bool active = false;
  float hostSampleRate = 0.0F;           ///< 0 until the host gives one.
  float tempo = 120.0F;                  ///< Beats per minute.
  std::unique_ptr<Processor> processor;  ///< May be null.
  ParameterMap parameterMap;
  cofu::core::impl::Mailbox<vimo::ProcessorEvent> mail;
  CFsConverterWrapper converter;
  const vimo::SourceId editorSource;
  const vimo::SourceId hostSource;
  mutable std::recursive_mutex keyMutex;
  std::array<std::uint32_t, kKeys> keyStates{};
  ParameterCache cache;
  std::map<std::string, Property> properties;

 private:
  /// On the audio thread too: the other side keeps its own hold of the callback while it uses it.
  template <typename Callback, typename Action>
  static void tell(const std::weak_ptr<Callback>& held, Action& action) {
    cofu::core::vouchFor([&] {
      if (const auto callback = held.lock()) {
        action(*callback);
      }
    });
  }

  void runBlock(float** inputs, float** outputs, std::int32_t frames);
  void takeMail();
  void sendMidiOut();
  void reportChanges();
  MidiVerdict judge(const std::uint8_t* data, std::size_t size) const;
  void queueForEngine(const ShortMessage& message, std::int32_t deltaFrames);
  void post(std::uint64_t id, float value, const vimo::SourceId& source);

  std::vector<vimo::MidiEvent> midiIn;  ///< In frames of the engine, as `midiOut`.
  std::vector<vimo::MidiEvent> midiOut;
  vimo::TimedValueRing automationRing{4096};
  vimo::TimedValueRing notificationRing{1024};
  ChangeList latest;
  bool takesInput = false;   ///< The engine has inputs.
  bool hasSelected = false;  ///< The block has selected a program.
  bool isInBlock = false;
};

}  // namespace tesh::bramel::vst
