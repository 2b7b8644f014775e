// Renders hits through the processor, then computes peak, loudness, length and brightness.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/levels/KitMeter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <stdexcept>

#include "content/Files.h"
#include "core/EngineRate.h"
#include "host/shell/Construction.h"
#include "storage/paths/Paths.h"

namespace sivray::content {
namespace {

namespace vimo = tesh::vimo;

constexpr double kRate = tesh::cofu::core::kEngineRate;
constexpr std::size_t kBlockFrames = 1024;
constexpr std::size_t kRingEntries = 4096;  // More than all macros of a program.
constexpr float kSilence = 3.0e-5F;         // One step of a sample.
constexpr std::size_t kSilentBlocks = 24;   // Half a second, longer than the gaps of any echo.

float peakOf(const std::vector<float>& samples, std::size_t from = 0) {
  float peak = 0.0F;
  for (std::size_t i = from; i < samples.size(); ++i) {
    peak = std::max(peak, std::abs(samples[i]));
  }
  return peak;
}

double energy(float left, float right) {
  return static_cast<double>(left) * static_cast<double>(left) +
         static_cast<double>(right) * static_cast<double>(right);
}

/// Returns the RMS over both channels of the loudest tenth of a second.
double loudnessOf(const std::vector<float>& left, const std::vector<float>& right) {
  constexpr auto kWindow = static_cast<std::size_t>(kRate / 10.0);
  double sum = 0.0;
  double loudest = 0.0;
  for (std::size_t i = 0; i < left.size(); ++i) {
    sum += energy(left[i], right[i]);
    sum -= i >= kWindow ? energy(left[i - kWindow], right[i - kWindow]) : 0.0;
    loudest = std::max(loudest, sum);
  }
  return std::sqrt(loudest / (2.0 * static_cast<double>(kWindow)));
}

double secondsUntilQuiet(const std::vector<float>& left, const std::vector<float>& right, double peak) {
  constexpr double kDown60Decibels = 1.0e-3;
  std::size_t last = 0;
  for (std::size_t i = 0; i < left.size(); ++i) {
    const double loud = static_cast<double>(std::max(std::abs(left[i]), std::abs(right[i])));
    last = loud > peak * kDown60Decibels ? i : last;
  }
  return static_cast<double>(last) / kRate;
}

/// Returns the mean frequency in Hz, weighted by energy: the ratio of the slope's energy to the signal's gives it.
double brightnessOf(const std::vector<float>& left, const std::vector<float>& right) {
  double slope = 0.0;
  double signal = 0.0;
  for (std::size_t i = 1; i < left.size(); ++i) {
    slope += energy(left[i] - left[i - 1], right[i] - right[i - 1]);
    signal += energy(left[i], right[i]);
  }
  const double sine = signal > 0.0 ? std::min(std::sqrt(slope / signal) / 2.0, 1.0) : 0.0;
  return std::asin(sine) * kRate / std::numbers::pi;
}

std::unique_ptr<KitMeter::Processor> makeWithContent() {
  using namespace tesh::bramel;
  const std::string description = pathBelow(pathFor(kBramelPath_Macro, vst::kInstrumentName), "readme.json");
  if (!fileExists(description)) {
    throw std::runtime_error((description.empty() ? "readme.json" : systemPathOf(description)) +
                             ": there is no content here; BRAMEL_COMMON_FILES names the folder that holds Tesh/Bramel");
  }
  return vst::makeProcessor();
}

}  // namespace

KitMeter::KitMeter() : automation(kRingEntries), echoes(kRingEntries), processor(makeWithContent()) {
  midi.reserve(kRingEntries);
}

std::size_t KitMeter::programCount() const {
  return static_cast<std::size_t>(processor->controller().programs().programCount(vimo::Bank::factory));
}

std::string KitMeter::programName(std::size_t program) const {
  return processor->controller().programs().database(vimo::Bank::factory)->name(program);
}

std::string KitMeter::programStyle(std::size_t program) const {
  return processor->controller().programs().database(vimo::Bank::factory)->comment(program);
}

void KitMeter::select(std::size_t program) {
  processor->programQueue.put(vimo::MidiEvent::programChange(1, 0, static_cast<std::uint32_t>(program)));
  renderBlock();
  silence();
}

void KitMeter::setMacro(std::size_t macro, float value) {
  putMacro(macro, value);
  renderBlock();
}

void KitMeter::putMacro(std::size_t macro, float value) {
  processor->commandQueue.put({vimo::MacroCommandKind::setMacro, static_cast<std::uint32_t>(macro), value, 0, 0});
}

void KitMeter::setTempo(double tempo) { processor->generator().tempoChanged(tempo); }

void KitMeter::silence() {
  processor->generator().deactivate();
  processor->generator().activate();
  renderBlock();
  left.clear();
  right.clear();
}

HitMeasure KitMeter::hit(const std::vector<int>& notes, int velocity, double seconds) {
  silence();
  for (const int note : notes) {
    const std::array<std::uint8_t, 3> bytes{0x90, static_cast<std::uint8_t>(note), static_cast<std::uint8_t>(velocity)};
    midi.emplace_back(bytes, 0);
  }
  std::size_t quietBlocks = 0;
  while (quietBlocks < kSilentBlocks && static_cast<double>(left.size()) < seconds * kRate) {
    const std::size_t start = left.size();
    renderBlock();
    const bool isQuiet = std::max(peakOf(left, start), peakOf(right, start)) <= kSilence;
    quietBlocks = isQuiet ? quietBlocks + 1 : 0;
  }
  HitMeasure measure;
  measure.peak = static_cast<double>(std::max(peakOf(left), peakOf(right)));
  measure.loudness = loudnessOf(left, right);
  measure.seconds = secondsUntilQuiet(left, right, measure.peak);
  measure.brightness = brightnessOf(left, right);
  return measure;
}

StereoSound KitMeter::play(std::span<const Stroke> strokes, double seconds, std::span<const MacroMove> moves) {
  silence();
  auto next = strokes.begin();
  auto move = moves.begin();
  while (static_cast<double>(left.size()) < seconds * kRate) {
    const double end = static_cast<double>(left.size() + kBlockFrames) / kRate;
    for (; move != moves.end() && move->seconds < end; ++move) {
      putMacro(move->macro, move->value);
    }
    for (; next != strokes.end(); ++next) {
      const auto frame = static_cast<std::size_t>(next->seconds * kRate) - left.size();
      if (frame >= kBlockFrames) {
        break;
      }
      const std::array<std::uint8_t, 3> bytes{0x90, static_cast<std::uint8_t>(next->note),
                                              static_cast<std::uint8_t>(next->velocity)};
      midi.emplace_back(bytes, static_cast<std::uint32_t>(frame));
    }
    renderBlock();
  }
  return {left, right};
}

void KitMeter::renderBlock() {
  const std::size_t start = left.size();
  left.resize(start + kBlockFrames);
  right.resize(start + kBlockFrames);
  std::array<float*, 2> outputs{left.data() + start, right.data() + start};
  vimo::ProcessBlock block;
  block.outputs = outputs.data();
  block.frames = static_cast<std::int32_t>(kBlockFrames);
  block.automationRing = &automation;
  block.notificationRing = &echoes;
  block.midiIn = &midi;
  processor->process(block, 0, 1.0, 0.0);
  midi.clear();
}

}  // namespace sivray::content
