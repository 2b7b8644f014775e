// Renders the factory waves from a folder of tables.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "content/library/Wave.h"
#include "content/waves/WaveTable.h"

namespace sivray::content {

/// A row and its table's category.
struct FactoryRow {
  int category = 0;  ///< Index into kCategoryNames.
  WaveRow row;
};

/// Reads all tables of the folder. The position of a wave's name in numbers.txt is its number and its row's index in
/// the result. Throws TableError for a mistake in a table, a name in two tables, a name without a number, a number
/// without a wave, and a file that cannot be read.
std::vector<FactoryRow> readFactoryRows(const std::filesystem::path& folder);

/// Renders one wave. It depends on its own row only, so changes of other rows do not affect it.
Wave makeWave(const FactoryRow& row);

/// Renders all waves of a folder of tables on all cores. The result is bit-identical on every machine. Throws as
/// `readFactoryRows` does.
std::vector<Wave> makeFactoryWaves(const std::filesystem::path& folder);

}  // namespace sivray::content
