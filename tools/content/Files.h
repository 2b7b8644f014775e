// Files as a tool reads and writes them: whole, and with a reason where that fails.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace sivray::content {

/// The whole file. Throws std::runtime_error naming the path when it cannot be read.
std::vector<std::uint8_t> readFile(const std::string& path);

/// The same as text.
std::string readText(const std::string& path);

/// Replaces the file as a whole, making its folder where it is missing. Throws std::runtime_error naming the path; an
/// old file then stays as it was.
void writeFile(const std::string& path, std::span<const std::uint8_t> bytes);
void writeText(const std::string& path, std::string_view text);

/// Plain files of a folder with this extension (such as ".kit"), sorted by name, so that the order is the same on every
/// machine. Throws std::runtime_error when the folder cannot be read.
std::vector<std::string> filesIn(const std::string& folder, std::string_view extension);

/// Paths from UTF-8 and back.
std::filesystem::path pathOf(std::string_view utf8);
std::string textOf(const std::filesystem::path& path);

/// The last part of a path.
std::string fileNameOf(const std::string& path);

}  // namespace sivray::content
