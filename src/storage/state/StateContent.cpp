// Reads and writes the content and the run flags.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/state/StateContent.h"

#include <algorithm>

#include "core/LittleEndian.h"

namespace tesh::bramel::vst {

using cofu::core::ByteReader;
using cofu::core::ByteWriter;

std::optional<StateContent> readStateContent(std::span<const std::uint8_t> bytes) {
  ByteReader reader(bytes);
  const std::uint32_t layout = reader.word();
  const std::uint64_t flagBytes = reader.word();
  const std::uint64_t engineBytes = reader.word();
  const std::uint64_t macroBytes = reader.word();
  if (reader.hasFailed() || layout != kContentLayout || reader.remaining() != flagBytes + engineBytes + macroBytes) {
    return std::nullopt;
  }
  return StateContent{reader.take(flagBytes), reader.take(engineBytes), reader.take(macroBytes)};
}

std::array<std::uint8_t, kContentHeadBytes> contentHead(std::size_t flagBytes, std::size_t engineBytes,
                                                        std::size_t macroBytes) {
  std::vector<std::uint8_t> words;
  ByteWriter writer(words);
  writer.word(kContentLayout);
  for (const std::size_t bytes : {flagBytes, engineBytes, macroBytes}) {
    writer.word(static_cast<std::uint32_t>(bytes));
  }
  std::array<std::uint8_t, kContentHeadBytes> head{};
  std::copy(words.begin(), words.end(), head.begin());
  return head;
}

void appendStateContent(std::vector<std::uint8_t>& out, const StateContent& content) {
  ByteWriter writer(out);
  writer.bytes(contentHead(content.runFlags.size(), content.engine.size(), content.macros.size()));
  for (const auto& section : {content.runFlags, content.engine, content.macros}) {
    writer.bytes(section);
  }
}

std::optional<RunFlags> readRunFlags(std::span<const std::uint8_t> bytes) {
  ByteReader reader(bytes);
  const std::uint32_t version = reader.word();
  const auto tag = reader.take(kRunFlagsTag.size());
  RunFlags flags;
  flags.running = reader.word() != 0;
  flags.storesEngineChunk = version == kRunFlagsVersion && reader.word() != 0;
  const bool isKnown = version == kRunFlagsVersion || version == kRunningOnlyVersion;
  if (reader.hasFailed() || !isKnown || !std::equal(tag.begin(), tag.end(), kRunFlagsTag.begin())) {
    return std::nullopt;
  }
  return flags;
}

void appendRunFlags(std::vector<std::uint8_t>& out, RunFlags flags) {
  ByteWriter writer(out);
  writer.word(kRunFlagsVersion);
  writer.text(kRunFlagsTag);
  writer.word(flags.running ? 1 : 0);
  writer.word(flags.storesEngineChunk ? 1 : 0);
}

}  // namespace tesh::bramel::vst
