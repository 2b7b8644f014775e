// The records of the CLAP plug-in interface, version 1.2: host, plug-in, events and blocks. ClapExtensions.h has the
// rest. Only what this plug-in uses. Names follow the interface's own, without its prefixes.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

/// A record's size and layout are those of a 64-bit C compiler, which the assertions below hold.
namespace tesh::bramel::clap {

inline constexpr std::uint32_t kInvalidId = 0xFFFFFFFF;
inline constexpr std::size_t kNameSize = 256;   ///< Bytes of a name, its closing zero included.
inline constexpr std::size_t kPathSize = 1024;  ///< Bytes of a parameter's group.

struct Version {
  std::uint32_t major = 1;
  std::uint32_t minor = 2;
  std::uint32_t revision = 2;
};

// Host and plug-in.

struct Host {
  Version version;
  void* hostData;
  const char* name;
  const char* vendor;  ///< May be null, as the next one.
  const char* url;
  const char* hostVersion;
  const void* (*getExtension)(const Host*, const char* id);
  void (*requestRestart)(const Host*);
  void (*requestProcess)(const Host*);
  void (*requestCallback)(const Host*);
};

struct Descriptor {
  Version version;
  const char* id;
  const char* name;
  const char* vendor;
  const char* url;
  const char* manualUrl;
  const char* supportUrl;
  const char* pluginVersion;
  const char* description;
  const char* const* features;  ///< Ends with a null pointer.
};

struct Process;

struct Plugin {
  const Descriptor* descriptor;
  void* pluginData;
  bool (*init)(const Plugin*);
  void (*destroy)(const Plugin*);
  bool (*activate)(const Plugin*, double sampleRate, std::uint32_t leastFrames, std::uint32_t mostFrames);
  void (*deactivate)(const Plugin*);
  bool (*startProcessing)(const Plugin*);
  void (*stopProcessing)(const Plugin*);
  void (*reset)(const Plugin*);
  std::int32_t (*process)(const Plugin*, const Process*);
  const void* (*getExtension)(const Plugin*, const char* id);
  void (*onMainThread)(const Plugin*);
};

inline constexpr const char* kPluginFactory = "clap.plugin-factory";

struct PluginFactory {
  std::uint32_t (*getPluginCount)(const PluginFactory*);
  const Descriptor* (*getPluginDescriptor)(const PluginFactory*, std::uint32_t index);
  const Plugin* (*createPlugin)(const PluginFactory*, const Host*, const char* pluginId);
};

/// The one symbol that a library exports, under the name `clap_entry`.
struct Entry {
  Version version;
  bool (*init)(const char* pluginPath);
  void (*deinit)();
  const void* (*getFactory)(const char* factoryId);
};

// Events.

struct EventHeader {
  std::uint32_t size;  ///< Bytes of the whole record.
  std::uint32_t time;  ///< Frame of the block.
  std::uint16_t spaceId;
  std::uint16_t type;
  std::uint32_t flags;
};

inline constexpr std::uint16_t kCoreSpace = 0;

namespace EventType {
inline constexpr std::uint16_t noteOn = 0;
inline constexpr std::uint16_t noteOff = 1;
inline constexpr std::uint16_t noteChoke = 2;
inline constexpr std::uint16_t noteEnd = 3;
inline constexpr std::uint16_t paramValue = 5;
inline constexpr std::uint16_t paramModulation = 6;
inline constexpr std::uint16_t gestureBegin = 7;
inline constexpr std::uint16_t gestureEnd = 8;
inline constexpr std::uint16_t transport = 9;
inline constexpr std::uint16_t midi = 10;
}  // namespace EventType

/// Port, channel, key and id are -1 where an event means all of them.
struct NoteEvent {
  EventHeader header;
  std::int32_t noteId;
  std::int16_t port;
  std::int16_t channel;
  std::int16_t key;
  double velocity;  ///< 0 to 1.
};

/// A value, or with the type `paramModulation` an offset to it.
struct ParamEvent {
  EventHeader header;
  std::uint32_t paramId;
  void* cookie;
  std::int32_t noteId;
  std::int16_t port;
  std::int16_t channel;
  std::int16_t key;
  double value;
};

struct GestureEvent {
  EventHeader header;
  std::uint32_t paramId;
};

namespace TransportFlag {
inline constexpr std::uint32_t hasTempo = 1U << 0;
inline constexpr std::uint32_t isPlaying = 1U << 4;
inline constexpr std::uint32_t isRecording = 1U << 5;
}  // namespace TransportFlag

/// Times are fixed-point numbers with 31 binary places.
struct TransportEvent {
  EventHeader header;
  std::uint32_t flags;
  std::int64_t songBeats;
  std::int64_t songSeconds;
  double tempo;  ///< Beats per minute.
  double tempoIncrement;
  std::int64_t loopStartBeats;
  std::int64_t loopEndBeats;
  std::int64_t loopStartSeconds;
  std::int64_t loopEndSeconds;
  std::int64_t barStart;
  std::int32_t barNumber;
  std::uint16_t beatsInBar;
  std::uint16_t beatUnit;
};

struct MidiEvent {
  EventHeader header;
  std::uint16_t port;
  std::uint8_t data[3];
};

/// Sorted by time.
struct InputEvents {
  void* context;
  std::uint32_t (*size)(const InputEvents*);
  const EventHeader* (*get)(const InputEvents*, std::uint32_t index);
};

struct OutputEvents {
  void* context;
  /// False if the list is full. Copies the event.
  bool (*tryPush)(const OutputEvents*, const EventHeader*);
};

// A block.

struct AudioBuffer {
  float** data32;
  double** data64;
  std::uint32_t channelCount;
  std::uint32_t latency;
  std::uint64_t constantMask;  ///< A bit for each channel that is constant in this block.
};

struct Process {
  std::int64_t steadyTime;
  std::uint32_t frameCount;
  const TransportEvent* transport;  ///< Null where the host has none.
  const AudioBuffer* audioInputs;
  AudioBuffer* audioOutputs;
  std::uint32_t audioInputCount;
  std::uint32_t audioOutputCount;
  const InputEvents* inEvents;
  const OutputEvents* outEvents;
};

namespace ProcessStatus {
inline constexpr std::int32_t error = 0;
inline constexpr std::int32_t proceed = 1;
inline constexpr std::int32_t tail = 3;
}  // namespace ProcessStatus

static_assert(sizeof(void*) == 8, "the layouts below are those of 64-bit systems");
static_assert(sizeof(Version) == 12 && sizeof(Host) == 88 && sizeof(Descriptor) == 88 && sizeof(Plugin) == 96);
static_assert(sizeof(Entry) == 40 && offsetof(Entry, init) == 16 && offsetof(Host, hostData) == 16);
static_assert(sizeof(EventHeader) == 16 && offsetof(EventHeader, type) == 10);
static_assert(sizeof(NoteEvent) == 40 && offsetof(NoteEvent, key) == 24 && offsetof(NoteEvent, velocity) == 32);
static_assert(sizeof(ParamEvent) == 56 && offsetof(ParamEvent, cookie) == 24 && offsetof(ParamEvent, value) == 48);
static_assert(sizeof(GestureEvent) == 20 && sizeof(MidiEvent) == 24 && offsetof(MidiEvent, data) == 18);
static_assert(sizeof(TransportEvent) == 104 && offsetof(TransportEvent, tempo) == 40);
static_assert(sizeof(AudioBuffer) == 32 && sizeof(Process) == 64 && offsetof(Process, audioInputCount) == 40);

}  // namespace tesh::bramel::clap
