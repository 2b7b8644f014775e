// Program databases, and the two kinds of files that hold one.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "content/inspect/Inspectors.h"
#include "storage/programs/ProgramDatabase.h"

namespace sivray::content {
namespace {

using tesh::vimo::ProgramDatabase;
using tesh::vimo::ProgramRecord;

constexpr std::uint32_t kVersionValues = 256;
constexpr std::uint32_t kVersionTexts = 512;
constexpr std::uint32_t kVersionIds = 768;

/// How one image version lays out a record.
struct RecordForm {
  std::uint32_t headBytes = 0;
  bool withObjects = false;
};

RecordForm formOf(std::uint32_t version, const CheckedReader& place) {
  switch (version) {
    case kVersionValues:
      return {0, false};
    case kVersionTexts:
      return {208, false};
    case kVersionIds:
      return {ProgramDatabase::kRecordHeadBytes, false};
    case ProgramDatabase::kImageVersion:
      return {ProgramDatabase::kRecordHeadBytes, true};
    default:
      place.fail("there are no programs of the version " + std::to_string(version));
  }
}

void inspectRecord(CheckedReader reader, const RecordForm& form, Report& report) {
  if (form.headBytes > 0) {
    CheckedReader head = reader.part(form.headBytes, "the head of a program");
    head.word("the marker");
    report.addText("name", head.text(ProgramRecord::kTextBytes, "the name"));
    report.addText("comment", head.text(ProgramRecord::kTextBytes, "the comment"));
    report.addNumber("time", head.word("the time"));
  }
  Report& values = report.add("values", Report::list());
  while (reader.remaining() > 0) {
    values.add(Report::real(static_cast<double>(reader.real("a value"))));
    if (form.withObjects) {
      reader.longWord("an object");
    }
  }
}

}  // namespace

void inspectProgramImage(CheckedReader reader, std::uint32_t macroCount, Report& report) {
  const CheckedReader start = reader;
  const std::uint32_t version = reader.word("the version of the programs");
  report.addNumber("programVersion", version);
  const RecordForm form = formOf(version, start);
  const std::uint32_t count = reader.word("the number of programs");
  Report& programs = report.add("programs", Report::list());
  const std::uint64_t entryBytes = form.withObjects ? ProgramDatabase::kEntryBytes : sizeof(float);
  const std::uint64_t recordBytes = form.headBytes + entryBytes * macroCount;
  for (std::uint32_t i = 0; i < count && recordBytes > 0; ++i) {
    inspectRecord(reader.part(recordBytes, "program " + std::to_string(i)), form, programs.add(Report::object()));
  }
  reader.requireEnd("the last program");
}

void inspectProgramFile(CheckedReader reader, Report& report) {
  constexpr std::uint32_t kFirstWithFiveWords = 769;
  report.addText("kind", "programs");
  const std::uint32_t version = reader.word("the version");
  report.addNumber("version", version);
  const std::uint32_t macroCount = reader.word("the macro count");
  report.addNumber("macroCount", macroCount);
  const std::uint32_t imageBytes = reader.word("the size of the programs");
  reader.take(version < kFirstWithFiveWords ? 4 : 8, "the rest of the head");
  inspectProgramImage(reader.part(imageBytes, "the programs"), macroCount, report);
  reader.requireEnd("the programs");
}

void inspectExportedPrograms(CheckedReader reader, Report& report) {
  constexpr std::uint32_t kInstrumentBytes = 60;
  const CheckedReader start = reader;
  if (reader.word("the version") != kVersionValues) {
    start.fail("exported programs begin with the version 256");
  }
  report.addText("instrument", reader.text(kInstrumentBytes, "the instrument's name"));
  inspectProgramFile(reader, report);
}

}  // namespace sivray::content
