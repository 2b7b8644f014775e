// sivray-render: plays MIDI files through the plug-in, draws its panel, and checks it.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "check/Check.h"
#include "panel/PanelPicture.h"
#include "render/RenderProgram.h"
#include "vsthost/PluginLibrary.h"

namespace {

int check(const sivray::render::Options& options) {
  sivray::check::CheckSettings settings;
  settings.libraryPath = sivray::vsthost::findLibrary(options.libraryPath.value_or(""));
  settings.formPath = settings.libraryPath;
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
