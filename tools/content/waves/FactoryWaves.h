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

/// Reads all tables of the folder, in the order of the categories. Throws TableError for a mistake in a table, a name
/// that appears in two tables, and a table that cannot be read.
std::vector<FactoryRow> readFactoryRows(const std::filesystem::path& folder);

/// Renders one wave. It depends on its row alone, so other rows may change without changing it.
Wave makeWave(const FactoryRow& row);

/// Renders all waves of a folder of tables on all cores. The result is the same on every machine. Throws as
/// `readFactoryRows`.
std::vector<Wave> makeFactoryWaves(const std::filesystem::path& folder);

}  // namespace sivray::content
