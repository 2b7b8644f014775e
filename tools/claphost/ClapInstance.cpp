// The host's side of CLAP: calls into the plug-in, and the functions that answer it.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "claphost/ClapInstance.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <thread>

namespace sivray::claphost {
namespace {

using namespace tesh::bramel::clap;
using hosting::HostCallKind;
using hosting::HostError;

constexpr std::uint32_t kLongestBlock = 32768;
/// Time in which the panel's thread handles all waiting messages.
constexpr std::chrono::milliseconds kSettled{12};

/// Bytes that a plug-in reads or writes.
struct Bytes {
  std::vector<std::uint8_t> all;
  std::size_t position = 0;
};

std::int64_t readBytes(const InputStream* stream, void* to, std::uint64_t size) {
  auto& bytes = *static_cast<Bytes*>(stream->context);
  const std::size_t count = std::min<std::size_t>(size, bytes.all.size() - bytes.position);
  std::copy_n(bytes.all.begin() + static_cast<std::ptrdiff_t>(bytes.position), count, static_cast<std::uint8_t*>(to));
  bytes.position += count;
  return static_cast<std::int64_t>(count);
}

std::int64_t writeBytes(const OutputStream* stream, const void* from, std::uint64_t size) {
  auto& bytes = *static_cast<Bytes*>(stream->context);
  const auto* const first = static_cast<const std::uint8_t*>(from);
  bytes.all.insert(bytes.all.end(), first, first + size);
  return static_cast<std::int64_t>(size);
}

}  // namespace

/// The functions that the plug-in calls.
struct HostCalls {
  static ClapInstance& of(const Host* host) { return *static_cast<ClapInstance*>(host->hostData); }

  /// Counts a call.
  static ClapInstance& count(const Host* host, bool isAllowed) {
    ClapInstance& own = of(host);
    ++own.hostCalls;
    own.wrongCalls += isAllowed ? 0 : 1;
    return own;
  }
  /// A call that is allowed on the main thread only.
  static ClapInstance& onMain(const Host* host) {
    return count(host, std::this_thread::get_id() == of(host).mainThread);
  }

  static void requestNothing(const Host* host) { count(host, true); }
  static void changed(const Host* host) { onMain(host); }
  static void requestCallback(const Host* host) { count(host, true).wantsCallback = true; }
  static void requestFlush(const Host* host) {
    count(host, std::this_thread::get_id() != of(host).audioThread.load()).wantsFlush = true;
  }
  static void rescan(const Host* host, std::uint32_t) {
    onMain(host).record({HostCallKind::updateDisplay, 0, 0.0F, {}});
  }
  static void clear(const Host* host, std::uint32_t, std::uint32_t) { onMain(host); }
  static bool requestResize(const Host* host, std::uint32_t width, std::uint32_t height) {
    of(host).record({HostCallKind::sizeWindow, 0, 0.0F, {static_cast<int>(width), static_cast<int>(height)}});
    return true;
  }
  static bool refuse(const Host*) { return false; }
  static void closed(const Host*, bool) {}

  static const void* extension(const Host*, const char* id) {
    static constexpr HostParams kHostParams{&rescan, &clear, &requestFlush};
    static constexpr HostState kHostState{&changed};
    static constexpr HostLatency kHostLatency{&changed};
    static constexpr HostNoteName kHostNoteName{&changed};
    static constexpr HostGui kHostGui{&requestNothing, &requestResize, &refuse, &refuse, &closed};
    static constexpr HostPresetLoad kHostPresets{&presetFailed, &presetLoaded};
    const std::string_view wanted(id);
    return wanted == kParams       ? static_cast<const void*>(&kHostParams)
           : wanted == kState      ? &kHostState
           : wanted == kLatency    ? &kHostLatency
           : wanted == kNoteName   ? &kHostNoteName
           : wanted == kPresetLoad ? &kHostPresets
           : wanted == kGui        ? static_cast<const void*>(&kHostGui)
                                   : nullptr;
  }

  /// A kit that the plug-in reports, chosen by itself or by the host.
  static void presetLoaded(const Host* host, std::uint32_t kind, const char*, const char* key) {
    ClapInstance& own = onMain(host);
    const auto found = std::ranges::find(own.programs, std::string(key), &ListedKit::key);
    if (kind == LocationKind::plugin && found != own.programs.end()) {
      own.selectedProgram = static_cast<int>(found - own.programs.begin());
    }
  }
  static void presetFailed(const Host*, std::uint32_t, const char*, const char*, std::int32_t, const char*) {}

  static bool push(const OutputEvents* out, const EventHeader* event) {
    static_cast<ClapInstance*>(out->context)->takeOutput(*event);
    return true;
  }
};

ClapInstance::ClapInstance(const ClapLibrary& library, const std::vector<std::string>& parameterNames)
    : host{{},
           this,
           "Sivray Render",
           "",
           "",
           "",
           &HostCalls::extension,
           &HostCalls::requestNothing,
           &HostCalls::requestNothing,
           &HostCalls::requestCallback} {
  const Descriptor* const descriptor = library.factory().getPluginDescriptor(&library.factory(), 0);
  plugin = library.factory().createPlugin(&library.factory(), &host, descriptor->id);
  if (plugin == nullptr || !plugin->init(plugin)) {
    if (plugin != nullptr) {
      plugin->destroy(plugin);
    }
    throw HostError("the plug-in '" + library.path() + "' gives no instance: is its content beside it?");
  }
  params = extension<Params>(kParams);
  parameters.resize(parameterNames.size());
  for (std::uint32_t index = 0; index < params->count(plugin); ++index) {
    ParamInfo info{};
    params->getInfo(plugin, index, &info);
    for (std::size_t own = 0; own < parameterNames.size(); ++own) {
      if (parameterNames[own] == info.name) {
        parameters[own] = info;
      }
    }
  }
  waiting = std::vector<Waiting>(parameters.size());
  programs = findKits(library);
  activate();
}

ClapInstance::~ClapInstance() {
  closeEditor();
  deactivate();
  plugin->destroy(plugin);
}

void ClapInstance::activate() {
  isActive = plugin->activate(plugin, static_cast<double>(rate), 1, kLongestBlock) && plugin->startProcessing(plugin);
}

void ClapInstance::deactivate() {
  if (isActive) {
    plugin->stopProcessing(plugin);
    plugin->deactivate(plugin);
    isActive = false;
  }
}

void ClapInstance::start(float sampleRate, int longestBlock) {
  block = longestBlock;
  setSampleRate(sampleRate);
}

void ClapInstance::setSampleRate(float sampleRate) {
  deactivate();
  rate = sampleRate;
  activate();
}

void ClapInstance::restart() {
  deactivate();
  activate();
}

float ClapInstance::settable(int index, float value) {
  if (!has(index)) {
    return value;
  }
  const ParamInfo& info = parameters[static_cast<std::size_t>(index)];
  const bool isStepped = (info.flags & ParamFlag::isStepped) != 0;
  return isStepped ? static_cast<float>(std::round(static_cast<double>(value) * info.maximum) / info.maximum) : value;
}

void ClapInstance::setParameter(int index, float value) {
  if (has(index)) {
    const auto at = static_cast<std::size_t>(index);
    waiting[at].value = static_cast<double>(settable(index, value)) * parameters[at].maximum;
    waiting[at].isSet = true;
  }
}

double ClapInstance::heldValue(int index) {
  const auto at = static_cast<std::size_t>(index);
  double value = waiting[at].value;
  if (!waiting[at].isSet) {
    params->getValue(plugin, parameters[at].id, &value);
  }
  return value;
}

float ClapInstance::parameter(int index) {
  return has(index) ? static_cast<float>(heldValue(index) / parameters[static_cast<std::size_t>(index)].maximum) : 0.0F;
}

std::string ClapInstance::parameterName(int index) {
  return has(index) ? parameters[static_cast<std::size_t>(index)].name : "";
}

std::string ClapInstance::parameterText(int index) {
  std::array<char, 256> text{};
  if (has(index)) {
    params->valueToText(plugin, parameters[static_cast<std::size_t>(index)].id, heldValue(index), text.data(),
                        text.size());
  }
  return text.data();
}

std::vector<std::uint8_t> ClapInstance::chunk() {
  Bytes bytes;
  const OutputStream stream{&bytes, &writeBytes};
  extension<State>(kState)->save(plugin, &stream);
  return bytes.all;
}

void ClapInstance::setChunk(std::span<const std::uint8_t> given) {
  Bytes bytes{{given.begin(), given.end()}};
  const InputStream stream{&bytes, &readBytes};
  extension<State>(kState)->load(plugin, &stream);
  answerRequests();
}

int ClapInstance::latencyFrames() { return static_cast<int>(extension<Latency>(kLatency)->get(plugin)); }

void ClapInstance::process(float* left, float* right, int frames) {
  std::array<float*, 2> channels{left, right};
  AudioBuffer output{channels.data(), nullptr, 2, 0, 0};
  TransportEvent transport{};
  transport.header = {sizeof(transport), 0, kCoreSpace, EventType::transport, 0};
  transport.flags = TransportFlag::hasTempo | (playing ? TransportFlag::isPlaying : 0U);
  transport.tempo = tempo;
  blockEvents.clear();
  for (std::size_t at = 0; at < waiting.size(); ++at) {
    if (waiting[at].isSet.exchange(false)) {
      blockEvents.addValue(parameters[at].id, parameters[at].cookie, waiting[at].value, 0);
    }
  }
  blockEvents.addAll(events);
  const OutputEvents out{this, &HostCalls::push};
  Process given{
      playedFrames, static_cast<std::uint32_t>(frames), &transport, nullptr, &output, 0, 1, blockEvents.list(), &out};
  audioThread = std::this_thread::get_id();
  plugin->process(plugin, &given);
  audioThread = std::thread::id();
  events.clear();
  playedFrames += frames;
}

void ClapInstance::takeOutput(const EventHeader& event) {
  const auto indexOf = [this](std::uint32_t id) {
    for (std::size_t own = 0; own < parameters.size(); ++own) {
      if (parameters[own].id == id) {
        return static_cast<int>(own);
      }
    }
    return -1;
  };
  switch (event.type) {
    case EventType::paramValue: {
      const auto& value = reinterpret_cast<const ParamEvent&>(event);
      const int own = indexOf(value.paramId);
      record({HostCallKind::automate,
              own,
              static_cast<float>(value.value / parameters[static_cast<std::size_t>(own)].maximum),
              {}});
      break;
    }
    case EventType::gestureBegin:
    case EventType::gestureEnd:
      record({event.type == EventType::gestureBegin ? HostCallKind::beginEdit : HostCallKind::endEdit,
              indexOf(reinterpret_cast<const GestureEvent&>(event).paramId),
              0.0F,
              {}});
      break;
    case EventType::midi:
      recordMidi(reinterpret_cast<const MidiEvent&>(event).data);
      break;
    default:
      break;
  }
}

void ClapInstance::answerRequests() {
  if (wantsFlush.exchange(false)) {
    const OutputEvents out{this, &HostCalls::push};
    EventQueue none;
    params->flush(plugin, none.list(), &out);
  }
  if (wantsCallback.exchange(false)) {
    plugin->onMainThread(plugin);
  }
}

// Programs: the plug-in's own presets.

std::string ClapInstance::programName(int index) {
  return index >= 0 && index < programCount() ? programs[static_cast<std::size_t>(index)].name : std::string();
}

void ClapInstance::selectProgram(int index) {
  const auto* const loader = extension<PresetLoad>(kPresetLoad);
  if (index >= 0 && index < programCount() && loader != nullptr &&
      loader->fromLocation(plugin, LocationKind::plugin, nullptr,
                           programs[static_cast<std::size_t>(index)].key.c_str())) {
    selectedProgram = index;
    answerRequests();
  }
}

// The window.

void ClapInstance::openEditor(void* window) {
  const auto* const gui = extension<Gui>(kGui);
  if (hasWindow || gui == nullptr || !gui->create(plugin, kWindowApiX11, false)) {
    return;
  }
  hasWindow = true;
  Window parent{kWindowApiX11, {}};
  parent.x11 = reinterpret_cast<unsigned long>(window);
  gui->setParent(plugin, &parent);
  gui->show(plugin);
}

void ClapInstance::closeEditor() {
  if (hasWindow) {
    extension<Gui>(kGui)->destroy(plugin);
    hasWindow = false;
  }
}

hosting::WindowSize ClapInstance::editorSize() {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  const auto* const gui = extension<Gui>(kGui);
  if (gui == nullptr || !gui->getSize(plugin, &width, &height)) {
    return {};
  }
  return {static_cast<int>(width), static_cast<int>(height)};
}

bool ClapInstance::setEditorScale(float scale) {
  const auto* const gui = extension<Gui>(kGui);
  return gui != nullptr && gui->setScale(plugin, static_cast<double>(scale));
}

void ClapInstance::settleEditor() {
  std::this_thread::sleep_for(kSettled);
  answerRequests();
}

}  // namespace sivray::claphost
