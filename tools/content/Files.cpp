// Whole files, read and replaced through std::filesystem and the platform's own writer.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/Files.h"

#include <algorithm>
#include <stdexcept>
#include <system_error>

#include "core/Utf8.h"
#include "platform/Files.h"

namespace sivray::content {
namespace {

namespace fs = std::filesystem;
namespace platform = tesh::bramel::platform;

}  // namespace

fs::path pathOf(std::string_view utf8) { return {std::u8string(utf8.begin(), utf8.end())}; }

std::string textOf(const fs::path& path) {
  const std::u8string utf8 = path.u8string();
  return {utf8.begin(), utf8.end()};
}

std::string systemPathOf(const std::string& path) { return textOf(fs::path(platform::NativePath(path).text())); }

std::vector<std::uint8_t> readFile(const std::string& path) {
  auto bytes = platform::readWhole(path);
  if (!bytes) {
    throw std::runtime_error(path + ": cannot be read");
  }
  return std::move(*bytes);
}

std::string readText(const std::string& path) {
  const auto bytes = readFile(path);
  return std::string(
      tesh::cofu::core::withoutByteOrderMark({reinterpret_cast<const char*>(bytes.data()), bytes.size()}));
}

void writeFile(const std::string& path, std::span<const std::uint8_t> bytes) {
  const std::string folder = textOf(pathOf(path).parent_path());
  if ((!folder.empty() && !platform::createFolders(folder)) || !platform::writeAtomically(path, bytes)) {
    throw std::runtime_error(path + ": cannot be written");
  }
}

void writeText(const std::string& path, std::string_view text) {
  writeFile(path, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
}

std::vector<std::string> filesIn(const std::string& folder, std::string_view extension) {
  std::error_code error;
  std::vector<std::string> files;
  for (fs::directory_iterator entry(pathOf(folder), error), end; !error && entry != end; entry.increment(error)) {
    if (entry->is_regular_file(error) && textOf(entry->path().extension()) == extension) {
      files.push_back(textOf(entry->path()));
    }
  }
  if (error) {
    throw std::runtime_error(folder + ": " + error.message());
  }
  std::ranges::sort(files);
  return files;
}

std::string fileNameOf(const std::string& path) { return textOf(pathOf(path).filename()); }

}  // namespace sivray::content
