// A sample library on disk for tests, written to the folder where the path service looks for it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "support/Scratch.h"

namespace support {

/// A wave of a test. Mono waves have an empty right side.
struct Wave {
  std::string name;
  std::vector<std::int16_t> left;
  std::vector<std::int16_t> right;
  std::uint32_t rate = 44100;
  std::uint32_t category = 1;
};

/// Returns decaying noise, the same for the same seed.
inline std::vector<std::int16_t> fallingNoise(std::uint32_t seed, int frames, int loudness = 30000) {
  std::vector<std::int16_t> samples;
  for (int i = 0; i < frames; ++i) {
    seed = seed * 1664525U + 1013904223U;
    const int level = loudness - static_cast<int>(std::int64_t{loudness} * i / (2 * std::int64_t{frames}));
    samples.push_back(static_cast<std::int16_t>(static_cast<int>(seed >> 16) * level / 32768 - level));
  }
  return samples;
}

/// Returns `count` waves, alternately mono and stereo, of different rates and lengths.
inline std::vector<Wave> assortedWaves(int count, int frames) {
  std::vector<Wave> waves;
  for (int i = 0; i < count; ++i) {
    const auto seed = static_cast<std::uint32_t>(i);
    Wave wave;
    wave.name = "wave" + std::to_string(i);
    wave.left = fallingNoise(2 * seed + 1, frames + 37 * i);
    if (i % 2 == 1) {
      wave.right = fallingNoise(2 * seed + 2, frames + 37 * i);
    }
    wave.rate = i % 3 == 2 ? 22050 : 44100;
    waves.push_back(std::move(wave));
  }
  return waves;
}

/// A temporary folder that is this process's common-files folder while this object exists.
class SampleFolder {
 public:
  explicit SampleFolder(const std::vector<Wave>& waves = {}) {
    std::filesystem::create_directories(folder);
    ::setenv("BRAMEL_COMMON_FILES", root.path().c_str(), 1);
    write(waves);
  }

  std::filesystem::path pathOf(const std::string& file) const { return folder / file; }

  void write(const std::vector<Wave>& waves) {
    std::string samples;
    std::string records;
    std::string categories;
    std::string data;
    for (const Wave& wave : waves) {
      const auto first = static_cast<std::uint32_t>(samples.size() / 12);
      const bool isStereo = !wave.right.empty();
      addStretch(samples, data, wave.left, wave.rate);
      if (isStereo) {
        addStretch(samples, data, wave.right, wave.rate);
      }
      std::string name = wave.name;
      name.resize(12, '\0');
      addWord(records, isStereo ? 2 : 1);
      records += name;
      addWord(records, first);
      addWord(records, isStereo ? first + 1 : 0);
      addWord(categories, wave.category);
      categories += name + std::string(8, '\0');
    }
    writeFile("sampleparam.bin", samples);
    writeFile("drumparam.bin", records);
    writeFile("drumparam_category.bin", categories);
    writeFile("drumdata.bin", data);
  }

  void writeFile(const std::string& file, const std::string& bytes) const { support::writeFile(pathOf(file), bytes); }

 private:
  static void addWord(std::string& bytes, std::uint32_t word) {
    for (int shift = 0; shift < 32; shift += 8) {
      bytes.push_back(static_cast<char>(word >> shift));
    }
  }

  static void addStretch(std::string& samples, std::string& data, const std::vector<std::int16_t>& stretch,
                         std::uint32_t rate) {
    const auto start = static_cast<std::uint32_t>(data.size() / 2);
    addWord(samples, start);
    addWord(samples, start + static_cast<std::uint32_t>(stretch.size()) - 1);
    addWord(samples, rate);
    for (const std::int16_t sample : stretch) {
      data.push_back(static_cast<char>(sample >> 8));
      data.push_back(static_cast<char>(sample));
    }
  }

  const Scratch root;
  const std::filesystem::path folder = root / "Tesh/Bramel/Resource/SivrayPCM";
};

}  // namespace support
