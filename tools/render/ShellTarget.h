// The instrument inside this program with its shell, at any sample rate and with all outputs. Its main output equals
// that of the VST 2 plug-in.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "RenderTarget.h"
#include "host/shell/BramelInstrument.h"

namespace sivray::render {

class ShellTarget final : public RenderTarget {
 public:
  /// Throws std::runtime_error when the instrument's content is missing or broken.
  explicit ShellTarget(double hostRate);

  double sampleRate() const override { return rate; }
  std::vector<std::uint8_t> state() override;
  void setState(std::span<const std::uint8_t> chunk) override { instrument->setState(chunk.data(), chunk.size()); }
  bool reachesEngine() const override { return false; }
  std::vector<std::string> hostNames() override;
  void start(int longestBlock) override;
  void setTempo(double beatsPerMinute) override { instrument->setHostTempo(beatsPerMinute); }
  void move(const Move& move) override;
  void sendMidi(std::span<const std::uint8_t> bytes, int frame) override {
    instrument->sendMidi(bytes.data(), bytes.size(), frame);
  }
  void process(float* left, float* right, int frames) override;
  void processOuts(std::span<float*> outputs, int frames) override { instrument->processOuts(outputs, frames); }

 private:
  std::shared_ptr<tesh::bramel::vst::BramelInstrument> instrument;
  double rate;
};

}  // namespace sivray::render
