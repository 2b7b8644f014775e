// Draws the spectrograms and their grid.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "sheet/SpectrogramSheet.h"

#include <juce_graphics/juce_graphics.h>

#include <algorithm>
#include <cmath>
#include <span>
#include <stdexcept>
#include <utility>

#include "sheet/Spectrum.h"

namespace sivray {
namespace {

constexpr int kColumns = 5;
constexpr int kCellWidth = 300;
constexpr int kCellHeight = 150;
constexpr int kTitleHeight = 20;
constexpr int kGap = 6;
constexpr int kFftOrder = 12;
/// The power of a sine of full scale in the middle of a bin: half of its amplitude lies at its negative frequency, and
/// a Hann window has a mean of one half.
constexpr float kPowerOfFullScale = float{1 << (kFftOrder - 2)} * float{1 << (kFftOrder - 2)};
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

/// Returns the loudest bin between two frequencies, from 0 (kRangeDecibels below a full-scale sine) to 1.
float level(std::span<const float> powers, double lowHertz, double highHertz, double rate) {
  const double size = 2.0 * static_cast<double>(powers.size() - 1);
  const auto first = static_cast<std::size_t>(lowHertz * size / rate);
  const auto last = std::max(first, static_cast<std::size_t>(highHertz * size / rate));
  float peak = 0.0F;
  for (std::size_t bin = first; bin <= std::min(last, powers.size() - 1); ++bin) {
    peak = std::max(peak, powers[bin]);
  }
  return 10.0F * std::log10(peak / kPowerOfFullScale + 1e-18F) / kRangeDecibels + 1.0F;
}

double hertzAt(double height) { return kLowestHertz * std::pow(kHighestHertz / kLowestHertz, height); }

void drawSpectrogram(juce::Image& image, int left, int top, const std::vector<float>& samples, double rate) {
  Spectrum spectrum(kFftOrder, Spectrum::Window::hann);
  // Silence before the sound, so that the window around each centre begins at the centre's own index.
  std::vector<float> padded(spectrum.size() / 2);
  padded.insert(padded.end(), samples.begin(), samples.end());
  for (int x = 0; x < kCellWidth; ++x) {
    const auto centre = static_cast<std::size_t>(static_cast<double>(samples.size()) * (x + 0.5) / kCellWidth);
    const std::span<const float> powers = spectrum.of(std::span(padded).subspan(centre));
    for (int y = 0; y < kCellHeight; ++y) {
      const double low = hertzAt(static_cast<double>(y) / kCellHeight);
      const double high = hertzAt(static_cast<double>(y + 1) / kCellHeight);
      image.setPixelAt(left + x, top + kCellHeight - 1 - y, heat(level(powers, low, high, rate)));
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
