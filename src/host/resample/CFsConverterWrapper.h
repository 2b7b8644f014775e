// The sample-rate converter between the host's block call and the engine, which always runs at 44100 Hz. It resamples
// the host's input and the engine's output, and turns the times of MIDI messages into engine frames. If the host runs
// at 44100 Hz too, the engine writes straight into the host's buffers.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "core/EngineRate.h"
#include "core/RealTime.h"
#include "host/resample/CFsConvListener.h"
#include "host/resample/CFsCwInterpolation.h"
#include "host/resample/HostEventRing.h"
#include "host/resample/UpPair.h"
#include "host/vst/VstRecords.h"
#include "platform/ZeroedPages.h"

namespace tesh::bramel::vst {

/// The converter of one instrument, for two channels and the outs beside them. One call at a time. Only the
/// constructor, `reset`, `makeOuts` and `setSampleRate` allocate memory.
class CFsConverterWrapper {
 public:
  static constexpr double kEngineRate = cofu::core::kEngineRate;

  /// Reports a block size of 32 frames to `convListener`, which must outlive the converter. The host's rate is 44100 Hz
  /// until the first `setSampleRate`.
  explicit CFsConverterWrapper(CFsConvListener& convListener);
  virtual ~CFsConverterWrapper() = default;
  CFsConverterWrapper(const CFsConverterWrapper&) = delete;
  CFsConverterWrapper& operator=(const CFsConverterWrapper&) = delete;

  /// Clears the output ring and puts its reader 8 host frames behind its writer. Resamplers and waiting messages stay.
  void reset();

  /// Drops the messages that wait.
  void dropEvents() { eventRing.clear(); }

  /// Renders a host's block: delivers due messages and requests engine frames from the listener, between onBeginBlock
  /// and onEndBlock. At rates other than 44100 Hz, null inputs count as silence, and a block longer than the buffers is
  /// rendered in pieces. Does nothing if an output is null or `frames` is 0 or less. Audio thread.
  virtual void process(float** inputs, float** outputs, std::int32_t frames) SIVRAY_NONBLOCKING;

  /// Allocates the memory for the outs, once. Must not run during a block.
  void makeOuts();

  /// Like `process`, for a block with outs beside the main one: two more channels each, kMostChannels in all, null for
  /// outs that nobody listens to. The main channels are not null. An out that was not connected in the last block
  /// begins with silence. At rates other than 44100 Hz, outs are silent until `makeOuts`. Audio thread.
  void processOuts(float** inputs, std::span<float*> outputs, std::int32_t frames) SIVRAY_NONBLOCKING;

  static constexpr std::size_t kMainChannels = 2;
  static constexpr std::size_t kOuts = 9;
  static constexpr std::size_t kMostChannels = kMainChannels + 2 * kOuts;

  /// Queues the MIDI messages of `vstEvents`, at engine frames rounded towards zero; ignores other events. A message
  /// waits until a block reaches its frame. Audio thread.
  virtual void processEvents(const VstEvents& vstEvents) SIVRAY_NONBLOCKING;

  /// As above, for one message: its three bytes from the top of `packed`, and its host frame.
  void enter(std::uint32_t packed, std::int32_t deltaFrames) SIVRAY_NONBLOCKING;

  /// Designs both resamplers for a host's rate in Hz and starts them from silence; at 44100 Hz they are not used and
  /// not designed. The output ring and the waiting messages stay. Ignores a rate outside kLowestRate to kHighestRate.
  /// Must not run during a block. Allocates.
  virtual void setSampleRate(float rate);

  /// Stores the longest block in host frames, at least 32, and tells the listener.
  virtual void setBlockSize(std::int32_t size) SIVRAY_NONBLOCKING;

  /// Latency at `rate` Hz in host frames, from a message's frame to its sound: 0 at the engine's rate.
  static int latency(double rate);

  virtual float sampleRate() const { return hostRate; }
  virtual std::int32_t blockSize() const { return hostBlockSize; }

  /// The part of `process` between onBeginBlock and onEndBlock. Outputs must not be null.
  virtual void render(float** inputs, float** outputs, std::int32_t frames) SIVRAY_NONBLOCKING;
  /// As above, for `processOuts`.
  void renderOuts(float** inputs, std::span<float*> outputs, std::int32_t frames) SIVRAY_NONBLOCKING;

  /// Hz. Below the lowest rate, one host frame takes more engine frames than the buffers hold. The highest is a round
  /// number: the buffers would suffice for nearly seven times as much.
  static constexpr std::int32_t kLowestRate = 3;
  static constexpr std::int32_t kHighestRate = 100'000'000;

 private:
  bool isDirect() const { return hostRate == static_cast<float>(kEngineRate); }
  void renderPart(ChannelPair inputs, bool hasInputs, std::span<float*> outputs, std::int32_t offset,
                  std::int32_t frames);
  void runEngine(ChannelPair inputs, std::size_t channels, std::int32_t frames);
  void keepInputSilent(std::size_t count);
  void connect(std::span<float*> outputs, std::int32_t frames);

  /// An out beside the main one.
  struct Out {
    UpPair pair;
    bool isConnected = false;  ///< In the current block.
  };

  CFsConvListener* listener;
  CFsCwInterpolation downConverter;
  StereoBuffer engineIn;
  std::size_t soundInInput = 0;         ///< Frames at the start of `engineIn` that may not be zero.
  platform::ZeroedArray<float> zeroIn;  ///< What absent input channels read.
  UpPair mainPair;
  std::vector<std::unique_ptr<Out>> outs;  ///< None, or kOuts.
  std::size_t connectedOuts = 0;
  std::uint32_t ringWrite = 0;  ///< Of all rings.
  std::uint32_t ringRead = 0;
  HostEventRing eventRing;
  std::int32_t hostBlockSize = 0;
  std::int32_t longestPart = 0;  ///< In host frames, at the current rate.
  float hostRate = static_cast<float>(kEngineRate);
  float ratio = 1.0F;  ///< The engine's rate divided by the host's.
};

}  // namespace tesh::bramel::vst
