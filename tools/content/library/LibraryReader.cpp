// Takes a library apart as the engine and the browser do.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/library/LibraryReader.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>

#include "content/Files.h"
#include "engine/samples/SivraySampleLibrary.h"
#include "engine/samples/WaveDatabase.h"

namespace sivray::content {
namespace {

/// The samples of a stretch, `start` to `end` inclusive. Throws std::out_of_range for one past the end of the data.
std::vector<std::int16_t> samplesOf(std::span<const std::uint8_t> data, std::uint32_t start, std::uint32_t end) {
  if (end < start || 2 * (std::uint64_t{end} + 1) > data.size()) {
    throw std::out_of_range("a wave lies outside");
  }
  std::vector<std::int16_t> samples;
  samples.reserve(end - start + std::size_t{1});
  for (std::size_t i = start; i <= end; ++i) {
    samples.push_back(static_cast<std::int16_t>(data[2 * i] << 8 | data[2 * i + 1]));
  }
  return samples;
}

}  // namespace

std::vector<Wave> readLibrary(const std::string& folder) {
  constexpr std::uint32_t kStereo = 2;
  const auto data = readFile(folder + "/drumdata.bin");
  tesh::bramel::plugin::sivray::WaveDatabase database("");
  database.loadFrom(readFile(folder + "/sampleparam.bin"), readFile(folder + "/drumparam.bin"));
  tesh::vimo::SivraySampleLibrary categories;
  categories.loadFrom(readFile(folder + "/drumparam_category.bin"));
  if (categories.waveCount() != database.waveCount()) {
    throw std::runtime_error(folder + ": drumparam.bin and drumparam_category.bin tell of different waves");
  }
  std::vector<Wave> waves;
  for (std::int32_t id = 0; id < database.waveCount(); ++id) {
    const auto info = database.lookup(id);
    try {
      Wave wave{std::string(info.name),
                categories.waveCategory(categories.flatIndexOf(id)),
                static_cast<int>(info.sampleRate),
                samplesOf(data, info.leftStart, info.leftEnd),
                {}};
      if (info.type == kStereo) {
        wave.right = samplesOf(data, info.rightStart, info.rightEnd);
      }
      waves.push_back(std::move(wave));
    } catch (const std::out_of_range&) {
      throw std::runtime_error(folder + "/drumdata.bin: wave " + std::to_string(id) + " lies past its end");
    }
  }
  return waves;
}

}  // namespace sivray::content
