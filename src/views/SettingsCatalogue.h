// The small guide on the settings page: a row for the instrument and one for each part of its panel.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>
#include <string_view>

namespace tesh::bramel {

/// Texts in UTF-8. The name identifies the row: its picture is the image "collection_" and the name.
struct CatalogueRow {
  const char* name;
  const char* tagLine;
  const char* description;
  const char* japaneseDescription;
};

/// At least one row; the first is the instrument itself.
std::span<const CatalogueRow> settingsCatalogue();

/// The row of this name; 0 if there is none.
std::size_t catalogueRowOf(std::string_view name);

}  // namespace tesh::bramel
