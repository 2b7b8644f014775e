// Chooses the action by the options: list, draw, check, tour or render.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "RenderProgram.h"

#include <csignal>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>
#include <vector>

#include "EffectTour.h"
#include "Lists.h"
#include "MidiScore.h"
#include "Options.h"
#include "RenderError.h"
#include "Session.h"
#include "SivrayVersion.h"
#include "terminal/Interrupt.h"
#include "terminal/Printable.h"

namespace sivray::render {
namespace {

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

int complain(const char* reason, int status) {
  std::fprintf(stderr, "sivray-render: %s\n", printable(reason).c_str());
  return status;
}

void saveKits(Session session, const std::string& folder, bool quiet) {
  const std::size_t kits = session.saveKits(folder);
  if (!quiet) {
    std::printf("%s: %zu kits as preset files\n", folder.c_str(), kits);
  }
}

/// A MIDI file of a few bytes can ask for days of sound.
void requireLength(const MidiScore& score, const Options& options) {
  if (score.lengthSeconds > options.longestScore) {
    char text[128];
    std::snprintf(text, sizeof text, "' lasts %.6g s, and at most %.6g s are played: --longest raises that",
                  score.lengthSeconds, options.longestScore);
    throw RenderError("the MIDI file '" + options.inputPath + text);
  }
}

void play(const Options& options) {
  MidiScore score;
  if (!options.inputPath.empty()) {
    score = readMidiScore(options.inputPath);
    requireLength(score, options);
  }
  if (options.effectTourFolder) {
    renderEffectTour(options, score);
    return;
  }
  Session session(options);
  session.prepare(score);
  if (!session.warning().empty()) {
    complain(("warning: " + session.warning()).c_str(), 0);
  }
  if (const std::string missing = session.missingSounds(); !missing.empty()) {
    complain(("warning: " + missing).c_str(), 0);
  }
  if (!options.outputPath.empty()) {
    const RenderResult result = session.render(score, options.outputPath);
    if (!options.settings.quiet) {
      std::puts(printable(describe(result, options.outputPath)).c_str());
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
  try {
    drawPanel(options, session.state());
  } catch (const std::invalid_argument& error) {
    throw UsageError(error.what());
  }
}

int run(const std::vector<std::string>& arguments, const CheckProgram& check, const PanelProgram& drawPanel) {
  const Options options = parseOptions(arguments);
  if (options.help) {
    std::fputs(helpText().c_str(), stdout);
  } else if (options.version) {
    std::puts("sivray-render " SIVRAY_VERSION);
  } else if (options.lists()) {
    printLists(options, Session(options).model());
  } else if (options.kitFolder) {
    saveKits(Session(options), *options.kitFolder, options.settings.quiet);
  } else if (options.check) {
    return check(options) == 0 ? 0 : kFailed;
  } else if (options.panelPath) {
    picture(options, drawPanel);
  } else {
    const InterruptWatch watch;
    play(options);
  }
  return 0;
}

}  // namespace

int runProgram(const std::vector<std::string>& arguments, const CheckProgram& check, const PanelProgram& drawPanel) {
  try {
    return run(arguments, check, drawPanel);
  } catch (const UsageError& error) {
    return complain(error.what(), kWrongUsage);
  } catch (const std::exception& error) {
    return complain(error.what(), kFailed);
  } catch (const Interrupted& interrupted) {
    std::raise(interrupted.signal);  // So that the calling program sees that a signal ended this one.
    return kFailed;
  }
}

}  // namespace sivray::render
