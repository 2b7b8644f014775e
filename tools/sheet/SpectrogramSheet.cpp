// Computes the spectrograms by FFT and draws the grid.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "sheet/SpectrogramSheet.h"

#include <juce_dsp/juce_dsp.h>
#include <juce_graphics/juce_graphics.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

namespace sivray {
namespace {

constexpr int kColumns = 5;
constexpr int kCellWidth = 300;
constexpr int kCellHeight = 150;
constexpr int kTitleHeight = 20;
constexpr int kGap = 6;
constexpr int kFftOrder = 12;
constexpr int kFftSize = 1 << kFftOrder;
constexpr double kLowestHertz = 30.0;
constexpr double kHighestHertz = 20000.0;
constexpr float kRangeDecibels = 90.0F;

/// Maps 0 to 1 to a colour: black, violet, orange, warm white.
juce::Colour heat(float level) {
  static const juce::ColourGradient gradient = [] {
    juce::ColourGradient g(juce::Colour(0xff06060c), 0.0F, 0.0F, juce::Colour(0xfffff4d0), 1.0F, 0.0F, false);
    g.addColour(0.35, juce::Colour(0xff3b1f6b));
    g.addColour(0.6, juce::Colour(0xffb8325f));
    g.addColour(0.82, juce::Colour(0xfff59231));
    return g;
  }();
  return gradient.getColourAtPosition(std::clamp(level, 0.0F, 1.0F));
}

class SpectrumColumn {
 public:
  /// Computes the magnitudes of the window around `centre`.
  void analyse(const std::vector<float>& samples, std::ptrdiff_t centre) {
    std::fill(bins.begin(), bins.end(), 0.0F);
    for (int i = 0; i < kFftSize; ++i) {
      const std::ptrdiff_t at = centre - kFftSize / 2 + i;
      if (at >= 0 && at < static_cast<std::ptrdiff_t>(samples.size())) {
        bins[static_cast<std::size_t>(i)] = samples[static_cast<std::size_t>(at)];
      }
    }
    window.multiplyWithWindowingTable(bins.data(), kFftSize);
    fft.performFrequencyOnlyForwardTransform(bins.data());
  }

  /// Returns the loudest bin between two frequencies, from 0 (kRangeDecibels below a full-scale sine) to 1.
  float level(double lowHertz, double highHertz, double rate) const {
    const auto first = static_cast<std::size_t>(lowHertz * kFftSize / rate);
    const auto last = std::max(first, static_cast<std::size_t>(highHertz * kFftSize / rate));
    float peak = 0.0F;
    for (std::size_t bin = first; bin <= std::min<std::size_t>(last, kFftSize / 2); ++bin) {
      peak = std::max(peak, bins[bin]);
    }
    const float decibels = 20.0F * std::log10(peak * 4.0F / kFftSize + 1e-9F);
    return decibels / kRangeDecibels + 1.0F;
  }

 private:
  juce::dsp::FFT fft{kFftOrder};
  juce::dsp::WindowingFunction<float> window{kFftSize, juce::dsp::WindowingFunction<float>::hann};
  std::vector<float> bins = std::vector<float>(2 * kFftSize);
};

double hertzAt(double height) { return kLowestHertz * std::pow(kHighestHertz / kLowestHertz, height); }

void drawSpectrogram(juce::Image& image, int left, int top, const std::vector<float>& samples, double rate) {
  SpectrumColumn column;
  for (int x = 0; x < kCellWidth; ++x) {
    const auto centre = static_cast<std::ptrdiff_t>(static_cast<double>(samples.size()) * (x + 0.5) / kCellWidth);
    column.analyse(samples, centre);
    for (int y = 0; y < kCellHeight; ++y) {
      const double low = hertzAt(static_cast<double>(y) / kCellHeight);
      const double high = hertzAt(static_cast<double>(y + 1) / kCellHeight);
      image.setPixelAt(left + x, top + kCellHeight - 1 - y, heat(column.level(low, high, rate)));
    }
  }
}

}  // namespace

void SpectrogramSheet::add(const std::string& title, std::vector<float> samples) {
  cells.push_back({title, std::move(samples)});
}

void SpectrogramSheet::write(const std::string& path) const {
  const int rows = (static_cast<int>(cells.size()) + kColumns - 1) / kColumns;
  const int stepX = kCellWidth + kGap;
  const int stepY = kCellHeight + kTitleHeight + kGap;
  juce::Image image(juce::Image::RGB, kGap + kColumns * stepX, kGap + rows * stepY, true, juce::SoftwareImageType());
  juce::Graphics graphics(image);
  graphics.fillAll(juce::Colour(0xff1c1c22));
  graphics.setColour(juce::Colours::white);
  graphics.setFont(15.0F);
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const int left = kGap + static_cast<int>(i) % kColumns * stepX;
    const int top = kGap + static_cast<int>(i) / kColumns * stepY;
    graphics.drawText(cells[i].title, left, top, kCellWidth, kTitleHeight, juce::Justification::centredLeft);
    drawSpectrogram(image, left, top + kTitleHeight, cells[i].samples, sampleRate);
  }
  const juce::File file = juce::File::getCurrentWorkingDirectory().getChildFile(juce::String::fromUTF8(path.c_str()));
  juce::TemporaryFile temporary(file);
  juce::FileOutputStream stream(temporary.getFile());
  const bool written = stream.openedOk() && juce::PNGImageFormat().writeImageToStream(image, stream);
  stream.flush();
  if (!written || !temporary.overwriteTargetFileWithTemporary()) {
    throw std::runtime_error("cannot write the picture '" + path + "'");
  }
}

}  // namespace sivray
