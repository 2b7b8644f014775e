// try-plugin: a host that executes the lines of its standard input and answers each with one line. On Linux it has no
// window. tests/hosts/try_windows.py drives it.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <atomic>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "EditorUnderTrial.h"
#include "PluginUnderTrial.h"
#include "TrialWindow.h"
#include "platform/Files.h"

namespace {

using namespace sivray::trial;
using tesh::bramel::platform::NativePath;

/// A library with its instance and, on Windows, the window for its panel.
struct Stage {
  explicit Stage(std::string libraryPath) : path(std::move(libraryPath)) {}

  const std::string path;
  std::unique_ptr<EditorUnderTrial> plugin;
  PluginUnderTrial* vst2 = nullptr;  ///< The plugin, if it is of the VST 2 form.
#ifdef _WIN32
  TrialWindow window;
#endif
};

/// The state that the commands change.
class Trial {
 public:
  explicit Trial(std::string libraryPath) { use(std::move(libraryPath)); }

  /// Executes `line` and returns the answer.
  std::string run(const std::string& line) {
    std::istringstream words(line);
    std::string name;
    words >> name;
    const auto found = commands.find(name);
    return found == commands.end() ? "unknown" : found->second(words);
  }

 private:
  using Command = std::function<std::string(std::istream&)>;

  static std::string rest(std::istream& words) {
    std::string text;
    std::getline(words >> std::ws, text);
    return text;
  }

  static int number(std::istream& words) {
    int value = 0;
    words >> value;
    return value;
  }

  /// Makes the following lines apply to the stage of this library.
  std::string use(std::string libraryPath) {
    std::unique_ptr<Stage>& found = stages[libraryPath];
    if (found == nullptr) {
      found = std::make_unique<Stage>(std::move(libraryPath));
    }
    stage = found.get();
    return "ok";
  }

  std::string load() {
    stage->plugin.reset();
    stage->vst2 = nullptr;
#ifdef _WIN32
    if (stage->path.ends_with(".vst3")) {
      stage->plugin = loadVst3(stage->path);
    } else if (stage->path.ends_with(".clap")) {
      stage->plugin = loadClap(stage->path);
    }
#endif
    if (stage->plugin == nullptr) {
      auto loaded = std::make_unique<PluginUnderTrial>(stage->path);
      stage->vst2 = loaded.get();
      stage->plugin = std::move(loaded);
    }
    return stage->plugin->isThere() ? "ok" : "none";
  }

  std::string unload() {
    stage->plugin.reset();
    return PluginUnderTrial::isLoaded(stage->path) ? "loaded" : "ok";
  }

  std::string setState(std::istream& words) {
    std::ifstream file(NativePath(rest(words)).text(), std::ios::binary);
    stage->plugin->setState({std::istreambuf_iterator<char>(file), {}});
    return "ok";
  }

  std::string render(std::istream& words, bool isMoving) {
    const auto rate = static_cast<float>(number(words));
    const auto samples = isMoving ? stage->vst2->render(rate, true) : stage->plugin->renderNotes(rate);
    std::ofstream file(NativePath(rest(words)).text(), std::ios::binary);
    file.write(reinterpret_cast<const char*>(samples.data()),
               static_cast<std::streamsize>(samples.size() * sizeof(float)));
    return file ? "ok" : "failed";
  }

#ifdef _WIN32
  std::string open() {
    if (stage->window.handle() == nullptr) {
      return "no window";
    }
    stage->plugin->openEditor(stage->window.handle());
    TrialWindow::pump(kSettling);
    RECT size{};
    GetClientRect(stage->window.child(), &size);
    return std::to_string(size.right) + "x" + std::to_string(size.bottom);
  }

  std::string close() {
    stage->plugin->closeEditor();
    return stage->window.child() == nullptr ? "ok" : "child";
  }

  /// Closes editor and instance on another thread, as some hosts do, while this thread handles the window's messages.
  std::string closeElsewhere() {
    std::atomic<bool> isDone = false;
    std::thread other([&] {
      stage->plugin->closeEditor();
      stage->plugin->closeInstance();
      isDone = true;
    });
    while (!isDone) {
      TrialWindow::pump(1);
    }
    other.join();
    return stage->window.child() == nullptr ? "ok" : "child";
  }

  /// Tells the program's window that its screen now has this resolution in dots per inch. The suggested window
  /// rectangle, which Windows passes as a pointer, is omitted, because it would have to be in the other process. The
  /// host's own window must be destroyed before.
  static bool tellDots(int dots) {
    HWND program = FindWindowW(nullptr, L"Sivray");
    return program != nullptr && SendMessageW(program, WM_DPICHANGED, MAKEWPARAM(dots, dots), 0) == 0;
  }

  /// Repeats this cycle: load, open, click in the middle of the first pad, close, unload.
  std::string live(int times) {
    constexpr int kPadX = 56;
    constexpr int kPadY = 420;
    for (int i = 0; i < times; ++i) {
      const std::string loaded = load();
      const std::string opened = open();
      TrialWindow::moveTo(kPadX, kPadY);
      TrialWindow::press();
      TrialWindow::release();
      const std::string closed = close();
      const std::string unloaded = unload();
      if (loaded != "ok" || opened != "768x468" || closed != "ok" || unloaded != "ok") {
        return std::to_string(i) + ": " + loaded + " " + opened + " " + closed + " " + unloaded;
      }
    }
    return "ok";
  }

  static constexpr unsigned int kSettling = 150;  ///< Milliseconds until an editor has painted.
#endif

  template <typename Work>
  static Command plain(Work work) {
    return [work](std::istream&) {
      work();
      return std::string("ok");
    };
  }

  std::map<std::string, std::unique_ptr<Stage>> stages;  ///< By the library's path.
  Stage* stage = nullptr;
  const std::map<std::string, Command> commands{
      {"use", [this](std::istream& words) { return use(rest(words)); }},
      {"load", [this](std::istream&) { return load(); }},
      {"unload", [this](std::istream&) { return unload(); }},
      {"state", [this](std::istream& words) { return setState(words); }},
      {"render", [this](std::istream& words) { return render(words, true); }},
      {"render-notes", [this](std::istream& words) { return render(words, false); }},
      {"moves", [this](std::istream&) { return std::to_string(stage->plugin->takeMoves()); }},
#ifdef _WIN32
      {"open", [this](std::istream&) { return open(); }},
      {"close", [this](std::istream&) { return close(); }},
      {"close-elsewhere", [this](std::istream&) { return closeElsewhere(); }},
      {"destroy-window", plain([this] { stage->window.destroy(); })},
      {"live", [this](std::istream& words) { return live(number(words)); }},
      {"characters", [this](std::istream&) { return std::to_string(stage->window.takeCharacters()); }},
      {"scale",
       [this](std::istream& words) {
         float scale = 1.0F;
         words >> scale;
         return std::string(stage->plugin->setScale(scale) ? "ok" : "refused");
       }},
      {"dots", [](std::istream& words) { return std::string(tellDots(number(words)) ? "ok" : "no program"); }},
      {"pump",
       [](std::istream& words) {
         TrialWindow::pump(static_cast<unsigned int>(number(words)));
         return std::string("ok");
       }},
      {"move",
       [](std::istream& words) {
         const int x = number(words);
         TrialWindow::moveTo(x, number(words));
         return std::string("ok");
       }},
      {"press", plain([] { TrialWindow::press(); })},
      {"release", plain([] { TrialWindow::release(); })},
      {"right-click", plain([] { TrialWindow::rightClick(); })},
      {"strike",
       [](std::istream& words) {
         TrialWindow::strike(static_cast<unsigned short>(number(words)));
         return std::string("ok");
       }},
#endif
  };
};

/// The library's path is the first input line, because program arguments cannot hold every character on Windows.
int run() {
  std::string line;
  std::getline(std::cin, line);
  Trial trial(line);
  while (std::getline(std::cin, line)) {
    std::cout << trial.run(line) << std::endl;
  }
  return 0;
}

}  // namespace

int main() { return run(); }
