// The state that a host keeps: a tag, a msgpack map of three, and the content with its three sections.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <map>
#include <optional>

#include "content/inspect/Inspectors.h"
#include "storage/state/EditBufferRecord.h"
#include "storage/state/StateContent.h"

namespace sivray::content {
namespace {

/// The head of a msgpack value: its type, and its length or number.
struct PackedHead {
  enum class Kind { number, text, bytes, map };
  Kind kind = Kind::number;
  std::uint64_t value = 0;
};

std::uint64_t bigEndian(CheckedReader& reader, std::size_t bytes) {
  std::uint64_t value = 0;
  for (const std::uint8_t byte : reader.take(bytes, "a length")) {
    value = (value << 8) | byte;
  }
  return value;
}

PackedHead readHead(CheckedReader& reader) {
  using Kind = PackedHead::Kind;
  struct LongForm {
    Kind kind;
    std::size_t bytes;
  };
  static const std::map<int, LongForm> longForms{
      {0xC4, {Kind::bytes, 1}},  {0xC5, {Kind::bytes, 2}},  {0xC6, {Kind::bytes, 4}},  {0xCC, {Kind::number, 1}},
      {0xCD, {Kind::number, 2}}, {0xCE, {Kind::number, 4}}, {0xCF, {Kind::number, 8}}, {0xD9, {Kind::text, 1}},
      {0xDA, {Kind::text, 2}},   {0xDB, {Kind::text, 4}},   {0xDE, {Kind::map, 2}},    {0xDF, {Kind::map, 4}}};
  const CheckedReader start = reader;
  const int tag = reader.take(1, "a msgpack value").front();
  if (tag < 0x80) {
    return {Kind::number, static_cast<std::uint64_t>(tag)};
  }
  if (tag < 0x90) {
    return {Kind::map, static_cast<std::uint64_t>(tag & 0x0F)};
  }
  if (tag >= 0xA0 && tag < 0xC0) {
    return {Kind::text, static_cast<std::uint64_t>(tag & 0x1F)};
  }
  const auto form = longForms.find(tag);
  if (form == longForms.end()) {
    start.fail("a msgpack value of the type " + std::to_string(tag) + " has no place here");
  }
  return {form->second.kind, bigEndian(reader, form->second.bytes)};
}

std::string checkedText(CheckedReader& reader, const char* what) {
  const CheckedReader start = reader;
  const PackedHead head = readHead(reader);
  if (head.kind != PackedHead::Kind::text) {
    start.fail(std::string(what) + " is no text");
  }
  const auto bytes = reader.take(head.value, what);
  return {bytes.begin(), bytes.end()};
}

void inspectContent(CheckedReader reader, Report& report) {
  const CheckedReader start = reader;
  if (reader.word("the layout of the content") != tesh::bramel::vst::kContentLayout) {
    start.fail("the content begins with another word than 0");
  }
  const std::uint32_t miscBytes = reader.word("the size of the run flags");
  const std::uint32_t engineBytes = reader.word("the size of the engine's state");
  const std::uint32_t macroBytes = reader.word("the size of the macro chunk");
  inspectMiscChunk(reader.part(miscBytes, "the run flags"), report.add("runFlags", Report::object()));
  CheckedReader engineState = reader.part(engineBytes, "the engine's state");
  if (engineBytes > 0) {
    inspectEngineChunk(engineState, report.add("engine", Report::object()));
  }
  CheckedReader macroChunk = reader.part(macroBytes, "the macro chunk");
  if (macroBytes > 0) {
    inspectMacroChunk(macroChunk, report.add("macroChunk", Report::object()));
  }
  reader.requireEnd("the macro chunk");
}

/// Reads the map and returns a reader for the content.
CheckedReader inspectEnvelope(CheckedReader& reader, Report& report) {
  const CheckedReader start = reader;
  const PackedHead map = readHead(reader);
  if (map.kind != PackedHead::Kind::map) {
    start.fail("the state is no msgpack map");
  }
  std::optional<CheckedReader> content;
  for (std::uint64_t i = 0; i < map.value; ++i) {
    const std::string key = checkedText(reader, "a key");
    const CheckedReader place = reader;
    if (key == "name") {
      report.addText("name", checkedText(reader, "the name"));
      continue;
    }
    const PackedHead head = readHead(reader);
    if (head.kind == PackedHead::Kind::number) {
      report.addNumber(key, head.value);
    } else if (head.kind == PackedHead::Kind::map) {
      place.fail("the value of \"" + key + "\" is a map");
    } else {
      CheckedReader bytes = reader.part(head.value, "the value of \"" + key + "\"");
      content = key == "content" ? std::optional(bytes) : content;
    }
  }
  if (!content) {
    start.fail("the map has no content");
  }
  return *content;
}

}  // namespace

void inspectHostState(CheckedReader reader, Report& report) {
  report.addText("kind", "host state");
  const CheckedReader start = reader;
  if (reader.text(4, "the tag") != tesh::bramel::vst::kStateTag) {
    start.fail("the tag \"MPck\" is missing");
  }
  const CheckedReader content = inspectEnvelope(reader, report);
  reader.requireEnd("the msgpack map");
  inspectContent(content, report);
}

}  // namespace sivray::content
