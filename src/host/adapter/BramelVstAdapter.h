// The plug-in that a host sees: every call of the host becomes one call on the instrument.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>

#include "host/shell/BramelInstrumentBase.h"
#include "host/vst/AudioEffectX.h"

namespace tesh::bramel::vst {

class BramelInstrumentEditor;

/// Parameters are those that the host may see. There is no list of programs: a song keeps the whole state, and
/// programs are chosen in the editor. Null pointers, indices out of range and values out of range change nothing.
class BramelVstAdapter : public AudioEffectX {
 public:
  /// `master` and `newEditor` may be null; without an editor the host sees no window. Asks the host for its vendor and
  /// for nothing else. Throws std::invalid_argument when the instrument is not a BramelInstrument.
  BramelVstAdapter(AudioMasterCallback master, const std::shared_ptr<BramelInstrumentBase>& instrument,
                   std::shared_ptr<BramelInstrumentEditor> newEditor);
  ~BramelVstAdapter() override;

  void suspend() override;

  /// Does not return before 300 ms have passed: the host family of the key lights needs that long to be ready.
  void resume() override;
  void setSampleRate(float rate) override;

  /// Asks the host for tempo and transport, then renders. Audio thread.
  void processReplacing(float** inputs, float** outputs, std::int32_t frames) override;

  /// Queues MIDI for the next block; returns 1. Skips other events, and MIDI more than 2^20 frames ahead.
  std::int32_t processEvents(VstEvents* events) override;

  void setParameter(std::int32_t index, float value) override;
  float getParameter(std::int32_t index) override;

  std::int32_t getProgram() override;
  void setProgram(std::int32_t index) override;

  /// Writes the product's name, not the program's.
  void getProgramName(char* text) override;
  void getParameterLabel(std::int32_t index, char* text) override;
  void getParameterDisplay(std::int32_t index, char* text) override;
  void getParameterName(std::int32_t index, char* text) override;

  /// The state is the same for a preset and for a song. The bytes stay valid until the next call.
  std::int32_t getChunk(void** data, bool isPreset) override;

  /// Returns `size` in every case.
  std::int32_t setChunk(void* data, std::int32_t size, bool isPreset) override;

  bool getEffectName(char* text) override;
  bool getVendorString(char* text) override;
  bool getProductString(char* text) override;
  std::int32_t getVendorVersion() override { return 0; }

  /// Answers the questions of one host family, and passes the window's content scale to the editor: index 'PreS', value
  /// 'AeCs', the scale in `opt`.
  std::intptr_t vendorSpecific(std::int32_t index, std::intptr_t value, void* ptr, float opt) override;
  std::int32_t canDo(char* text) override;
  std::int32_t getNumMidiOutputChannels() override { return 1; }

 private:
  class Impl;

  explicit BramelVstAdapter(AudioMasterCallback master, std::unique_ptr<Impl> newImpl);
  void takeTimeInfo();

  std::unique_ptr<Impl> impl;
};

}  // namespace tesh::bramel::vst
