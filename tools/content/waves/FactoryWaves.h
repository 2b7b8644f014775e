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

/// Reads all tables of the folder. A wave's number is the row's place here, and that of its name in numbers.txt. Throws
/// TableError for a mistake in a table, a name that appears in two tables, a name without a number or a number without
/// a wave, and a file that cannot be read.
std::vector<FactoryRow> readFactoryRows(const std::filesystem::path& folder);

/// Renders one wave. It depends on its row alone, so other rows may change without changing it.
Wave makeWave(const FactoryRow& row);

/// Renders all waves of a folder of tables on all cores. The result is the same on every machine. Throws as
/// `readFactoryRows`.
std::vector<Wave> makeFactoryWaves(const std::filesystem::path& folder);

}  // namespace sivray::content
