// Writes the sine library into a temporary folder and points BRAMEL_COMMON_FILES at it.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "check/SineContent.h"

#include <array>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <random>

#include "content/library/LibraryWriter.h"
#include "platform/SpecialFolders.h"

namespace sivray::check {
namespace {

constexpr const char* kVariable = "BRAMEL_COMMON_FILES";
constexpr int kSineRate = 44100;
constexpr double kLoudness = 20000.0;

void setVariable(const std::string& value) {
#ifdef _WIN32
  _putenv_s(kVariable, value.c_str());
#else
  if (value.empty()) {
    ::unsetenv(kVariable);
  } else {
    ::setenv(kVariable, value.c_str(), 1);
  }
#endif
}

content::Wave sine() {
  content::Wave wave;
  wave.name = "Sine";
  for (int i = 0; i < static_cast<int>(SineContent::kSeconds * kSineRate); ++i) {
    const double phase = 2.0 * std::numbers::pi * SineContent::kHertz * i / kSineRate;
    wave.left.push_back(static_cast<std::int16_t>(std::lround(kLoudness * std::sin(phase))));
  }
  return wave;
}

}  // namespace

SineContent::SineContent() {
  namespace fs = std::filesystem;
  if (const char* value = std::getenv(kVariable)) {
    before = value;
  }
  folder = fs::temp_directory_path() / ("sivray-check-" + std::to_string(std::random_device{}()));
  const fs::path tree = fs::path("Tesh") / "Bramel";
  fs::create_directories(folder / tree);
  fs::copy(fs::path(tesh::bramel::platform::commonFilesFolder()) / tree / "Macro", folder / tree / "Macro",
           fs::copy_options::recursive);
  const std::array<content::Wave, 1> waves{sine()};
  content::writeLibrary((folder / tree / "Resource" / "SivrayPCM").string(), waves);
  setVariable(folder.string());
}

SineContent::~SineContent() {
  setVariable(before);
  std::error_code ignored;
  std::filesystem::remove_all(folder, ignored);
}

}  // namespace sivray::check
