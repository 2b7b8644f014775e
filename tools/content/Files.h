// Reads and writes whole files; failures are exceptions that name the path.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace sivray::content {

/// Returns the whole file. Throws std::runtime_error naming the path when it cannot be read.
std::vector<std::uint8_t> readFile(const std::string& path);

/// Returns the whole file as text. Throws as `readFile`.
std::string readText(const std::string& path);

/// Replaces the whole file and makes its folder if it is missing. Throws std::runtime_error naming the path; an old
/// file is then left unchanged.
void writeFile(const std::string& path, std::span<const std::uint8_t> bytes);
void writeText(const std::string& path, std::string_view text);

/// Returns the paths of the folder's regular files with this extension (such as ".kit"), sorted by name so that the
/// order is the same on every machine. Throws std::runtime_error when the folder cannot be read.
std::vector<std::string> filesIn(const std::string& folder, std::string_view extension);

/// Convert between paths and UTF-8.
std::filesystem::path pathOf(std::string_view utf8);
std::string textOf(const std::filesystem::path& path);

/// Returns the system's form of a path that storage/paths gives.
std::string systemPathOf(const std::string& path);

/// Returns the last part of a path.
std::string fileNameOf(const std::string& path);

}  // namespace sivray::content
