// The sample library for a browser, and the sample of each pad ("part").
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

namespace tesh::bramel {

/// Message thread only. Parts, categories and samples of a category count from 0.
class ISampleSelectorViewModel {
 public:
  virtual ~ISampleSelectorViewModel() = default;

  virtual std::int32_t getPartCount() const = 0;
  /// The category of the part's sample, -1 with an empty library.
  virtual std::int64_t getCategoryIndex(std::uint64_t part) const = 0;
  virtual std::int64_t getSampleIndex(std::uint64_t part) const = 0;
  /// Gives the part another sample. Ignores a sample or part that does not exist.
  virtual void selectSample(std::uint64_t part, std::int64_t category, std::int64_t index) = 0;

  virtual std::int64_t getCategoryCount() const = 0;
  virtual std::string getCategoryName(std::int64_t category) const = 0;
  virtual std::int64_t getSampleCount(std::int64_t category) const = 0;
  virtual std::string getSampleName(std::int64_t category, std::int64_t index) const = 0;
};

}  // namespace tesh::bramel
