// sivray-render: plays MIDI files through the plug-in, draws its panel, and checks it.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "check/Check.h"
#include "panel/PanelPicture.h"
#include "render/RenderProgram.h"
#include "vsthost/PluginLibrary.h"

namespace {

sivray::hosting::Form formNamed(const std::string& name) {
  using sivray::hosting::Form;
  return name == "vst3" ? Form::vst3 : name == "lv2" ? Form::lv2 : Form::vst2;
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

void drawPanel(const sivray::render::Options& options, std::span<const std::uint8_t> state) {
  sivray::panel::drawPanel(state, {.outputPath = *options.panelPath,
                                   .page = options.panelPage,
                                   .open = options.panelOpen,
                                   .scale = options.panelScale,
                                   .litPads = options.litPads});
}

}  // namespace

int main(int argc, char** argv) { return sivray::render::runProgram({argv + 1, argv + argc}, check, drawPanel); }
