// A picture of spectrograms: a grid of labelled cells, one for each sound.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace sivray {

enum class SheetSize {
  large,  ///< For detail: cells of 300 x 150 pixels in all colours.
  small,  ///< For documentation: cells of 180 x 90 pixels in 16 shades, about 2 kB each.
};

class SpectrogramSheet {
 public:
  explicit SpectrogramSheet(double sampleRateOfSounds, SheetSize sizeOfCells = SheetSize::large)
      : sampleRate(sampleRateOfSounds), size(sizeOfCells) {}

  /// Adds a cell. Samples are mono with full scale 1.0.
  void add(const std::string& title, std::vector<float> samples);

  /// Draws the grid and writes a PNG file: time to the right, 30 Hz to 20 kHz upwards on a logarithmic scale, 90 dB
  /// from dark to bright. Throws std::runtime_error when the file cannot be written.
  void write(const std::string& path) const;

 private:
  struct Cell {
    std::string title;
    std::vector<float> samples;
  };

  double sampleRate;
  SheetSize size;
  std::vector<Cell> cells;
};

}  // namespace sivray
