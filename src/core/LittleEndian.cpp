// Growth of the writer's buffer.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/LittleEndian.h"

namespace tesh::cofu::core {

std::vector<std::uint8_t>::iterator ByteWriter::extend(std::size_t count) {
  out.resize(out.size() + count);
  return out.end() - static_cast<std::ptrdiff_t>(count);
}

}  // namespace tesh::cofu::core
