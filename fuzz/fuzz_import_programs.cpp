// Fuzzes the import of programs through a whole instrument: for any file the programs stay within their size limit, can
// be selected and played, and are gone once deleted. The input follows the header of an exported file.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "QuietInstrument.h"
#include "core/LittleEndian.h"
#include "storage/programs/ProgramDatabase.h"

namespace {

using namespace fuzz;
using namespace instrument;

constexpr std::uint64_t kUserBank = 3;

/// Writes an exported file that contains the input as its program file, and returns the path.
std::string writeExport(const std::uint8_t* data, std::size_t size) {
  static const std::string path = std::filesystem::temp_directory_path() / ("import." + std::to_string(::getpid()));
  Bytes file;
  cofu::core::ByteWriter writer(file);
  writer.word(256);
  writer.text("Sivray");
  writer.zeros(54);
  writer.bytes({data, size});
  std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(file.data()), std::ssize(file));
  return path;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::unique_ptr<BramelInstrument> shell = makeQuietInstrument();
  const std::string path = writeExport(data, size);
  shell->importPrograms(path);
  std::filesystem::remove(path);

  using vimo::ProgramDatabase;
  const std::uint64_t programs = shell->programCount(kUserBank);
  const std::uint64_t record = ProgramDatabase::kRecordHeadBytes + ProgramDatabase::kEntryBytes * (kPadValues + 1);
  require(programs <= ProgramDatabase::kAlwaysRead || programs * record <= (ProgramDatabase::kMostGrowth + 1) * size);
  if (programs > 0) {
    shell->setProgram(kUserBank, programs - 1);
    require(shell->programName(kUserBank, programs - 1).size() < 96);
    play(*shell);
  }
  while (shell->programCount(kUserBank) > 0) {
    shell->deleteProgram(kUserBank, 0);
  }
  play(*shell);
  return 0;
}
