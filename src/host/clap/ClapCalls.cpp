// The functions by which a CLAP host calls the plug-in and its extensions. The host's input is not trusted: null
// pointers and numbers out of range are answered by false or 0, and no exception leaves a call.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <cassert>
#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "host/clap/ClapPlugin.h"
#include "host/clap/ClapText.h"
#include "host/shell/OutNames.h"
#include "host/shell/SoundNames.h"
#include "viewmodels/texts/PanelMacros.h"

namespace tesh::bramel::clap {

struct ClapCalls {
  /// The result of `call` for the instance behind the record. Zero if there is no instance, if it has not been
  /// initialised, or if `call` throws.
  template <typename Call>
  static auto with(const Plugin* record, Call call) noexcept -> std::invoke_result_t<Call, ClapPlugin&> {
    using Answer = std::invoke_result_t<Call, ClapPlugin&>;
    auto* const plugin = record == nullptr ? nullptr : static_cast<ClapPlugin*>(record->pluginData);
    if (plugin == nullptr || plugin->instrument == nullptr) {
      return Answer();
    }
    try {
      return call(*plugin);
    } catch (const std::exception&) {
      return Answer();
    }
  }

  // As above, for calls that the interface allows on the main or on the audio thread only. A debug build ends if the
  // host, by its own thread check, calls on another.

  template <typename Call>
  static auto onMain(const Plugin* record, Call call) noexcept {
    return with(record, [&](ClapPlugin& plugin) {
      assert(plugin.host.mayBeMainThread() && "the host calls on another thread than its main thread");
      return call(plugin);
    });
  }
  template <typename Call>
  static auto onAudio(const Plugin* record, Call call) noexcept {
    return with(record, [&](ClapPlugin& plugin) {
      assert(plugin.host.mayBeAudioThread() && "the host calls on another thread than its audio thread");
      return call(plugin);
    });
  }

  // The plug-in itself.

  static bool init(const Plugin* record) {
    auto* const plugin = static_cast<ClapPlugin*>(record->pluginData);
    return plugin->init();
  }
  static void destroy(const Plugin* record) {
    with(record, [](ClapPlugin& plugin) { stopTimer(plugin); });
    delete static_cast<ClapPlugin*>(record->pluginData);
  }
  static bool activate(const Plugin* record, double sampleRate, std::uint32_t /*least*/, std::uint32_t /*most*/) {
    return onMain(record, [=](ClapPlugin& plugin) { return plugin.activate(sampleRate); });
  }
  static void deactivate(const Plugin* record) {
    onMain(record, [](ClapPlugin& plugin) { plugin.deactivate(); });
  }
  static bool startProcessing(const Plugin* record) {
    return onAudio(record, [](ClapPlugin& plugin) { return plugin.isActive.load(); });
  }
  static void stopProcessing(const Plugin* /*record*/) {}
  static void reset(const Plugin* record) {
    onAudio(record, [](ClapPlugin& plugin) { plugin.reset(); });
  }
  static std::int32_t process(const Plugin* record, const Process* block) {
    return onAudio(record, [=](ClapPlugin& plugin) { return plugin.process(block); });
  }
  static void onMainThread(const Plugin* record) {
    onMain(record, [](ClapPlugin& plugin) { plugin.reports->onMainThread(); });
  }

  // A timer, while there is a window: qtractor 0.9.31 answers no `requestCallback`, and would not hear of a kit that is
  // chosen on the panel.

  static constexpr std::uint32_t kTimerMilliseconds = 500;

  static void onTimer(const Plugin* record, std::uint32_t /*id*/) { onMainThread(record); }
  static void stopTimer(ClapPlugin& plugin) {
    if (const auto running = std::exchange(plugin.timer, std::nullopt)) {
      plugin.host.stopTimer(*running);
    }
  }

  // Ports: ten stereo outputs, one input of notes, and one output of the notes that are played on the panel.

  static std::uint32_t audioPortCount(const Plugin* /*record*/, bool isInput) {
    return isInput ? 0 : static_cast<std::uint32_t>(vst::kOutCount);
  }
  static bool audioPort(const Plugin* /*record*/, std::uint32_t index, bool isInput, AudioPortInfo* info) {
    if (isInput || index >= vst::kOutCount || info == nullptr) {
      return false;
    }
    *info = {};
    info->id = index;
    copyText(vst::outName(index), info->name);
    info->flags = index == 0 ? kMainPortFlag : 0;
    info->channelCount = 2;
    info->portType = kStereoPort;
    info->inPlacePair = kInvalidId;
    return true;
  }

  static bool canActivateWhileProcessing(const Plugin* /*record*/) { return true; }
  static bool setPortActive(const Plugin* record, bool isInput, std::uint32_t index, bool isActive,
                            std::uint32_t /*sampleSize*/) {
    return with(record, [=](ClapPlugin& plugin) {
      if (isInput || index >= vst::kOutCount) {
        return false;
      }
      plugin.block->setOutActive(index, isActive);
      return true;
    });
  }

  static std::uint32_t notePortCount(const Plugin* /*record*/, bool /*isInput*/) { return 1; }
  static bool notePort(const Plugin* /*record*/, std::uint32_t index, bool isInput, NotePortInfo* info) {
    if (index != 0 || info == nullptr) {
      return false;
    }
    *info = {};
    info->supportedDialects = isInput ? kClapDialect | kMidiDialect : kMidiDialect;
    info->preferredDialect = isInput ? kClapDialect : kMidiDialect;
    copyText(isInput ? "Notes" : "Keys of the panel", info->name);
    return true;
  }

  static std::uint32_t noteNameCount(const Plugin* record) {
    return onMain(record, [](ClapPlugin&) { return static_cast<std::uint32_t>(panel::kPads); });
  }
  static bool noteName(const Plugin* record, std::uint32_t index, NoteNameInfo* info) {
    return onMain(record, [=](ClapPlugin& plugin) {
      if (index >= panel::kPads || info == nullptr) {
        return false;
      }
      *info = {};
      copyText(vst::soundNameOf(*plugin.instrument, index), info->name);
      info->port = info->channel = -1;
      info->key = static_cast<std::int16_t>(panel::padNote(index));
      return true;
    });
  }

  // Parameters.

  static std::uint32_t paramCount(const Plugin* record) {
    return onMain(record, [](ClapPlugin& plugin) { return plugin.parameters->count(); });
  }
  static bool paramInfo(const Plugin* record, std::uint32_t index, ParamInfo* info) {
    return onMain(record,
                  [=](ClapPlugin& plugin) { return info != nullptr && plugin.parameters->describe(index, *info); });
  }

  /// Calls `use` with the plug-in and the index of the parameter `id`; false if there is none.
  template <typename Use>
  static bool withParam(const Plugin* record, std::uint32_t id, Use use) noexcept {
    return onMain(record, [&](ClapPlugin& plugin) {
      const std::uint32_t index = plugin.parameters->find(id);
      return index != ClapParameters::kNone && use(plugin, index);
    });
  }
  static bool paramValue(const Plugin* record, std::uint32_t id, double* value) {
    return value != nullptr && withParam(record, id, [=](ClapPlugin& plugin, std::uint32_t index) {
             *value = plugin.valueOf(index);
             return true;
           });
  }
  static bool paramText(const Plugin* record, std::uint32_t id, double value, char* text, std::uint32_t capacity) {
    return text != nullptr && capacity > 0 && withParam(record, id, [=](ClapPlugin& plugin, std::uint32_t index) {
             copyText(plugin.parameters->textOf(index, value), text, capacity);
             return true;
           });
  }
  static bool paramOfText(const Plugin* record, std::uint32_t id, const char* text, double* value) {
    return text != nullptr && value != nullptr && withParam(record, id, [=](ClapPlugin& plugin, std::uint32_t index) {
             return plugin.parameters->valueOf(index, text, *value);
           });
  }
  static void flush(const Plugin* record, const InputEvents* in, const OutputEvents* out) {
    with(record, [=](ClapPlugin& plugin) { plugin.block->flush(in, out); });
  }

  static std::uint32_t pageCount(const Plugin* record) {
    return onMain(record, [](ClapPlugin& plugin) { return plugin.parameters->pageCount(); });
  }
  static bool page(const Plugin* record, std::uint32_t index, RemoteControlsPage* info) {
    return onMain(record,
                  [=](ClapPlugin& plugin) { return info != nullptr && plugin.parameters->describePage(index, *info); });
  }

  // State. The context for which a host saves (preset, project, copy) makes no difference.

  static bool save(const Plugin* record, const OutputStream* stream) {
    return onMain(record, [=](ClapPlugin& plugin) { return plugin.save(stream); });
  }
  static bool load(const Plugin* record, const InputStream* stream) {
    return onMain(record, [=](ClapPlugin& plugin) { return plugin.load(stream); });
  }
  static bool saveFor(const Plugin* record, const OutputStream* stream, std::uint32_t /*contextType*/) {
    return save(record, stream);
  }
  static bool loadFor(const Plugin* record, const InputStream* stream, std::uint32_t /*contextType*/) {
    return load(record, stream);
  }

  static bool loadPreset(const Plugin* record, std::uint32_t kind, const char* location, const char* key) {
    return onMain(record, [=](ClapPlugin& plugin) { return plugin.loadKit(kind, location, key); });
  }

  // Time.

  static std::uint32_t latency(const Plugin* record) {
    return with(record, [](ClapPlugin& plugin) { return plugin.latency.load(); });
  }
  /// Infinite, so that no host cuts a delay with much feedback off.
  static std::uint32_t tail(const Plugin* /*record*/) { return kInfiniteTail; }
  static bool needsRealTime(const Plugin* /*record*/) { return false; }
  /// Offline and live rendering are the same.
  static bool setRenderMode(const Plugin* /*record*/, std::int32_t /*mode*/) { return true; }

  // The window: inside the host's, of a fixed size at the host's scale.

#ifdef _WIN32
  static constexpr const char* kWindowApi = kWindowApiWin32;
#else
  static constexpr const char* kWindowApi = kWindowApiX11;
#endif

  static bool isWindowApi(const Plugin* /*record*/, const char* api, bool isFloating) {
    return api != nullptr && std::string_view(api) == kWindowApi && !isFloating;
  }
  static bool preferredWindowApi(const Plugin* /*record*/, const char** api, bool* isFloating) {
    if (api == nullptr || isFloating == nullptr) {
      return false;
    }
    *api = kWindowApi;
    *isFloating = false;
    return true;
  }
  static bool createWindow(const Plugin* record, const char* api, bool isFloating) {
    return isWindowApi(record, api, isFloating) && onMain(record, [](ClapPlugin& plugin) {
             if (!plugin.timer) {
               plugin.timer = plugin.host.startTimer(kTimerMilliseconds);
             }
             return true;
           });
  }
  static void destroyWindow(const Plugin* record) {
    onMain(record, [](ClapPlugin& plugin) {
      stopTimer(plugin);
      plugin.session->close();
      plugin.parentWindow = nullptr;
    });
  }
  static bool setWindowScale(const Plugin* record, double scale) {
    return onMain(record, [=](ClapPlugin& plugin) {
      const bool isNew = static_cast<float>(scale) != plugin.session->scale();
      if (!plugin.session->setScale(static_cast<float>(scale))) {
        return false;
      }
      if (isNew && plugin.session->isOpen()) {
        tellSize(plugin);
      }
      return true;
    });
  }
  static void tellSize(const ClapPlugin& plugin) {
    const auto size = plugin.session->size();
    plugin.host.requestResize(static_cast<std::uint32_t>(size.width), static_cast<std::uint32_t>(size.height));
  }
  static bool windowSize(const Plugin* record, std::uint32_t* width, std::uint32_t* height) {
    return onMain(record, [=](ClapPlugin& plugin) {
      if (width == nullptr || height == nullptr) {
        return false;
      }
      const auto size = plugin.session->size();
      *width = static_cast<std::uint32_t>(size.width);
      *height = static_cast<std::uint32_t>(size.height);
      return true;
    });
  }
  static bool canResize(const Plugin* /*record*/) { return false; }
  /// Both ways fixed: some hosts complain where there are no hints.
  static bool resizeHints(const Plugin* /*record*/, ResizeHints* hints) {
    if (hints == nullptr) {
      return false;
    }
    *hints = {};
    return true;
  }
  static bool setWindowSize(const Plugin* record, std::uint32_t width, std::uint32_t height) {
    std::uint32_t ownWidth = 0;
    std::uint32_t ownHeight = 0;
    return windowSize(record, &ownWidth, &ownHeight) && width == ownWidth && height == ownHeight;
  }
  static bool setParent(const Plugin* record, const Window* window) {
    return window != nullptr && isWindowApi(record, window->api, false) && onMain(record, [=](ClapPlugin& plugin) {
             plugin.session->close();
             plugin.parentWindow = window->pointer;
             const float scale = plugin.session->scale();
             plugin.session->open(plugin.parentWindow);
             if (scale != plugin.session->scale()) {  // No scale set by the host: the window's was taken.
               tellSize(plugin);
             }
             return plugin.session->isOpen();
           });
  }
  static bool setTransient(const Plugin* /*record*/, const Window* /*window*/) { return false; }
  static void suggestTitle(const Plugin* /*record*/, const char* /*title*/) {}
  static bool show(const Plugin* record) {
    return onMain(record, [](ClapPlugin& plugin) {
      plugin.session->open(plugin.parentWindow);
      return plugin.session->isOpen();
    });
  }
  static bool hide(const Plugin* record) {
    return onMain(record, [](ClapPlugin& plugin) {
      plugin.session->close();
      return true;
    });
  }

  static const void* extension(const Plugin* /*record*/, const char* id);
};

namespace {

constexpr AudioPorts kAudioPortCalls{&ClapCalls::audioPortCount, &ClapCalls::audioPort};
constexpr AudioPortsActivation kActivationCalls{&ClapCalls::canActivateWhileProcessing, &ClapCalls::setPortActive};
constexpr NotePorts kNotePortCalls{&ClapCalls::notePortCount, &ClapCalls::notePort};
constexpr NoteName kNoteNameCalls{&ClapCalls::noteNameCount, &ClapCalls::noteName};
constexpr Params kParamCalls{&ClapCalls::paramCount, &ClapCalls::paramInfo,   &ClapCalls::paramValue,
                             &ClapCalls::paramText,  &ClapCalls::paramOfText, &ClapCalls::flush};
constexpr RemoteControls kPageCalls{&ClapCalls::pageCount, &ClapCalls::page};
constexpr State kStateCalls{&ClapCalls::save, &ClapCalls::load};
constexpr StateContext kStateContextCalls{&ClapCalls::saveFor, &ClapCalls::loadFor};
constexpr PresetLoad kPresetCalls{&ClapCalls::loadPreset};
constexpr Latency kLatencyCalls{&ClapCalls::latency};
constexpr Tail kTailCalls{&ClapCalls::tail};
constexpr TimerSupport kTimerCalls{&ClapCalls::onTimer};
constexpr Render kRenderCalls{&ClapCalls::needsRealTime, &ClapCalls::setRenderMode};

constexpr Gui kGuiCalls{&ClapCalls::isWindowApi,
                        &ClapCalls::preferredWindowApi,
                        &ClapCalls::createWindow,
                        &ClapCalls::destroyWindow,
                        &ClapCalls::setWindowScale,
                        &ClapCalls::windowSize,
                        &ClapCalls::canResize,
                        &ClapCalls::resizeHints,
                        &ClapCalls::windowSize,
                        &ClapCalls::setWindowSize,
                        &ClapCalls::setParent,
                        &ClapCalls::setTransient,
                        &ClapCalls::suggestTitle,
                        &ClapCalls::show,
                        &ClapCalls::hide};

struct Extension {
  std::string_view id;
  const void* calls;
};

constexpr std::array kExtensions{Extension{kAudioPorts, &kAudioPortCalls},
                                 Extension{kAudioPortsActivation, &kActivationCalls},
                                 Extension{kAudioPortsActivationDraft, &kActivationCalls},
                                 Extension{kNotePorts, &kNotePortCalls},
                                 Extension{kNoteName, &kNoteNameCalls},
                                 Extension{kParams, &kParamCalls},
                                 Extension{kRemoteControls, &kPageCalls},
                                 Extension{kRemoteControlsDraft, &kPageCalls},
                                 Extension{kState, &kStateCalls},
                                 Extension{kStateContext, &kStateContextCalls},
                                 Extension{kPresetLoad, &kPresetCalls},
                                 Extension{kPresetLoadDraft, &kPresetCalls},
                                 Extension{kLatency, &kLatencyCalls},
                                 Extension{kTail, &kTailCalls},
                                 Extension{kGui, &kGuiCalls},
                                 Extension{kTimerSupport, &kTimerCalls},
                                 Extension{kRender, &kRenderCalls}};

}  // namespace

const void* ClapCalls::extension(const Plugin* /*record*/, const char* id) {
  for (const Extension& each : kExtensions) {
    if (id != nullptr && each.id == id) {
      return each.calls;
    }
  }
  return nullptr;
}

void ClapPlugin::fillRecord() {
  record = {&pluginDescriptor(),
            this,
            &ClapCalls::init,
            &ClapCalls::destroy,
            &ClapCalls::activate,
            &ClapCalls::deactivate,
            &ClapCalls::startProcessing,
            &ClapCalls::stopProcessing,
            &ClapCalls::reset,
            &ClapCalls::process,
            &ClapCalls::extension,
            &ClapCalls::onMainThread};
}

}  // namespace tesh::bramel::clap
