// The whole program in its window, on simulated devices, for tests that operate it like a user.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "ScriptedSound.h"
#include "host/client/SivrayProcessor.h"
#include "host/editor/WindowKeys.h"
#include "host/standalone/Desktop.h"
#include "host/standalone/Standalone.h"
#include "widgets/BWButtonBase.h"

namespace sivray::test {

class ProgramScene : public SoundTest {
 protected:
  void SetUp() override {
    if (!tesh::bramel::standalone::desktop::hasScreen()) {
      FAIL() << "no X server, and Xvfb cannot be started: is it installed?";
    }
  }

  /// Starts the program with settings in this folder.
  void start(const juce::File& settings) {
    using namespace tesh::bramel::standalone;
    program = std::make_unique<Standalone>(
        settings, [] {}, Devices{.sound = [this] { return types(); }, .midi = midi.system()});
    window = juce::TopLevelWindow::getTopLevelWindow(0);
    run();
  }

  /// Renders blocks of the devices while the message thread runs.
  void run(int count = 4) {
    for (int i = 0; i < count; ++i) {
      for (auto& [type, devices] : machine) {
        for (auto& [name, device] : devices) {
          playBlock(device.player);
        }
      }
      // JUCE's own loop, unlike the program's, leaves events that are already in memory.
      tesh::bramel::vst::awakenForQueuedEvents(window->getPeer()->getNativeHandle());
      juce::MessageManager::getInstance()->runDispatchLoopUntil(20);
    }
  }
  /// Waits for the condition, long enough for a busy machine.
  bool comesTrue(const std::function<bool()>& condition) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(4);
    while (!condition() && std::chrono::steady_clock::now() < deadline) {
      run(1);
    }
    return condition();
  }

  template <typename Kind>
  static Kind* find(juce::Component& parent, const juce::String& title = {}) {
    for (juce::Component* const child : parent.getChildren()) {
      auto* const wanted = dynamic_cast<Kind*>(child);
      auto* const found =
          wanted != nullptr && (title.isEmpty() || child->getTitle() == title) ? wanted : find<Kind>(*child, title);
      if (found != nullptr) {
        return found;
      }
    }
    return nullptr;
  }
  tesh::bramel::BWButtonBase& button(const char* title) { return *find<tesh::bramel::BWButtonBase>(*window, title); }
  std::string strip() { return button("Sound and MIDI").getDescription().toStdString(); }
  tesh::bramel::vst::SivrayProcessor& processor() {
    return static_cast<tesh::bramel::vst::SivrayProcessor&>(
        *find<juce::AudioProcessorEditor>(*window)->getAudioProcessor());
  }

  std::unique_ptr<tesh::bramel::standalone::Standalone> program;
  juce::TopLevelWindow* window = nullptr;
  float loudest = 0.0F;  ///< The largest sample so far.

 private:
  void playBlock(juce::AudioIODeviceCallback* callback) {
    if (callback == nullptr) {
      return;
    }
    std::vector<float> channel(512);
    float* const outputs[]{channel.data()};
    callback->audioDeviceIOCallbackWithContext(nullptr, 0, outputs, 1, 512, {});
    for (const float sample : channel) {
      loudest = std::max(loudest, std::abs(sample));
    }
  }
};

}  // namespace sivray::test
