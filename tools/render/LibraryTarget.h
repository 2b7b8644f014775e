// The plug-in as a host plays it: loaded from its library and driven through the plug-in interface alone.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "RenderTarget.h"
#include "vsthost/Host.h"

namespace sivray::render {

class LibraryTarget final : public RenderTarget {
 public:
  /// Throws HostError when the library cannot be loaded or creates no instance.
  LibraryTarget(const std::string& libraryPath, double hostRate)
      : library(libraryPath), host(library), rate(hostRate) {}

  double sampleRate() const override { return rate; }
  std::vector<std::uint8_t> state() override;
  void setState(std::span<const std::uint8_t> chunk) override { host.setChunk(chunk); }
  bool reachesEngine() const override { return false; }
  std::vector<std::string> hostNames() override;
  void start(int longestBlock) override { host.start(static_cast<float>(rate), longestBlock); }
  void setTempo(double beatsPerMinute) override { host.tempo = beatsPerMinute; }
  void move(const Move& move) override;
  void sendMidi(std::span<const std::uint8_t> bytes, int frame) override { host.queueMidi(bytes, frame); }
  void process(float* left, float* right, int frames) override { host.process(left, right, frames); }

 private:
  vsthost::PluginLibrary library;
  vsthost::Host host;
  double rate;
};

}  // namespace sivray::render
