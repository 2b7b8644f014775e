// A temporary folder for one test, removed with the object.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <unistd.h>

#include <filesystem>
#include <string>

#include "content/Files.h"

namespace sivray::content {

class Scratch {
 public:
  Scratch() {
    static int made = 0;
    folder = std::filesystem::temp_directory_path() /
             ("sivray-content-" + std::to_string(::getpid()) + "-" + std::to_string(made++));
    std::filesystem::create_directories(folder);
  }
  ~Scratch() { std::filesystem::remove_all(folder); }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;

  std::string path(const std::string& name = {}) const { return (folder / name).string(); }
  std::string write(const std::string& name, const std::string& text) const {
    writeText(path(name), text);
    return path(name);
  }

 private:
  std::filesystem::path folder;
};

}  // namespace sivray::content
