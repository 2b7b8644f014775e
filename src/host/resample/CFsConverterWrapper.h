// Stands between the host's block call and an engine that runs at exactly 44100 Hz: resamples the host's input for the
// engine and the engine's output for the host, and counts MIDI in engine frames. A host at 44100 Hz gets the engine's
// samples as they are, written straight into its own buffers.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "core/RealTime.h"
#include "host/resample/CFsConvListener.h"
#include "host/resample/CFsCwInterpolation.h"
#include "host/resample/HostEventRing.h"
#include "host/vst/VstRecords.h"

namespace tesh::bramel::vst {

/// The converter of one instrument, two channels wide. The caller serialises all calls. Only construction, `reset` and
/// `setSampleRate` allocate.
class CFsConverterWrapper {
 public:
  static constexpr double kEngineRate = 44100.0;

  /// Tells the listener the smallest block sizes. The listener outlives the converter. The host's rate is the engine's
  /// until `setSampleRate` says otherwise.
  explicit CFsConverterWrapper(CFsConvListener& convListener);
  virtual ~CFsConverterWrapper() = default;
  CFsConverterWrapper(const CFsConverterWrapper&) = delete;
  CFsConverterWrapper& operator=(const CFsConverterWrapper&) = delete;

  /// Silences the output rings and sets their distance. Resamplers and pending messages stay.
  void reset();

  /// A host's block. Messages due in it, and the engine's frames, reach the listener between onBeginBlock and
  /// onEndBlock. Absent inputs (a null array or channel) are silence. Does nothing for null outputs or for 0 frames and
  /// below. Blocks longer than the buffers are rendered in parts: nothing is lost. Audio thread.
  virtual void process(float** inputs, float** outputs, std::int32_t frames) SIVRAY_NONBLOCKING;

  /// Enters the MIDI messages among `vstEvents`, with their host frames turned into engine frames. Audio thread.
  virtual void processEvents(const VstEvents& vstEvents) SIVRAY_NONBLOCKING;

  /// Redesigns both resamplers, which begin again from silence. Rates that are not finite or whose integer part lies
  /// outside kLowestRate .. kHighestRate are ignored.
  virtual void setSampleRate(float rate);

  /// Takes note of the longest block, 32 frames at least, and tells the listener.
  virtual void setBlockSize(std::int32_t size) SIVRAY_NONBLOCKING;

  virtual float sampleRate() const { return hostRate; }
  virtual std::int32_t blockSize() const { return hostBlockSize; }

  /// The block without its brackets: what `process` does between onBeginBlock and onEndBlock.
  virtual void render(float** inputs, float** outputs, std::int32_t frames) SIVRAY_NONBLOCKING;

  /// Below, one host frame is more engine frames than the buffers hold; above, one engine frame is a noticeable part of
  /// a host block that they hold.
  static constexpr std::int32_t kLowestRate = 3;
  static constexpr std::int32_t kHighestRate = 100'000'000;

 private:
  static constexpr std::size_t kChannels = 2;
  using Channels = std::array<float*, kChannels>;

  /// Both channels of a work buffer in one piece.
  class StereoBuffer {
   public:
    explicit StereoBuffer(std::size_t frames) : samples(kChannels * frames) {}
    Channels channels() { return {samples.data(), samples.data() + samples.size() / kChannels}; }

   private:
    std::vector<float> samples;
  };

  void renderPart(Channels inputs, Channels outputs, std::int32_t frames);
  void writeRings(std::size_t frames);
  void readRings(Channels outputs, std::size_t frames);

  CFsConvListener* listener;
  CFsCwInterpolation downConverter;
  CFsCwInterpolation upConverter;
  StereoBuffer engineIn;
  StereoBuffer engineOut;
  StereoBuffer upOut;
  std::vector<float> zeroIn;  ///< What absent input channels read.
  std::vector<float> ringLeft;
  std::vector<float> ringRight;
  std::uint32_t ringWrite = 0;
  std::uint32_t ringRead = 0;
  HostEventRing eventRing;
  std::int32_t hostBlockSize = 0;
  std::int32_t longestPart = 0;  ///< Host frames that the buffers hold at the current rate.
  float hostRate = static_cast<float>(kEngineRate);
  float ratio = 1.0F;  ///< The engine's rate by the host's.
};

}  // namespace tesh::bramel::vst
