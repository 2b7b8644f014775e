// Chooses what to do by the options: list, draw, check, tour or render.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "RenderProgram.h"

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "EffectTour.h"
#include "MidiScore.h"
#include "Options.h"
#include "RenderError.h"
#include "Session.h"

namespace sivray::render {
namespace {

constexpr int kFailed = 2;
constexpr int kCheckFailed = 1;

void listPrograms(const Session& session) {
  for (const ListedProgram& program : session.model().programs()) {
    std::printf("%4s  %-26s %s\n", program.number.c_str(), program.name.c_str(), program.comment.c_str());
  }
}

void saveKits(Session session, const std::string& folder, bool quiet) {
  const std::size_t kits = session.saveKits(folder);
  if (!quiet) {
    std::printf("%s: %zu kits as preset files\n", folder.c_str(), kits);
  }
}

void play(const Options& options) {
  MidiScore score;
  if (!options.inputPath.empty()) {
    score = readMidiScore(options.inputPath);
  }
  if (options.effectTourFolder) {
    renderEffectTour(options, score);
    return;
  }
  Session session(options);
  session.prepare(score);
  if (!options.outputPath.empty()) {
    const RenderResult result = session.render(score, options.outputPath);
    if (!options.settings.quiet) {
      std::puts(describe(result, options.outputPath).c_str());
    }
  }
  if (options.saveStatePath) {
    session.saveState(*options.saveStatePath);
  }
}

/// Draws the panel with the state that the renderer would play.
void picture(const Options& options, const PanelProgram& drawPanel) {
  Options direct = options;
  direct.direct = true;
  Session session(direct);
  session.prepare({});
  drawPanel(options, session.state());
}

int run(const std::vector<std::string>& arguments, const CheckProgram& check, const PanelProgram& drawPanel) {
  const Options options = parseOptions(arguments);
  if (options.help) {
    std::fputs(helpText().c_str(), stdout);
  } else if (options.listPrograms) {
    listPrograms(Session(options));
  } else if (options.kitFolder) {
    saveKits(Session(options), *options.kitFolder, options.settings.quiet);
  } else if (options.check) {
    return check(options) == 0 ? 0 : kCheckFailed;
  } else if (options.panelPath) {
    picture(options, drawPanel);
  } else {
    play(options);
  }
  return 0;
}

}  // namespace

int runProgram(const std::vector<std::string>& arguments, const CheckProgram& check, const PanelProgram& drawPanel) {
  try {
    return run(arguments, check, drawPanel);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "sivray-render: %s\n", error.what());
    return kFailed;
  }
}

}  // namespace sivray::render
