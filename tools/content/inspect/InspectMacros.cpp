// The macro chunk of all versions, and the file of the run flags.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>

#include "content/inspect/Inspectors.h"
#include "macro/MacroChunkFormat.h"
#include "macro/MacroSetBase.h"
#include "storage/state/StateContent.h"

namespace sivray::content {
namespace {

using namespace tesh::vimo::chunk;
using tesh::vimo::MacroSetType;

constexpr std::uint32_t kLinearBytes = 12;
constexpr std::uint32_t kMacroNameBytes = 16;

/// The words that a header of one version has after its first four, in the order of the newest version.
struct TextPlaces {
  std::uint32_t offset = 0;
  std::uint32_t nameBytes = 0;
  std::uint32_t commentBytes = 0;
};

void inspectSet(std::uint32_t type, CheckedReader reader, Report& report, bool mayNest);

void inspectLinear(CheckedReader& reader, Report& report) {
  if (reader.remaining() != kLinearBytes) {
    reader.fail("a set of this type takes 12 bytes, but has " + std::to_string(reader.remaining()));
  }
  report.addNumber("target", reader.word("the target"));
  report.add("minimum", Report::real(static_cast<double>(reader.real("the minimum"))));
  report.add("maximum", Report::real(static_cast<double>(reader.real("the maximum"))));
}

void inspectQuantized(CheckedReader& reader, Report& report) {
  report.addNumber("target", reader.word("the target"));
  Report& values = report.add("values", Report::list());
  while (reader.remaining() > 0) {
    values.add(Report::real(static_cast<double>(reader.real("a value"))));
  }
}

void inspectTwoBinded(CheckedReader& reader, Report& report) {
  report.addNumber("target", reader.word("the target"));
  for (const char* name : {"minimum", "middle", "maximum"}) {
    report.add(name, Report::real(static_cast<double>(reader.real(name))));
  }
  const CheckedReader splitPlace = reader;
  const float split = reader.real("the split");
  report.add("split", Report::real(static_cast<double>(split)));
  if (!(split > 0.0F && split < 1.0F)) {
    splitPlace.fail("the split must lie between 0 and 1");
  }
  std::array<std::uint32_t, 4> head{};  // Type and size of the first half, then of the second.
  std::ranges::generate(head, [&reader] { return reader.word("the heads of the halves"); });
  for (const std::size_t half : {0U, 2U}) {
    Report& row = report.add(half == 0 ? "first" : "second", Report::object());
    inspectSet(head[half], reader.part(head[half + 1], "half of a set"), row, false);
  }
  reader.requireEnd("the second half of a set");
}

void inspectSet(std::uint32_t type, CheckedReader reader, Report& report, bool mayNest) {
  const auto set = tesh::vimo::makeMacroSet(static_cast<MacroSetType>(type));
  const bool isTwoBinded = type == static_cast<std::uint32_t>(MacroSetType::twoBinded);
  if (!set || (isTwoBinded && !mayNest)) {
    reader.fail("there is no set of the type " + std::to_string(type) + " here");
  }
  report.addText("type", set->typeName());
  if (isTwoBinded) {
    inspectTwoBinded(reader, report);
  } else if (type == static_cast<std::uint32_t>(MacroSetType::quantized)) {
    inspectQuantized(reader, report);
  } else {
    inspectLinear(reader, report);
  }
}

void inspectCurrentRecord(CheckedReader& reader, Report& report) {
  constexpr std::uint32_t kRevision = 256;
  reader.take(4, "the tag");
  const CheckedReader revisionPlace = reader;
  if (reader.word("the revision") != kRevision) {
    revisionPlace.fail("a macro record has the revision 256");
  }
  report.addText("name", reader.text(kMacroNameBytes, "the name"));
  reader.take(16, "the header of a macro");
  const std::uint32_t count = reader.word("the number of sets");
  Report& sets = report.add("sets", Report::list());
  for (std::uint32_t i = 0; i < count; ++i) {
    const std::uint32_t type = reader.word("the type of a set");
    const std::uint32_t size = reader.word("the size of a set");
    Report& row = sets.add(Report::object());
    inspectSet(type, reader.part(size, "set " + std::to_string(i)), row, true);
  }
  reader.requireEnd("the sets of a macro");
}

void inspectOlderRecord(CheckedReader& reader, Report& report) {
  report.addText("name", reader.text(kMacroNameBytes, "the name"));
  reader.take(16, "the header of a macro");
  Report& sets = report.add("sets", Report::list());
  while (reader.remaining() > 0) {
    Report& row = sets.add(Report::object());
    inspectSet(0, reader.part(kLinearBytes, "a set"), row, false);
  }
}

void inspectMacroSection(CheckedReader reader, std::uint32_t expected, Report& report) {
  const CheckedReader countPlace = reader;
  const std::uint32_t count = reader.word("the number of macros");
  if (count != expected) {
    countPlace.fail("the section holds " + std::to_string(count) + " macros, but the header says " +
                    std::to_string(expected));
  }
  CheckedReader sizes = reader.part(std::uint64_t{count} * 4, "the sizes of " + std::to_string(count) + " macros");
  for (std::uint32_t i = 0; i < count; ++i) {
    CheckedReader record = reader.part(sizes.word("a size"), "macro " + std::to_string(i));
    Report& row = report.add(Report::object());
    constexpr std::uint32_t kTag = 0x7665722E;  // ".rev"
    if (record.peek(0) == kTag) {
      inspectCurrentRecord(record, row);
    } else {
      inspectOlderRecord(record, row);
    }
  }
  reader.requireEnd("the last macro");
}

void inspectValues(CheckedReader& reader, std::uint32_t count, bool withObjects, Report& report) {
  Report& values = report.add("values", Report::list());
  for (std::uint32_t i = 0; i < count; ++i) {
    const std::string what = "the current value of macro " + std::to_string(i);
    values.add(Report::real(static_cast<double>(reader.real(what))));
    if (withObjects) {
      reader.longWord(what);
    }
  }
}

}  // namespace

void inspectMacroChunk(CheckedReader reader, Report& report) {
  report.addText("kind", "macro chunk");
  const std::uint32_t version = reader.peek(0);
  report.addNumber("version", version);
  const std::uint32_t words = headerWords(version);
  if (words == 0) {
    reader.fail("there is no macro chunk of the version " + std::to_string(version));
  }
  CheckedReader header = reader.part(std::uint64_t{words} * 4, "the header");
  header.word("the version");
  const std::uint32_t count = header.word("the macro count");
  const std::uint32_t macroBytes = header.word("the size of the macros");
  const std::uint32_t programBytes = header.word("the size of the programs");
  header.word("a spare word");
  TextPlaces texts;
  texts.offset = header.word("the place of the texts");
  if (version != kVersionValues) {
    if (version != kVersionTexts) {
      header.word("a spare word");
    }
    texts.nameBytes = header.word("the length of the name");
    texts.commentBytes = header.word("the length of the comment");
    report.addNumber("time", header.word("the time"));
    report.addNumber("selectedProgram", header.word("the program"));
    report.addNumber("selectedBank", header.word("the bank"));
  }
  CheckedReader macros = reader.part(macroBytes, "the macro section");
  inspectMacroSection(macros, count, report.add("macros", Report::list()));
  if (programBytes > 0) {
    inspectProgramImage(reader.part(programBytes, "the program section"), count, report);
  }
  CheckedReader values = reader;
  inspectValues(values, count, version == kVersionWithObjects, report);
  if (version != kVersionValues) {
    reader.take(texts.offset, "what stands before the texts");
    report.addText("programName", reader.text(texts.nameBytes, "the program's name"));
    report.addText("programComment", reader.text(texts.commentBytes, "the program's comment"));
    reader.requireEnd("the program's comment");
  }
}

void inspectMiscChunk(CheckedReader reader, Report& report) {
  namespace vst = tesh::bramel::vst;
  report.addText("kind", "run flags");
  const CheckedReader start = reader;
  const std::uint32_t version = reader.word("the version");
  report.addNumber("version", version);
  if (version != vst::kRunningOnlyVersion && version != vst::kRunFlagsVersion) {
    start.fail("there are no run flags of the version " + std::to_string(version));
  }
  const CheckedReader tagPlace = reader;
  if (reader.text(vst::kRunFlagsTag.size(), "the tag") != vst::kRunFlagsTag) {
    tagPlace.fail("the tag \"csim\" is missing");
  }
  report.addNumber("running", reader.word("the running flag"));
  if (version == vst::kRunFlagsVersion) {
    report.addNumber("storeEngineChunk", reader.word("the flag of the engine's chunk"));
  }
}

}  // namespace sivray::content
