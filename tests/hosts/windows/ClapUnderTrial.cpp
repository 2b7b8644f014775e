// A CLAP library in a minimal host.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef _WIN32

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

#include "EditorUnderTrial.h"
#include "TrialNotes.h"
#include "claphost/EventQueue.h"
#include "host/clap/ClapExtensions.h"
#include "platform/WideText.h"
#include "platform/WindowsApi.h"

namespace sivray::trial {
namespace {

using namespace tesh::bramel::clap;

/// The host accepts every size, and calls the plug-in back when it asks for that to send moves.
class ClapUnderTrial final : public EditorUnderTrial {
 public:
  explicit ClapUnderTrial(const std::string& path)
      : library(LoadLibraryW(tesh::bramel::platform::toWide(path).c_str())) {
    entry = library == nullptr
                ? nullptr
                : reinterpret_cast<const Entry*>(reinterpret_cast<void*>(GetProcAddress(library, "clap_entry")));
    if (entry == nullptr || !entry->init(path.c_str())) {
      entry = nullptr;
      return;
    }
    const auto* const factory = static_cast<const PluginFactory*>(entry->getFactory(kPluginFactory));
    plugin = factory->createPlugin(factory, &host, factory->getPluginDescriptor(factory, 0)->id);
    if (plugin != nullptr && !plugin->init(plugin)) {
      closeInstance();
    }
  }

  ~ClapUnderTrial() override {
    closeInstance();
    if (entry != nullptr) {
      entry->deinit();
    }
    if (library != nullptr) {
      FreeLibrary(library);
    }
  }

  bool isThere() const override { return plugin != nullptr; }

  void closeInstance() override {
    if (plugin != nullptr) {
      closeEditor();
      plugin->destroy(plugin);
      plugin = nullptr;
    }
  }

  void openEditor(void* window) override {
    hasEditor = gui().create(plugin, kWindowApiWin32, false);
    Window parent{kWindowApiWin32, {}};
    parent.pointer = window;
    gui().setParent(plugin, &parent);
    gui().show(plugin);
  }

  void closeEditor() override {
    if (std::exchange(hasEditor, false)) {
      gui().destroy(plugin);
    }
  }

  bool setScale(float scale) override { return gui().setScale(plugin, static_cast<double>(scale)); }

  int takeMoves() override {
    claphost::EventQueue none;
    moves = 0;
    const OutputEvents out{this, &countMoves};
    extension<Params>(kParams).flush(plugin, none.list(), &out);
    if (wantsCall.exchange(false)) {
      plugin->onMainThread(plugin);
    }
    return moves;
  }

  void setState(std::vector<char> bytes) override {
    std::pair<std::vector<char>, std::size_t> read{std::move(bytes), 0};
    const InputStream stream{&read, [](const InputStream* from, void* to, std::uint64_t size) {
                               auto& [all, done] =
                                   *static_cast<std::pair<std::vector<char>, std::size_t>*>(from->context);
                               const std::size_t count = std::min<std::size_t>(size, all.size() - done);
                               std::memcpy(to, all.data() + done, count);
                               done += count;
                               return static_cast<std::int64_t>(count);
                             }};
    extension<State>(kState).load(plugin, &stream);
  }

  std::vector<float> renderNotes(float rate) override {
    plugin->activate(plugin, static_cast<double>(rate), 1, kBlock);
    plugin->startProcessing(plugin);
    std::vector<float> samples;
    std::array<std::array<float, kBlock>, 2> sides{};
    std::array<float*, 2> channels{sides[0].data(), sides[1].data()};
    AudioBuffer output{channels.data(), nullptr, 2, 0, 0};
    TransportEvent transport{};
    transport.header = {sizeof(transport), 0, kCoreSpace, EventType::transport, 0};
    transport.flags = TransportFlag::hasTempo | TransportFlag::isPlaying;
    transport.tempo = kTempo;
    const OutputEvents out{this, &countMoves};
    claphost::EventQueue events;
    for (int block = 0; block < blocksAt(rate); ++block) {
      events.clear();
      if (const auto note = noteOfBlock(block)) {
        events.addMidi(note->bytes, note->frame);
      }
      const Process given{
          static_cast<std::int64_t>(block) * kBlock, kBlock, &transport, nullptr, &output, 0, 1, events.list(), &out};
      plugin->process(plugin, &given);
      appendInterleaved(sides, samples);
    }
    plugin->stopProcessing(plugin);
    plugin->deactivate(plugin);
    return samples;
  }

 private:
  static ClapUnderTrial& of(const Host* host) { return *static_cast<ClapUnderTrial*>(host->hostData); }

  static const void* extensionOfHost(const Host* /*host*/, const char* id) {
    static constexpr HostGui kHostGui{
        [](const Host*) {}, [](const Host*, std::uint32_t, std::uint32_t) { return true; },
        [](const Host*) { return false; }, [](const Host*) { return false; }, [](const Host*, bool) {}};
    return std::string_view(id) == kGui ? &kHostGui : nullptr;
  }

  static bool countMoves(const OutputEvents* out, const EventHeader* event) {
    static_cast<ClapUnderTrial*>(out->context)->moves += event->type == EventType::paramValue ? 1 : 0;
    return true;
  }

  template <typename Extension>
  const Extension& extension(const char* id) const {
    return *static_cast<const Extension*>(plugin->getExtension(plugin, id));
  }
  const Gui& gui() const { return extension<Gui>(kGui); }

  const Host host{{},
                  this,
                  "Sivray Trial",
                  "",
                  "",
                  "",
                  &extensionOfHost,
                  [](const Host*) {},
                  [](const Host*) {},
                  [](const Host* own) { of(own).wantsCall = true; }};
  HMODULE library = nullptr;
  const Entry* entry = nullptr;
  const Plugin* plugin = nullptr;
  bool hasEditor = false;
  int moves = 0;
  std::atomic<bool> wantsCall = false;  ///< Set on any thread.
};

}  // namespace

std::unique_ptr<EditorUnderTrial> loadClap(const std::string& path) { return std::make_unique<ClapUnderTrial>(path); }

}  // namespace sivray::trial

#endif
