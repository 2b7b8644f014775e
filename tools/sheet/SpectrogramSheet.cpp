// Draws the spectrograms and their grid.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "sheet/SpectrogramSheet.h"

#include <juce_graphics/juce_graphics.h>

#include <algorithm>
#include <cmath>
#include <span>
#include <stdexcept>
#include <utility>

#include "sheet/PalettePng.h"
#include "sheet/Spectrum.h"
#include "terminal/NamedFile.h"

namespace sivray {
namespace {

/// Sizes in pixels.
struct Layout {
  int columns, cellWidth, cellHeight, titleHeight, gap;
  float fontHeight;
};

constexpr Layout kLarge{5, 300, 150, 20, 6, 15.0F};
constexpr Layout kSmall{6, 180, 90, 14, 4, 12.0F};
constexpr int kFftOrder = 12;
/// The power of a full-scale sine at the centre of a bin: half of its amplitude is at the negative frequency, and a
/// Hann window has a mean of one half.
constexpr float kPowerOfFullScale = float{1 << (kFftOrder - 2)} * float{1 << (kFftOrder - 2)};
constexpr double kLowestHertz = 30.0;
constexpr double kHighestHertz = 20000.0;
constexpr float kRangeDecibels = 90.0F;
constexpr int kShades = 16;  ///< Number of colours of small sheets.

const juce::Colour kBackground(0xff1c1c22);

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

/// Returns the level of the loudest bin between two frequencies, from 0 (kRangeDecibels below a full-scale sine) to 1.
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

/// The colours of a small sheet: the shades, and those of the titles.
std::vector<juce::Colour> paletteOfSmall() {
  std::vector<juce::Colour> colours(kShades);
  for (int shade = 0; shade < kShades; ++shade) {
    colours[static_cast<std::size_t>(shade)] = heat(static_cast<float>(shade) / (kShades - 1));
  }
  for (const float part : {0.0F, 0.35F, 0.7F, 1.0F}) {
    colours.push_back(kBackground.interpolatedWith(juce::Colours::white, part));
  }
  return colours;
}

void drawSpectrogram(juce::Image& image, juce::Point<int> at, const Layout& layout, const std::vector<float>& samples,
                     double rate) {
  Spectrum spectrum(kFftOrder, Spectrum::Window::hann);
  // Prepends silence, so that the window around a centre begins at the centre's own index.
  std::vector<float> padded(spectrum.size() / 2);
  padded.insert(padded.end(), samples.begin(), samples.end());
  for (int x = 0; x < layout.cellWidth; ++x) {
    const auto centre = static_cast<std::size_t>(static_cast<double>(samples.size()) * (x + 0.5) / layout.cellWidth);
    const std::span<const float> powers = spectrum.of(std::span(padded).subspan(centre));
    for (int y = 0; y < layout.cellHeight; ++y) {
      const double low = hertzAt(static_cast<double>(y) / layout.cellHeight);
      const double high = hertzAt(static_cast<double>(y + 1) / layout.cellHeight);
      image.setPixelAt(at.x + x, at.y + layout.cellHeight - 1 - y, heat(level(powers, low, high, rate)));
    }
  }
}

/// Replaces the file's content by these bytes. Returns whether that succeeded.
bool writeFile(const std::string& path, const juce::MemoryBlock& bytes) {
  juce::TemporaryFile temporary(namedFile(path));
  return temporary.getFile().replaceWithData(bytes.getData(), bytes.getSize()) &&
         temporary.overwriteTargetFileWithTemporary();
}

juce::MemoryBlock pngOf(const juce::Image& image, SheetSize size) {
  juce::MemoryBlock bytes;
  if (size == SheetSize::small) {
    const auto png = palettePngOf(image, paletteOfSmall());
    bytes.append(png.data(), png.size());
  } else {
    juce::MemoryOutputStream stream(bytes, false);
    juce::PNGImageFormat().writeImageToStream(image, stream);
  }
  return bytes;
}

}  // namespace

void SpectrogramSheet::add(const std::string& title, std::vector<float> samples) {
  cells.push_back({title, std::move(samples)});
}

void SpectrogramSheet::write(const std::string& path) const {
  const Layout& layout = size == SheetSize::small ? kSmall : kLarge;
  const int rows = (static_cast<int>(cells.size()) + layout.columns - 1) / layout.columns;
  const int stepX = layout.cellWidth + layout.gap;
  const int stepY = layout.cellHeight + layout.titleHeight + layout.gap;
  juce::Image image(juce::Image::RGB, layout.gap + layout.columns * stepX, layout.gap + rows * stepY, true,
                    juce::SoftwareImageType());
  juce::Graphics graphics(image);
  graphics.fillAll(kBackground);
  graphics.setColour(juce::Colours::white);
  graphics.setFont(layout.fontHeight);
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const int left = layout.gap + static_cast<int>(i) % layout.columns * stepX;
    const int top = layout.gap + static_cast<int>(i) / layout.columns * stepY;
    graphics.drawText(cells[i].title, left, top, layout.cellWidth, layout.titleHeight,
                      juce::Justification::centredLeft);
    drawSpectrogram(image, {left, top + layout.titleHeight}, layout, cells[i].samples, sampleRate);
  }
  if (!writeFile(path, pngOf(image, size))) {
    throw std::runtime_error("cannot write the picture '" + path + "'");
  }
}

}  // namespace sivray
