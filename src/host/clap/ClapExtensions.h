// The extensions of the CLAP plug-in interface: ports, parameters, state, presets, time and window.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

#include "host/clap/ClapRecords.h"

namespace tesh::bramel::clap {

// Extensions: ports.

inline constexpr const char* kAudioPorts = "clap.audio-ports";
inline constexpr const char* kStereoPort = "stereo";
inline constexpr std::uint32_t kMainPortFlag = 1U << 0;

struct AudioPortInfo {
  std::uint32_t id;
  char name[kNameSize];
  std::uint32_t flags;
  std::uint32_t channelCount;
  const char* portType;
  std::uint32_t inPlacePair;
};

struct AudioPorts {
  std::uint32_t (*count)(const Plugin*, bool isInput);
  bool (*get)(const Plugin*, std::uint32_t index, bool isInput, AudioPortInfo*);
};

inline constexpr const char* kAudioPortsActivation = "clap.audio-ports-activation/2";
inline constexpr const char* kAudioPortsActivationDraft = "clap.audio-ports-activation/draft-2";

/// Without it all ports are active. `sampleSize` is 32 or 64 bits, or 0 where the host does not say.
struct AudioPortsActivation {
  bool (*canActivateWhileProcessing)(const Plugin*);
  bool (*setActive)(const Plugin*, bool isInput, std::uint32_t index, bool isActive, std::uint32_t sampleSize);
};

inline constexpr const char* kNotePorts = "clap.note-ports";
inline constexpr std::uint32_t kClapDialect = 1U << 0;
inline constexpr std::uint32_t kMidiDialect = 1U << 1;

struct NotePortInfo {
  std::uint32_t id;
  std::uint32_t supportedDialects;
  std::uint32_t preferredDialect;
  char name[kNameSize];
};

struct NotePorts {
  std::uint32_t (*count)(const Plugin*, bool isInput);
  bool (*get)(const Plugin*, std::uint32_t index, bool isInput, NotePortInfo*);
};

inline constexpr const char* kNoteName = "clap.note-name";

struct NoteNameInfo {
  char name[kNameSize];
  std::int16_t port;
  std::int16_t key;
  std::int16_t channel;
};

struct NoteName {
  std::uint32_t (*count)(const Plugin*);
  bool (*get)(const Plugin*, std::uint32_t index, NoteNameInfo*);
};

struct HostNoteName {
  void (*changed)(const Host*);
};

// Extensions: parameters.

inline constexpr const char* kParams = "clap.params";

namespace ParamFlag {
inline constexpr std::uint32_t isStepped = 1U << 0;
inline constexpr std::uint32_t isAutomatable = 1U << 5;
inline constexpr std::uint32_t isModulatable = 1U << 10;
inline constexpr std::uint32_t isEnum = 1U << 16;
}  // namespace ParamFlag

struct ParamInfo {
  std::uint32_t id;
  std::uint32_t flags;
  void* cookie;
  char name[kNameSize];
  char module[kPathSize];
  double minimum;
  double maximum;
  double defaultValue;
};

struct Params {
  std::uint32_t (*count)(const Plugin*);
  bool (*getInfo)(const Plugin*, std::uint32_t index, ParamInfo*);
  bool (*getValue)(const Plugin*, std::uint32_t id, double*);
  bool (*valueToText)(const Plugin*, std::uint32_t id, double value, char* text, std::uint32_t capacity);
  bool (*textToValue)(const Plugin*, std::uint32_t id, const char* text, double*);
  void (*flush)(const Plugin*, const InputEvents*, const OutputEvents*);
};

namespace RescanFlag {
inline constexpr std::uint32_t values = 1U << 0;
}  // namespace RescanFlag

struct HostParams {
  void (*rescan)(const Host*, std::uint32_t flags);
  void (*clear)(const Host*, std::uint32_t id, std::uint32_t flags);
  void (*requestFlush)(const Host*);
};

// Hosts of version 1.1 know some records under the names of their drafts, and drafts are the same records.
inline constexpr const char* kRemoteControls = "clap.remote-controls/2";
inline constexpr const char* kRemoteControlsDraft = "clap.remote-controls.draft/2";
inline constexpr std::size_t kRemoteControlCount = 8;

struct RemoteControlsPage {
  char sectionName[kNameSize];
  std::uint32_t pageId;
  char pageName[kNameSize];
  std::uint32_t paramIds[kRemoteControlCount];
  bool isForPreset;
};

struct RemoteControls {
  std::uint32_t (*count)(const Plugin*);
  bool (*get)(const Plugin*, std::uint32_t pageIndex, RemoteControlsPage*);
};

// Extensions: state and presets.

inline constexpr const char* kState = "clap.state";
inline constexpr const char* kStateContext = "clap.state-context/2";

/// Gives or takes any number of bytes up to `size`; 0 at the end of a stream, -1 after an error.
struct InputStream {
  void* context;
  std::int64_t (*read)(const InputStream*, void* bytes, std::uint64_t size);
};

struct OutputStream {
  void* context;
  std::int64_t (*write)(const OutputStream*, const void* bytes, std::uint64_t size);
};

struct State {
  bool (*save)(const Plugin*, const OutputStream*);
  bool (*load)(const Plugin*, const InputStream*);
};

struct StateContext {
  bool (*save)(const Plugin*, const OutputStream*, std::uint32_t contextType);
  bool (*load)(const Plugin*, const InputStream*, std::uint32_t contextType);
};

struct HostState {
  void (*markDirty)(const Host*);
};

inline constexpr const char* kPresetLoad = "clap.preset-load/2";
inline constexpr const char* kPresetLoadDraft = "clap.preset-load.draft/2";

namespace LocationKind {
inline constexpr std::uint32_t file = 0;    ///< `location` is a path.
inline constexpr std::uint32_t plugin = 1;  ///< Inside the plug-in; `location` is null.
}  // namespace LocationKind

struct PresetLoad {
  bool (*fromLocation)(const Plugin*, std::uint32_t locationKind, const char* location, const char* loadKey);
};

struct HostPresetLoad {
  void (*onError)(const Host*, std::uint32_t locationKind, const char* location, const char* loadKey,
                  std::int32_t osError, const char* message);
  void (*loaded)(const Host*, std::uint32_t locationKind, const char* location, const char* loadKey);
};

inline constexpr const char* kPresetDiscoveryFactory = "clap.preset-discovery-factory/2";
inline constexpr const char* kPresetDiscoveryFactoryDraft = "clap.preset-discovery-factory/draft-2";

namespace PresetFlag {
inline constexpr std::uint32_t isFactoryContent = 1U << 0;
inline constexpr std::uint32_t isUserContent = 1U << 1;
}  // namespace PresetFlag

/// Abi and id of the plug-in that a preset is for.
struct UniversalPluginId {
  const char* abi;
  const char* id;
};

struct MetadataReceiver {
  void* receiverData;
  void (*onError)(const MetadataReceiver*, std::int32_t osError, const char* message);
  bool (*beginPreset)(const MetadataReceiver*, const char* name, const char* loadKey);
  void (*addPluginId)(const MetadataReceiver*, const UniversalPluginId*);
  void (*setSoundpackId)(const MetadataReceiver*, const char* soundpackId);
  void (*setFlags)(const MetadataReceiver*, std::uint32_t flags);
  void (*addCreator)(const MetadataReceiver*, const char* creator);
  void (*setDescription)(const MetadataReceiver*, const char* description);
  void (*setTimestamps)(const MetadataReceiver*, std::uint64_t creation, std::uint64_t modification);
  void (*addFeature)(const MetadataReceiver*, const char* feature);
  void (*addExtraInfo)(const MetadataReceiver*, const char* key, const char* value);
};

struct PresetFileType {
  const char* name;
  const char* description;
  const char* fileExtension;
};

struct PresetLocation {
  std::uint32_t flags;
  const char* name;
  std::uint32_t kind;
  const char* location;
};

struct PresetSoundpack {
  std::uint32_t flags;
  const char* id;
  const char* name;
  const char* description;
  const char* homepageUrl;
  const char* vendor;
  const char* imagePath;
  std::uint64_t releaseTimestamp;
};

struct PresetProviderDescriptor {
  Version version;
  const char* id;
  const char* name;
  const char* vendor;
};

struct PresetProvider {
  const PresetProviderDescriptor* descriptor;
  void* providerData;
  bool (*init)(const PresetProvider*);
  void (*destroy)(const PresetProvider*);
  bool (*getMetadata)(const PresetProvider*, std::uint32_t locationKind, const char* location, const MetadataReceiver*);
  const void* (*getExtension)(const PresetProvider*, const char* id);
};

struct PresetIndexer {
  Version version;
  const char* name;
  const char* vendor;
  const char* url;
  const char* indexerVersion;
  void* indexerData;
  bool (*declareFileType)(const PresetIndexer*, const PresetFileType*);
  bool (*declareLocation)(const PresetIndexer*, const PresetLocation*);
  bool (*declareSoundpack)(const PresetIndexer*, const PresetSoundpack*);
  const void* (*getExtension)(const PresetIndexer*, const char* id);
};

struct PresetDiscoveryFactory {
  std::uint32_t (*count)(const PresetDiscoveryFactory*);
  const PresetProviderDescriptor* (*getDescriptor)(const PresetDiscoveryFactory*, std::uint32_t index);
  const PresetProvider* (*create)(const PresetDiscoveryFactory*, const PresetIndexer*, const char* providerId);
};

// Extensions: time.

inline constexpr const char* kLatency = "clap.latency";

struct Latency {
  std::uint32_t (*get)(const Plugin*);  ///< Frames.
};

struct HostLatency {
  void (*changed)(const Host*);
};

inline constexpr const char* kTail = "clap.tail";
inline constexpr std::uint32_t kInfiniteTail = 0x7FFFFFFF;

struct Tail {
  std::uint32_t (*get)(const Plugin*);  ///< Frames.
};

inline constexpr const char* kRender = "clap.render";

struct Render {
  bool (*hasHardRealtimeRequirement)(const Plugin*);
  bool (*set)(const Plugin*, std::int32_t mode);
};

inline constexpr const char* kThreadCheck = "clap.thread-check";

struct HostThreadCheck {
  bool (*isMainThread)(const Host*);
  bool (*isAudioThread)(const Host*);
};

inline constexpr const char* kTimerSupport = "clap.timer-support";

struct TimerSupport {
  void (*onTimer)(const Plugin*, std::uint32_t id);
};

struct HostTimerSupport {
  bool (*registerTimer)(const Host*, std::uint32_t milliseconds, std::uint32_t* id);
  bool (*unregisterTimer)(const Host*, std::uint32_t id);
};

// Extensions: the window.

inline constexpr const char* kGui = "clap.gui";
inline constexpr const char* kWindowApiX11 = "x11";
inline constexpr const char* kWindowApiWin32 = "win32";

struct Window {
  const char* api;
  union {
    unsigned long x11;
    void* pointer;
  };
};

struct ResizeHints {
  bool canResizeHorizontally;
  bool canResizeVertically;
  bool keepsAspectRatio;
  std::uint32_t aspectRatioWidth;
  std::uint32_t aspectRatioHeight;
};

struct Gui {
  bool (*isApiSupported)(const Plugin*, const char* api, bool isFloating);
  bool (*getPreferredApi)(const Plugin*, const char** api, bool* isFloating);
  bool (*create)(const Plugin*, const char* api, bool isFloating);
  void (*destroy)(const Plugin*);
  bool (*setScale)(const Plugin*, double scale);
  bool (*getSize)(const Plugin*, std::uint32_t* width, std::uint32_t* height);
  bool (*canResize)(const Plugin*);
  bool (*getResizeHints)(const Plugin*, ResizeHints*);
  bool (*adjustSize)(const Plugin*, std::uint32_t* width, std::uint32_t* height);
  bool (*setSize)(const Plugin*, std::uint32_t width, std::uint32_t height);
  bool (*setParent)(const Plugin*, const Window*);
  bool (*setTransient)(const Plugin*, const Window*);
  void (*suggestTitle)(const Plugin*, const char* title);
  bool (*show)(const Plugin*);
  bool (*hide)(const Plugin*);
};

struct HostGui {
  void (*resizeHintsChanged)(const Host*);
  bool (*requestResize)(const Host*, std::uint32_t width, std::uint32_t height);
  bool (*requestShow)(const Host*);
  bool (*requestHide)(const Host*);
  void (*closed)(const Host*, bool wasDestroyed);
};

static_assert(sizeof(AudioPortInfo) == 288 && offsetof(AudioPortInfo, portType) == 272);
static_assert(sizeof(NotePortInfo) == 268 && sizeof(NoteNameInfo) == 262);
static_assert(sizeof(ParamInfo) == 1320 && offsetof(ParamInfo, minimum) == 1296);
static_assert(sizeof(RemoteControlsPage) == 552 && offsetof(RemoteControlsPage, paramIds) == 516);
static_assert(sizeof(PresetLocation) == 32 && sizeof(PresetSoundpack) == 64 && sizeof(PresetIndexer) == 88);
static_assert(sizeof(Window) == 16 && sizeof(ResizeHints) == 12 && sizeof(Gui) == 120);

}  // namespace tesh::bramel::clap
