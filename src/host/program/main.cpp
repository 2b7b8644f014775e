// The program `sivray`: starts JUCE and shows the window, or says in one line why it cannot.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <string_view>

#include <juce_gui_basics/juce_gui_basics.h>

#include "SivrayVersion.h"
#include "host/standalone/Desktop.h"
#include "host/standalone/JackMidi.h"
#include "host/standalone/Standalone.h"
#include "platform/SpecialFolders.h"

namespace {

namespace standalone = tesh::bramel::standalone;

#ifdef _WIN32
#define SIVRAY_SOUND_SYSTEMS "WASAPI or DirectSound"
#else
#define SIVRAY_SOUND_SYSTEMS "JACK or ALSA"
#endif

constexpr const char* kHelp = "sivray: the drum module without a host, on " SIVRAY_SOUND_SYSTEMS
                              ".\n"
                              "The keys A S D F G H J K play the pads, the space bar starts and stops the demo.\n"
                              "It takes no options but --help and --version.\n";

constexpr int kWrongUsage = 2;

/// To the standard error; if no terminal shows that, in a window.
int fail(const char* reason) {
  std::fprintf(stderr, "sivray: %s\n", reason);
  if (!standalone::desktop::hasTerminal() && standalone::desktop::hasScreen()) {
    standalone::showFault(juce::String::fromUTF8(reason));
  }
  return EXIT_FAILURE;
}

juce::File settingsFolder() {
  const std::string folder = tesh::bramel::platform::settingsFolder();
  return folder.empty() ? juce::File("~/.config/sivray") : juce::File(juce::String::fromUTF8(folder.c_str()));
}

int run() {
  standalone::desktop::prepare();
  const juce::ScopedJuceInitialiser_GUI juceRuns;
  if (!standalone::desktop::hasScreen()) {
    return fail(standalone::desktop::screenAdvice());
  }
  const auto end = [] { juce::MessageManager::getInstance()->stopDispatchLoop(); };
  try {
    standalone::Standalone program(settingsFolder(), end, {.midi = standalone::systemMidi()});
    const standalone::desktop::EndRequests requests([&] { program.remember(); }, end);
    standalone::desktop::runMessages();
    return EXIT_SUCCESS;
  } catch (const std::exception& error) {
    return fail(error.what());
  }
}

/// Answers an option without opening the program's window.
int answer(std::string_view option) {
  if (option == "--version") {
    standalone::desktop::say("sivray " SIVRAY_VERSION "\n", stdout);
    return EXIT_SUCCESS;
  }
  const bool wantsHelp = option == "--help" || option == "-h";
  standalone::desktop::say(kHelp, wantsHelp ? stdout : stderr);
  return wantsHelp ? EXIT_SUCCESS : kWrongUsage;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc > 1) {
    return answer(argv[1]);
  }
  return run();
}
