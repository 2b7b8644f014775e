// A silent generator, for tests of the layers above the engine to use or derive from.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "engine/Generator.h"

namespace tesh::vimo {

/// Ignores automation; has 560 parameters, 128 programs and no state.
class QuietGenerator : public Generator<float> {
 public:
  int outputCount() const override { return 2; }
  int inputCount() const override { return 0; }
  void process(ProcessBlock& block) override {
    while (block.automationRing && block.automationRing->take()) {
    }
  }
  int kind() const override { return 0; }
  int parameterCount() const override { return 560; }
  void setParameter(std::uint32_t, float) override {}
  float getParameter(std::uint32_t) const override { return 0.0F; }
  bool getParameterInfo(std::uint32_t, GeneratorParameterInfo&) const override { return true; }
  std::string getParameterDisplay(std::uint32_t) const override { return {}; }
  void tempoChanged(double) override {}
  void setSampleRate(double) override {}
  void activate() override {}
  void deactivate() override {}
  std::span<const std::uint8_t> getState() override { return {}; }
  void setState(std::span<const std::uint8_t>) override {}
  int currentProgram() const override { return 0; }
  int programCount() const override { return 128; }
};

}  // namespace tesh::vimo
