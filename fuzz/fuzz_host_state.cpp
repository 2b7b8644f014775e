// Fuzzes the envelope of a host's state: any bytes give a record or nothing, and a record survives packing.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "storage/state/EditBufferRecord.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tesh::bramel::vst;
  const auto record = unpackState({data, size});
  if (!record) {
    return 0;
  }
  const auto again = unpackState(packState(*record));
  if (!again || again->content != record->content || again->name != record->name || again->version != record->version) {
    std::abort();
  }
  return 0;
}
