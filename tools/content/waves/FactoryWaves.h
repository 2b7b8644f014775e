// The factory waves: the tables of a folder, made to sound.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "content/library/Wave.h"
#include "content/waves/WaveTable.h"

namespace sivray::content {

/// A row with the category it stands in.
struct FactoryRow {
  int category = 0;  ///< Index into kCategoryNames.
  WaveRow row;
};

/// Reads all tables of the folder, in the order of the categories. Throws TableError for a mistake in one, also for a
/// name that another table has, and for a table that cannot be read.
std::vector<FactoryRow> readFactoryRows(const std::filesystem::path& folder);

/// One wave. It hangs on nothing but its row: its neighbours may come and go.
Wave makeWave(const FactoryRow& row);

/// All waves of a folder of tables, made on all cores. The same bytes on every machine.
std::vector<Wave> makeFactoryWaves(const std::filesystem::path& folder);

}  // namespace sivray::content
