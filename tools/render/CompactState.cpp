// Unpacks the state, shortens its macro chunk, and packs it again.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "CompactState.h"

#include "core/LittleEndian.h"
#include "macro/MacroChunkFormat.h"
#include "storage/state/EditBufferRecord.h"
#include "storage/state/StateContent.h"

namespace sivray::render {
namespace {

namespace chunk = tesh::vimo::chunk;
namespace vst = tesh::bramel::vst;
using tesh::cofu::core::ByteReader;
using tesh::cofu::core::bytesAt;
using tesh::cofu::core::ByteWriter;
using Bytes = std::vector<std::uint8_t>;

/// Indices in a macro chunk's header, of the sizes of the two sections between header and values.
constexpr std::size_t kListSizeWord = 2;
constexpr std::size_t kProgramsSizeWord = 3;

/// Returns the header with both sizes zero, and the data after the two sections.
Bytes valuesAlone(std::span<const std::uint8_t> macros) {
  const std::uint32_t words = chunk::headerWords(ByteReader(macros).word());
  if (words == 0 || macros.size() < std::size_t{4} * words) {
    return {macros.begin(), macros.end()};
  }
  ByteReader reader(macros);
  Bytes out;
  ByteWriter writer(out);
  std::uint64_t sections = 0;
  for (std::size_t place = 0; place < words; ++place) {
    const std::uint32_t word = reader.word();
    const bool isSize = place == kListSizeWord || place == kProgramsSizeWord;
    sections += isSize ? word : 0;
    writer.word(isSize ? 0 : word);
  }
  writer.bytes(bytesAt(macros, std::uint64_t{4} * words + sections));
  return out;
}

}  // namespace

Bytes compactState(std::span<const std::uint8_t> state) {
  const auto record = vst::unpackState(state);
  const auto content = record ? vst::readStateContent(record->content) : std::nullopt;
  if (!content) {
    return {state.begin(), state.end()};
  }
  const auto flags = vst::readRunFlags(content->runFlags);
  const Bytes macros = valuesAlone(content->macros);
  vst::StateContent kept{content->runFlags, content->engine, macros};
  if (flags && !flags->storesEngineChunk) {
    kept.engine = {};
  }
  vst::EditBufferRecord compact;
  vst::appendStateContent(compact.content, kept);
  return vst::packState(compact);
}

}  // namespace sivray::render
