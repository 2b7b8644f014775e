// The four files of a sample library.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cmath>

#include "content/inspect/Inspectors.h"
#include "content/library/Wave.h"
#include "engine/samples/SimilarWaves.h"

namespace sivray::content {
namespace {

using tesh::vimo::WaveKin;

constexpr std::size_t kSampleRecordBytes = 12;
constexpr std::size_t kWaveRecordBytes = 24;
constexpr std::uint64_t kMostDataBytes = std::uint64_t{1} << 31;
constexpr std::uint32_t kMostCategories = 16;

std::string recordName(std::uint64_t number) { return "record " + std::to_string(number); }

/// Calls `read(record, reader of its bytes, report)` for each record.
template <typename Read>
void forRecords(CheckedReader& reader, std::size_t recordBytes, Report& report, Read read) {
  Report& records = report.add("records", Report::list());
  for (std::uint64_t number = 0; reader.remaining() > 0; ++number) {
    CheckedReader record = reader.part(recordBytes, recordName(number));
    read(number, record, records.add(Report::object()));
  }
}

void requireSample(const CheckedReader& reader, std::uint32_t sample, const LibraryNeighbours& neighbours,
                   std::uint64_t number) {
  if (neighbours.sampleRecords > 0 && sample >= neighbours.sampleRecords) {
    reader.fail(recordName(number) + " names sample " + std::to_string(sample) + ", but sampleparam.bin has " +
                std::to_string(neighbours.sampleRecords));
  }
}

}  // namespace

void inspectSampleData(CheckedReader reader, Report& report) {
  report.addText("kind", "sample data");
  const std::size_t samples = reader.remaining() / 2;
  report.addNumber("samples", samples);
  const auto bytes = reader.take(samples * 2, "the samples");
  int peak = 0;
  for (std::size_t i = 0; i < bytes.size(); i += 2) {
    const auto sample = static_cast<std::int16_t>(static_cast<std::uint16_t>(bytes[i] << 8) | bytes[i + 1]);
    peak = std::max(peak, std::abs(int{sample}));
  }
  report.addNumber("peak", static_cast<std::uint64_t>(peak));
  reader.requireEnd("the last whole sample");
  if (bytes.size() >= kMostDataBytes) {
    throw BrokenFile(kMostDataBytes, "samples from here on cannot be reached");
  }
}

void inspectSampleIndex(CheckedReader reader, const LibraryNeighbours& neighbours, Report& report) {
  report.addText("kind", "sample index");
  forRecords(reader, kSampleRecordBytes, report, [&](std::uint64_t number, CheckedReader& record, Report& row) {
    const std::uint64_t place = record.offset();
    const std::uint32_t start = record.word("the start");
    const std::uint32_t end = record.word("the end");
    const std::uint32_t rate = record.word("the rate");
    row.addNumber("start", start);
    row.addNumber("end", end);
    row.addNumber("rate", rate);
    if (start == 0 && end == 0 && rate == 0) {
      return;  // Of a number that no own sound has.
    }
    if (end < start) {
      throw BrokenFile(place + 4, recordName(number) + " ends before it starts");
    }
    if (neighbours.dataBytes > 0 && end >= neighbours.dataBytes / 2) {
      throw BrokenFile(place + 4, recordName(number) + " reaches past the end of drumdata.bin, which has " +
                                      std::to_string(neighbours.dataBytes / 2) + " samples");
    }
    if (rate == 0) {
      throw BrokenFile(place + 8, recordName(number) + " has a rate of 0");
    }
  });
}

void inspectWaveIndex(CheckedReader reader, const LibraryNeighbours& neighbours, Report& report) {
  report.addText("kind", "wave index");
  forRecords(reader, kWaveRecordBytes, report, [&](std::uint64_t number, CheckedReader& record, Report& row) {
    const CheckedReader typePlace = record;
    const std::uint32_t type = record.word("the type");
    row.addText("name", record.text(kLongestWaveName, "the name"));
    row.addText("type", type == 1 ? "mono" : type == 2 ? "stereo" : "unknown");
    if (type != 1 && type != 2) {
      typePlace.fail(recordName(number) + " has the type " + std::to_string(type) + "; 1 is mono and 2 is stereo");
    }
    const CheckedReader leftPlace = record;
    const std::uint32_t left = record.word("the left sample");
    row.addNumber("left", left);
    requireSample(leftPlace, left, neighbours, number);
    const CheckedReader rightPlace = record;
    const std::uint32_t right = record.word("the right sample");
    if (type == 2) {
      row.addNumber("right", right);
      requireSample(rightPlace, right, neighbours, number);
    }
  });
}

void inspectCategoryIndex(CheckedReader reader, Report& report) {
  report.addText("kind", "category index");
  forRecords(reader, kWaveRecordBytes, report, [&](std::uint64_t number, CheckedReader& record, Report& row) {
    const CheckedReader categoryPlace = record;
    const std::uint32_t category = record.word("the category");
    row.addText("name", record.text(kLongestWaveName, "the name"));
    row.addNumber("category", category);
    if (category == 0 && record.word("the distance") > 1) {
      row.addText("free", "plays the wave of this name");  // Beside own sounds.
      return;
    }
    if (category < 1 || category > kMostCategories) {
      categoryPlace.fail(recordName(number) + " has the category " + std::to_string(category) + "; there are 1 to " +
                         std::to_string(kMostCategories));
    }
    if (category <= kCategoryNames.size()) {
      row.addText("categoryName", kCategoryNames[category - 1]);
    }
  });
}

void inspectSimilarWaves(CheckedReader reader, std::span<const std::uint8_t> index, Report& report) {
  using tesh::vimo::SimilarWaves;
  report.addText("kind", "similar waves");
  const CheckedReader head = reader;
  if (reader.word("the format") != SimilarWaves::kFormat) {
    head.fail("the file does not begin with SIM1");
  }
  const CheckedReader hashPlace = reader;
  const std::uint32_t hash = reader.word("the hash of the index");
  forRecords(reader, SimilarWaves::kRecordBytes, report, [](std::uint64_t, CheckedReader& record, Report& row) {
    const WaveKin kin = SimilarWaves::kinIn(record.take(SimilarWaves::kRecordBytes, "a record"));
    row.addNumber("wave", static_cast<std::uint64_t>(kin.wave));
    row.add("loudness", Report::real(std::round(static_cast<double>(kin.loudness) * 100.0) / 100.0));
    if (kin.farthest >= 0) {
      row.addNumber("farthest", static_cast<std::uint64_t>(kin.farthest));
    }
    Report& nearest = row.add("nearest", Report::list());
    for (const std::int32_t wave : kin.nearest) {
      nearest.add(Report::number(static_cast<std::uint64_t>(wave)));
    }
  });
  if (!index.empty() && hash != SimilarWaves::hashOf(index)) {
    hashPlace.fail("it was measured for another drumparam_category.bin than the one beside it");
  }
}

}  // namespace sivray::content
