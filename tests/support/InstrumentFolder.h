// The files that an instrument reads when it starts: a sample library, and a description of three macros, of which the
// host does not see the second.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "core/LittleEndian.h"
#include "support/SampleFolder.h"

namespace support {

/// Sets the common files and the user's documents of this process while this object exists.
class InstrumentFolder : public support::SampleFolder {
 public:
  InstrumentFolder() : SampleFolder(support::assortedWaves(3, 2000)) {
    const auto macros = pathOf("../../Macro/Sivray");
    ::setenv("BRAMEL_DOCUMENTS", macros.c_str(), 1);
    support::writeFile(macros / "readme.json", R"({"controller": {}, "processor": {"plugin_chunk": "", "cc_map": "",
        "macro_chunk": "macros.bin", "misc_chunk": "misc.bin", "parameter_description": "absent",
        "automation": {"blacklist": [1]}, "patches": []}})");
    support::writeFile(macros / "macros.bin", macroChunk());
    constexpr std::uint8_t kMisc[]{0, 2, 0, 0, 'c', 's', 'i', 'm', 1, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    support::writeFile(macros / "misc.bin", kMisc);
  }

 private:
  /// Returns a macro chunk: the levels of the first three pads, and one program that sets them to 1, 1 and 0.5.
  static std::vector<std::uint8_t> macroChunk() {
    constexpr std::uint32_t kPadLevel = 8;
    constexpr std::uint32_t kPadIds = 0x20;
    constexpr std::uint32_t kRecord = 44;
    std::vector<std::uint8_t> chunk;
    tesh::cofu::core::ByteWriter writer(chunk);
    for (const std::uint32_t word : {512U, 3U, 16U + 3U * kRecord, 8U + 12U, 0U, 0U, 3U, kRecord, kRecord, kRecord}) {
      writer.word(word);
    }
    for (std::uint32_t pad = 0; pad < 3; ++pad) {
      writer.text("Level" + std::to_string(pad));
      writer.zeros(26);
      writer.word(kPadLevel + pad * kPadIds);
      writer.real(0.0F);
      writer.real(1.0F);
    }
    for (const std::uint32_t word : {256U, 1U}) {
      writer.word(word);
    }
    for (const float value : {1.0F, 1.0F, 0.5F, 0.25F, 0.5F, 0.75F}) {
      writer.real(value);
    }
    return chunk;
  }
};

}  // namespace support
