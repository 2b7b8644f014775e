// A plug-in as its host sees it, the same for every form: what the checks need of an instance, and of the file that
// makes instances.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace sivray::hosting {

enum class Form { vst2, vst3, lv2, clap };

/// Thrown when a plug-in cannot be loaded or opened. The text names the file.
class HostError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct WindowSize {
  int width = 0;
  int height = 0;
  bool operator==(const WindowSize&) const = default;
};

enum class HostCallKind {
  beginEdit,
  automate,
  endEdit,
  updateDisplay,  ///< Names, programs or values have changed: the host asks again.
  sizeWindow
};

/// A recorded call from the plug-in to the host.
struct HostCall {
  HostCallKind kind = HostCallKind::updateDisplay;
  int index = 0;       ///< Of the parameter, for edits and automation.
  float value = 0.0F;  ///< The parameter's new value.
  WindowSize size;     ///< What the window is to become.
};

/// The bytes of a message, and zeros behind a short one.
using MidiBytes = std::array<std::uint8_t, 4>;

/// One instance. All calls must come from the thread that made it, except `process` and the queues, which may come from
/// another. Those do not allocate in the host.
class HostedPlugin {
 public:
  HostedPlugin();
  HostedPlugin(const HostedPlugin&) = delete;
  HostedPlugin& operator=(const HostedPlugin&) = delete;
  virtual ~HostedPlugin() = default;

  /// Sets rate (Hz) and block size (frames), and starts.
  virtual void start(float sampleRate, int longestBlock) = 0;
  /// Changes the rate, in Hz, while running.
  virtual void setSampleRate(float sampleRate) = 0;
  /// Suspends and resumes, as a host does when the transport is rewound or the sound device was lost.
  virtual void restart() = 0;

  /// The parameters have the numbers of the VST 2 form, whatever order the form itself has.
  virtual int parameterCount() const = 0;
  virtual void setParameter(int index, float value) = 0;
  /// The value that the host holds to be the plug-in's.
  virtual float parameter(int index) = 0;
  /// What becomes of a value that is set: in forms whose parameters have whole numbers, the nearest of them.
  virtual float settable(int /*index*/, float value) { return value; }
  virtual std::string parameterName(int index) = 0;
  /// The text of the present value.
  virtual std::string parameterText(int index) = 0;

  /// The bytes that the instrument itself saves, without what the form wraps around them.
  virtual std::vector<std::uint8_t> chunk() = 0;
  virtual void setChunk(std::span<const std::uint8_t> bytes) = 0;

  virtual int currentProgram() = 0;
  virtual int programCount() = 0;
  virtual std::string programName(int index) = 0;
  virtual void selectProgram(int index) = 0;

  virtual int latencyFrames() = 0;

  /// Queues a message at `frame` of the next block.
  virtual void queueMidi(std::span<const std::uint8_t> bytes, int frame) = 0;
  void queueNote(int note, int velocity, int frame) {
    const std::array<std::uint8_t, 3> bytes{0x90, static_cast<std::uint8_t>(note), static_cast<std::uint8_t>(velocity)};
    queueMidi(bytes, frame);
  }

  /// Sends the queued events and renders a block into `left` and `right`.
  virtual void process(float* left, float* right, int frames) = 0;

  /// Opens the editor inside a window of the system's.
  virtual void openEditor(void* window) = 0;
  virtual void closeEditor() = 0;
  /// What the host does before its window goes, if the editor is still open. Hosts may forget it in VST 2.
  virtual void leaveWindow() {}
  /// What the editor says it takes; 0 by 0 where it cannot be asked.
  virtual WindowSize editorSize() = 0;
  /// Tells the editor the content's scale. Whether it takes scales.
  virtual bool setEditorScale(float scale) = 0;
  /// Waits until the plug-in's message thread has done what was asked of it before.
  virtual void settleEditor() = 0;

  /// Returns the calls recorded since the last time. Any thread.
  std::vector<HostCall> takeCalls();
  /// The MIDI messages recorded since the last time, likewise.
  std::vector<MidiBytes> takeMidi();

  double tempo = 120.0;
  bool playing = true;

 protected:
  /// Records a call of the plug-in, or drops it if the reserved memory is full, so that recording does not allocate
  /// while audio runs. Any thread.
  void record(const HostCall& call);
  /// The same for a message, of which it keeps four bytes.
  void recordMidi(std::span<const std::uint8_t> message);

 private:
  std::mutex recordMutex;
  std::vector<HostCall> calls;
  std::vector<MidiBytes> midiOut;
};

/// A form's file, loaded while this object exists, which must outlive the instances.
class PluginFile {
 public:
  PluginFile() = default;
  PluginFile(const PluginFile&) = delete;
  PluginFile& operator=(const PluginFile&) = delete;
  virtual ~PluginFile() = default;

  /// Throws HostError when there is none.
  virtual std::unique_ptr<HostedPlugin> makeInstance() const = 0;
};

}  // namespace sivray::hosting
