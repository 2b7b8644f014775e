// The cost of an open panel while all parameters move in every block: on the audio thread, and on the thread that
// draws. Needs an X server.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <X11/Xlib.h>
#include <sys/resource.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "host/vst/VstOpcodes.h"
#include "vsthost/Host.h"

namespace {

using namespace tesh::bramel::vst;
using sivray::vsthost::Host;
using sivray::vsthost::PluginLibrary;

// The plug-in's vendor-specific call for the screen's scale.
constexpr std::int32_t kContentScaleIndex = fourCharacters('P', 'r', 'e', 'S');
constexpr std::intptr_t kContentScaleValue = fourCharacters('A', 'e', 'C', 's');

constexpr int kFrames = 64;
constexpr double kRate = 48000.0;

double secondsOf(int who) {
  rusage used{};
  ::getrusage(who, &used);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + 1.0e-6 * static_cast<double>(time.tv_usec);
  };
  return seconds(used.ru_utime) + seconds(used.ru_stime);
}

class Automation {
 public:
  explicit Automation(const PluginLibrary& library) : host(library) { host.start(kRate, kFrames); }

  /// Not inlined, because the instruction counter finds it by its name.
  __attribute__((noinline)) void playBlock() {
    value = value < 1.0F ? value + 0.01F : 0.0F;
    for (int index = 0; index < host.parameterCount(); ++index) {
      host.setParameter(index, value);
    }
    host.process(left.data(), right.data(), kFrames);
  }

  /// Plays in real time. Returns the processor time of this thread and of all others, in seconds.
  std::array<double, 2> play(int blocks) {
    const double own = secondsOf(RUSAGE_THREAD);
    const double all = secondsOf(RUSAGE_SELF);
    auto next = std::chrono::steady_clock::now();
    for (int block = 0; block < blocks; ++block) {
      playBlock();
      next += std::chrono::microseconds(static_cast<int>(1.0e6 * kFrames / kRate));
      std::this_thread::sleep_until(next);
    }
    const double ownUsed = secondsOf(RUSAGE_THREAD) - own;
    return {ownUsed, secondsOf(RUSAGE_SELF) - all - ownUsed};
  }

  Host host;

 private:
  float value = 0.0F;
  std::array<float, kFrames> left{};
  std::array<float, kFrames> right{};
};

void measure(const std::string& file, Display* display, float scale) {
  constexpr int kRounds = 7;
  constexpr int kBlocks = 750;  ///< A second.
  const Window window = XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, 1600, 960, 0, 0, 0);
  XMapWindow(display, window);
  XSync(display, False);
  const PluginLibrary library(file);
  Automation automation(library);
  automation.host.call(effVendorSpecific, kContentScaleIndex, kContentScaleValue, nullptr, scale);
  std::array<std::vector<double>, 2> audio;
  std::vector<double> message;
  for (int round = 0; round < kRounds; ++round) {
    audio[0].push_back(automation.play(kBlocks)[0]);
    automation.host.call(effEditOpen, 0, 0, reinterpret_cast<void*>(window));
    automation.play(kBlocks / 10);
    const auto [own, others] = automation.play(kBlocks);
    audio[1].push_back(own);
    message.push_back(others);
    automation.host.call(effEditClose);
  }
  const auto middle = [](std::vector<double> times) {
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
  };
  std::printf("at %g %%: audio thread %.2f us a block closed, %.2f open; message thread %.1f %% of a core\n",
              100.0 * static_cast<double>(scale), 1.0e6 * middle(audio[0]) / kBlocks,
              1.0e6 * middle(audio[1]) / kBlocks, 100.0 * middle(message));
  XDestroyWindow(display, window);
}

/// For an instruction counter: plays blocks with the panel open or closed, without waiting between them.
void count(const std::string& file, Display* display, const char* state, int blocks) {
  const PluginLibrary library(file);
  Automation automation(library);
  if (std::strcmp(state, "open") == 0) {
    automation.host.call(effEditOpen, 0, 0, reinterpret_cast<void*>(DefaultRootWindow(display)));
  }
  for (int block = 0; block < blocks; ++block) {
    automation.playBlock();
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const std::string file = sivray::vsthost::findLibrary("");
    sivray::vsthost::shareContentOf(file);
    Display* const display = XOpenDisplay(nullptr);
    if (display == nullptr) {
      throw std::runtime_error("no X server");
    }
    if (argc == 4 && std::strcmp(argv[1], "count") == 0) {
      count(file, display, argv[2], std::atoi(argv[3]));
    } else {
      measure(file, display, 1.0F);
      measure(file, display, 2.0F);
    }
    XCloseDisplay(display);
  } catch (const std::runtime_error& error) {
    std::fprintf(stderr, "bench_automation: %s\n", error.what());
    return 1;
  }
  return 0;
}
