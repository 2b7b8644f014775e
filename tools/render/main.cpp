// sivray-render: plays MIDI files through the plug-in, draws its panel, and has it checked.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "panel/PanelPicture.h"
#include "render/RenderError.h"
#include "render/RenderProgram.h"

namespace {

/// Replaces this process by the checker, a separate program in the same folder, which hosts every form and intercepts
/// system functions. It is not needed for playing and drawing. Throws RenderError when it cannot be started.
class Checker {
 public:
  explicit Checker(char** newArguments) : arguments(newArguments) {}

  int operator()(const sivray::render::Options& /*options*/) const {
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe");
    const std::string checker = self.parent_path() / "sivray-check";
    execv(checker.c_str(), arguments);
    throw sivray::render::RenderError("cannot start '" + checker +
                                      "', which ./run check builds in the sources: " + std::strerror(errno));
  }

 private:
  char** arguments;
};

void drawPanel(const sivray::render::Options& options, std::span<const std::uint8_t> state) {
  sivray::panel::drawPanel(state, {.outputPath = *options.panelPath,
                                   .page = options.panelPage,
                                   .open = options.panelOpen,
                                   .scale = options.panelScale,
                                   .litPads = options.litPads});
}

}  // namespace

int main(int argc, char** argv) {
  return sivray::render::runProgram({argv + 1, argv + argc}, Checker(argv), drawPanel);
}
