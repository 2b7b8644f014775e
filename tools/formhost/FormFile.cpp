// Finds a bundle's plug-in with JUCE's hosting classes, and creates instances of it.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "formhost/FormFile.h"

#include <juce_audio_processors/juce_audio_processors.h>

#include <map>
#include <thread>

#include "formhost/FormInstance.h"
#ifdef __linux__
#include "host/message/X11Connection.h"
#endif
#include "hosting/HostWindow.h"
#include "terminal/NamedFile.h"

namespace sivray::formhost {
namespace {

using hosting::HostError;

/// Starts the X server and its window manager's atoms first, because JUCE looks for these once, when it first uses the
/// screen. Returns whether there is a server.
bool prepareScreen() {
#ifdef __linux__
  const bool hasScreen = hosting::HostWindow::findServer();
  if (hasScreen) {
    hosting::HostWindow::beWindowManager();
  }
  return hasScreen;
#else
  return false;
#endif
}

/// A temporary folder that holds only a link to the bundle. LV2 hosts search it, and load from it later.
class FolderOfOne {
 public:
  explicit FolderOfOne(const juce::File& bundle) {
    path().createDirectory();
    bundle.createSymbolicLink(path().getChildFile(bundle.getFileName()), true);
  }
  ~FolderOfOne() { path().deleteRecursively(); }
  FolderOfOne(const FolderOfOne&) = delete;
  FolderOfOne& operator=(const FolderOfOne&) = delete;

  juce::File path() const { return temporary.getFile(); }

 private:
  juce::TemporaryFile temporary;
};

/// JUCE's list of LV2 bundles: one bundle and those of the system. JUCE leaks some memory when the list is created or
/// searched, so each is created once per process.
class Lv2World {
 public:
  static Lv2World& of(const juce::File& bundle) {
    static std::map<juce::String, std::unique_ptr<Lv2World>> worlds;
    auto& world = worlds[bundle.getFullPathName()];
    if (world == nullptr) {
      world = std::make_unique<Lv2World>(bundle);
    }
    return *world;
  }

  explicit Lv2World(const juce::File& bundle) : folder(bundle) {
    // LV2 plug-ins are identified by a URI. Of several in a bundle, the first one in its manifest is used.
    const juce::String manifest = bundle.getChildFile("manifest.ttl").loadFileAsString();
    int first = manifest.length();
    for (const juce::String& found : format.searchPathsForPlugins(folder.path().getFullPathName(), false, false)) {
      const int place = manifest.indexOf("<" + found + ">");
      if (place >= 0 && place < first) {
        first = place;
        address = found;
      }
    }
  }

  juce::LV2PluginFormat format;
  juce::String address;

 private:
  FolderOfOne folder;
};

/// Handles X events that arrived together with a reply; JUCE's loop leaves them queued until the next event. Otherwise
/// a plug-in's new view stays hidden, and a click on it goes to the window behind.
void takeQueuedEvents() {
#ifdef __linux__
  while (tesh::bramel::vst::takeQueuedEvents()) {
  }
#endif
}

}  // namespace

/// Members are in this order so that JUCE is shut down last.
struct FormFile::Loaded {
  bool hasScreen = prepareScreen();
  juce::ScopedJuceInitialiser_GUI juce;
  hosting::Form form = hosting::Form::vst3;
  std::vector<std::string> names;
  juce::VST3PluginFormat vst3;
  juce::AudioPluginFormat* format = &vst3;
  juce::OwnedArray<juce::PluginDescription> found;
};

FormFile::FormFile(hosting::Form form, const std::string& bundle, std::vector<std::string> parameterNames)
    : loaded(std::make_unique<Loaded>()) {
  loaded->form = form;
  loaded->names = std::move(parameterNames);
  const juce::File file = namedFile(bundle);
  if (!file.isDirectory()) {
    throw HostError("cannot load the plug-in '" + bundle + "': no such bundle");
  }
  juce::String name = file.getFullPathName();
  if (form == hosting::Form::lv2) {
    Lv2World& world = Lv2World::of(file);
    loaded->format = &world.format;
    name = world.address;
  }
  loaded->format->findAllTypesForFile(loaded->found, name);
  if (loaded->found.isEmpty()) {
    throw HostError("'" + bundle + "' holds no plug-in that a host would take");
  }
}

FormFile::~FormFile() = default;

std::unique_ptr<hosting::HostedPlugin> FormFile::makeInstance() const {
  const juce::PluginDescription& description = *loaded->found.getFirst();
  juce::String error;
  auto plugin = loaded->format->createInstanceFromDescription(description, 44100.0, kLongestBlock, error);
  if (plugin == nullptr) {
    throw HostError("the plug-in '" + description.fileOrIdentifier.toStdString() +
                    "' gives no instance: " + error.toStdString());
  }
  return std::make_unique<FormInstance>(loaded->form, std::move(plugin), loaded->names);
}

bool isMessageThread() { return juce::MessageManager::existsAndIsCurrentThread(); }

void rest(std::chrono::milliseconds time) {
  if (isMessageThread()) {
    juce::MessageManager::getInstance()->runDispatchLoopUntil(static_cast<int>(time.count()));
    takeQueuedEvents();
  } else {
    std::this_thread::sleep_for(time);
  }
}

}  // namespace sivray::formhost
