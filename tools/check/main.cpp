// sivray-check: checks the plug-in. `sivray-render --check` starts it with its own options.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cstdio>

#include "SivrayVersion.h"
#include "check/Check.h"
#include "render/RenderProgram.h"
#include "vsthost/PluginLibrary.h"

namespace {

sivray::hosting::Form formNamed(const std::string& name) {
  using sivray::hosting::Form;
  return name == "vst3" ? Form::vst3 : name == "lv2" ? Form::lv2 : name == "clap" ? Form::clap : Form::vst2;
}

int check(const sivray::render::Options& options) {
  sivray::check::CheckSettings settings;
  settings.libraryPath = sivray::vsthost::findLibrary(options.libraryPath.value_or(""));
  settings.form = formNamed(options.checkForm);
  settings.formPath = settings.isVst2() ? settings.libraryPath
                                        : sivray::vsthost::findBundle(settings.libraryPath, options.checkForm,
                                                                      options.bundlePath.value_or(""));
  settings.only = options.checkOnly;
  settings.full = options.fullCheck;
  settings.soakHours = options.soakHours;
  return sivray::check::runChecks(settings);
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> arguments{argv + 1, argv + argc};
  if (std::ranges::find(arguments, "--version") != arguments.end()) {
    std::puts("sivray-check " SIVRAY_VERSION);
    return 0;
  }
  arguments.emplace_back("--check");
  return sivray::render::runProgram(arguments, check);
}
