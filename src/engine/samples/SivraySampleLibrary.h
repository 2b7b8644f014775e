// The waves of the drum module by category, read from drumparam_category.bin.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "engine/samples/SampleLibrary.h"

namespace tesh::vimo {

/// See SampleLibrary for the operations.
class SivraySampleLibrary final : public SampleLibrary {
 public:
  static constexpr std::size_t kMaxCategories = 16;

  bool load(const std::string& path) override;

  /// Reads the records of an index file from memory. Leaves out a record whose category is not 1 to 16; the records
  /// after it keep their ids. Returns false, and changes nothing, if there are no bytes.
  bool loadFrom(std::span<const std::uint8_t> records);

  std::int32_t categorySize(std::int32_t category) const override;
  std::int32_t waveCount() const override;
  std::int32_t categoryCount() const override { return static_cast<std::int32_t>(categories); }
  std::string waveName(std::int32_t flatIndex) const override;
  std::int32_t waveCategory(std::int32_t flatIndex) const override;
  std::int32_t waveId(std::int32_t flatIndex) const override;
  std::int32_t flatIndexOf(std::int32_t id) const override;

 private:
  struct Entry {
    std::int32_t id = 0;
    std::int32_t category = 0;
    std::string name;
  };

  const Entry* entryAt(std::int32_t flatIndex) const;

  std::vector<Entry> entries;
  std::array<std::uint32_t, kMaxCategories> sizes{};
  std::uint32_t categories = 0;
};

}  // namespace tesh::vimo
