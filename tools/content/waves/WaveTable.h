// The sound designers' tables, one per category, as rows; each row describes a wave.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "content/models/Model.h"

namespace sivray::content {

/// A mistake in a table, as "file:line: reason".
class TableError : public std::runtime_error {
 public:
  TableError(std::string_view file, int line, std::string_view reason);
};

struct WaveRow {
  std::string name;
  int line = 0;  ///< Line number in its table.
  const Model* model = nullptr;
  Parameters parameters;
};

/// Parses one table. `file` is the name that errors show. Throws TableError.
std::vector<WaveRow> parseWaveTable(std::string_view text, std::string_view file);

}  // namespace sivray::content
