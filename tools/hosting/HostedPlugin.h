// A plug-in as its host sees it, with the same interface for every form: an instance, and the file that creates
// instances.
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
  updateDisplay,  ///< Names, programs or values have changed; the host should query them again.
  sizeWindow
};

/// A recorded call from the plug-in to the host.
struct HostCall {
  HostCallKind kind = HostCallKind::updateDisplay;
  int index = 0;       ///< Parameter index, for edits and automation.
  float value = 0.0F;  ///< The parameter's new value.
  WindowSize size;     ///< The size that the plug-in requests for the window.
};

/// The bytes of a message, padded with zeros.
using MidiBytes = std::array<std::uint8_t, 4>;

/// One instance. All calls must come from the thread that created it, except `process` and the functions that queue
/// events, which may come from one other thread and do not allocate in the host.
class HostedPlugin {
 public:
  HostedPlugin();
  HostedPlugin(const HostedPlugin&) = delete;
  HostedPlugin& operator=(const HostedPlugin&) = delete;
  virtual ~HostedPlugin() = default;

  /// Sets sample rate (Hz) and longest block (frames), and starts processing.
  virtual void start(float sampleRate, int longestBlock) = 0;
  /// Changes the rate, in Hz, while running.
  virtual void setSampleRate(float sampleRate) = 0;
  /// Suspends and resumes, as a host does on a rewind or after losing the sound device.
  virtual void restart() = 0;

  /// Returns the number of parameters. In all calls, parameters have the indices of the VST 2 form.
  virtual int parameterCount() const = 0;
  virtual void setParameter(int index, float value) = 0;
  /// Returns the plug-in's value as the host knows it.
  virtual float parameter(int index) = 0;
  /// Returns the value that results from setting `value`: in forms with integer parameters, the nearest integer.
  virtual float settable(int /*index*/, float value) { return value; }
  virtual std::string parameterName(int index) = 0;
  /// Returns the text of the current value.
  virtual std::string parameterText(int index) = 0;

  /// Returns the bytes that the instrument itself saves, without the form's wrapper.
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

  /// Opens the editor inside a native window.
  virtual void openEditor(void* window) = 0;
  virtual void closeEditor() = 0;
  /// Tells the editor before its window is destroyed, if it is still open. VST 2 hosts may omit this.
  virtual void leaveWindow() {}
  /// Returns the size that the editor reports; 0 by 0 if it cannot be asked.
  virtual WindowSize editorSize() = 0;
  /// Tells the editor the content's scale. Returns whether it accepts it.
  virtual bool setEditorScale(float scale) = 0;
  /// Waits until the plug-in's message thread has handled all earlier requests.
  virtual void settleEditor() = 0;

  /// Returns the calls recorded since the last call of this. Any thread.
  std::vector<HostCall> takeCalls();
  /// Returns the MIDI messages recorded since the last call of this. Any thread.
  std::vector<MidiBytes> takeMidi();

  double tempo = 120.0;
  bool playing = true;

 protected:
  /// Records a call of the plug-in, or drops it if the reserved memory is full: recording must not allocate while audio
  /// runs. Any thread.
  void record(const HostCall& call);
  /// As above for a message, of which it keeps the first four bytes.
  void recordMidi(std::span<const std::uint8_t> message);

 private:
  std::mutex recordMutex;
  std::vector<HostCall> calls;
  std::vector<MidiBytes> midiOut;
};

/// A form's file, loaded while this object exists. It must outlive the instances.
class PluginFile {
 public:
  PluginFile() = default;
  PluginFile(const PluginFile&) = delete;
  PluginFile& operator=(const PluginFile&) = delete;
  virtual ~PluginFile() = default;

  /// Throws HostError when no instance can be created.
  virtual std::unique_ptr<HostedPlugin> makeInstance() const = 0;
};

}  // namespace sivray::hosting
