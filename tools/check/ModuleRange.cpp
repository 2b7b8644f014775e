// Asks the dynamic linker for the segments of a loaded library.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "check/ModuleRange.h"

#ifdef __linux__
#include <link.h>
#endif

#include <algorithm>

namespace sivray::check {

#ifdef __linux__
namespace {

struct Search {
  std::string_view text;  ///< Empty for this program, which the list of libraries has without a name.
  ModuleRange found;
};

int compareModule(dl_phdr_info* info, std::size_t /*size*/, void* data) {
  auto& search = *static_cast<Search*>(data);
  const std::string_view name(info->dlpi_name);
  if (search.text.empty() ? !name.empty() : name.find(search.text) == std::string_view::npos) {
    return 0;
  }
  search.found.from = ~std::uintptr_t{0};
  for (int i = 0; i < info->dlpi_phnum; ++i) {
    const auto& segment = info->dlpi_phdr[i];
    if (segment.p_type == PT_LOAD) {
      search.found.from = std::min<std::uintptr_t>(search.found.from, info->dlpi_addr + segment.p_vaddr);
      search.found.to = std::max<std::uintptr_t>(search.found.to, info->dlpi_addr + segment.p_vaddr + segment.p_memsz);
    }
  }
  return 1;
}

}  // namespace

ModuleRange ModuleRange::of(std::string_view text) {
  Search search{text, {}};
  dl_iterate_phdr(&compareModule, &search);
  return search.found;
}
#else
ModuleRange ModuleRange::of(std::string_view) { return {}; }
#endif

}  // namespace sivray::check
