// The waves of the drum module by category, read from drumparam_category.bin.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "engine/samples/SampleLibrary.h"

namespace tesh::vimo {

/// The operations are described in SampleLibrary. Libraries that were read from equal bytes share their content.
class SivraySampleLibrary final : public SampleLibrary {
 public:
  static constexpr std::size_t kMaxCategories = 16;

  /// The measurements of similar waves are read from the same folder when they are first needed.
  bool load(const std::string& path) override;

  /// Reads the records of an index file from memory. Records whose category is not 1 to 16 are not listed; later
  /// records keep their ids. A record of category 0 is a free number, which plays the entry of the same name. Replaces
  /// the previous content. Returns false, and changes nothing, if there are no bytes.
  bool loadFrom(std::span<const std::uint8_t> records);

  std::int32_t categorySize(std::int32_t category) const override;
  std::int32_t waveCount() const override;
  std::int32_t numberCount() const override { return static_cast<std::int32_t>(content->numbers.size()); }
  bool isFree(std::int32_t id) const override;
  std::int32_t numbersPerFactoryWave() const override { return content->distance; }
  std::int32_t categoryCount() const override { return static_cast<std::int32_t>(content->categories); }
  std::string waveName(std::int32_t flatIndex) const override;
  std::int32_t waveCategory(std::int32_t flatIndex) const override;
  std::int32_t waveId(std::int32_t flatIndex) const override;
  std::int32_t flatIndexOf(std::int32_t id) const override;
  const SimilarWaves& similarWaves() const override;

 private:
  struct Entry {
    std::int32_t id = 0;
    std::int32_t category = 0;
    std::string name;
  };

  /// What a wave number refers to.
  struct Number {
    bool isFree = false;
    std::int32_t flatIndex = 0;
  };

  struct Content {
    std::vector<Entry> entries;
    std::vector<Number> numbers;  ///< By id.
    std::int32_t distance = 1;
    std::array<std::uint32_t, kMaxCategories> sizes{};
    std::uint32_t categories = 0;
  };

  static Content contentOf(std::span<const std::uint8_t> records);
  static void numberEntries(Content& content, const std::vector<std::string>& namesOfFree);
  const Entry* entryAt(std::int32_t flatIndex) const;
  const Number* numberAt(std::int32_t id) const;

  std::string indexPath;  ///< Path of the last `load`; empty before it.
  mutable std::optional<SimilarWaves> similar;
  std::shared_ptr<const Content> content = std::make_shared<const Content>();
};

}  // namespace tesh::vimo
