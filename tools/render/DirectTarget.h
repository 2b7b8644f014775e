// The instrument inside this program: processor and macros, driven block by block at the engine's sample rate, as the
// plug-in's shell drives them.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "RenderTarget.h"
#include "macro/PluginMacroControllable.h"

namespace sivray::render {

class DirectTarget final : public RenderTarget {
 public:
  /// Throws std::runtime_error when the instrument's content is missing or broken.
  DirectTarget();

  double sampleRate() const override;
  std::vector<std::uint8_t> state() override;
  void setState(std::span<const std::uint8_t> chunk) override;
  bool reachesEngine() const override { return true; }
  std::vector<std::string> hostNames() override;
  void start(int longestBlock) override;
  void setTempo(double beatsPerMinute) override;
  void move(const Move& move) override;
  void sendMidi(std::span<const std::uint8_t> bytes, int frame) override;
  void process(float* left, float* right, int frames) override;

 private:
  void runBlock(float* left, float* right, int frames);
  void flush() { runBlock(nullptr, nullptr, 0); }

  std::unique_ptr<tesh::vimo::PluginMacroControllable<tesh::vimo::Generator<float>>> processor;
  tesh::vimo::TimedValueRing automation;
  tesh::vimo::TimedValueRing echoes;
  std::vector<tesh::vimo::MidiEvent> midiIn;
  std::vector<tesh::vimo::MidiEvent> midiOut;
  float tempo;
};

}  // namespace sivray::render
