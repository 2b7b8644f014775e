// Opens, watches and replaces the device. A sound server's device may vanish or change its rate without notice, so the
// device is checked once a second.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/standalone/SoundDevice.h"

#include <algorithm>
#include <array>
#include <utility>

#include "core/EngineRate.h"
#include "host/shell/OutNames.h"
#include "host/standalone/JackMidi.h"

#ifdef __linux__
namespace juce {
StringArray& getJackMoreOutputs();  // In JUCE's patched file; holds for devices made afterwards.
}
#endif

namespace tesh::bramel::standalone {
namespace {

constexpr const char* kServerOfPorts = "JACK";

#ifdef __linux__
void setMoreOutputs(bool hasOuts) {
  juce::StringArray names;
  for (std::size_t out = 1; hasOuts && out < vst::kOutCount; ++out) {
    names.addArray({vst::outName(out) + " L", vst::outName(out) + " R"});
  }
  juce::getJackMoreOutputs() = names;
}
int moreOutputs() { return juce::getJackMoreOutputs().size(); }
#else
void setMoreOutputs(bool /*hasOuts*/) {}
int moreOutputs() { return 0; }
#endif

constexpr int kWatchMilliseconds = 1000;
/// Longer, because asking all of the system's device types takes some milliseconds.
constexpr int kSearchMilliseconds = 3000;
/// At the first check, a device that has stopped may still be inside its last callback.
constexpr int kLooksUntilLost = 2;
constexpr int kLooksUntilSilent = 3;
/// For a device without a preference: short enough for playing, long enough for an ordinary desktop.
constexpr int kUsualBlock = 256;
constexpr std::array<int, 9> kBlocks{32, 48, 64, 96, 128, 256, 512, 1024, 2048};
constexpr int kDeviceChannels = 2;

/// The wanted rate if the device has it, else its first rate of 44100 Hz or more: most devices have the engine's own
/// rate.
double rateFor(juce::AudioIODevice& device, double wanted) {
  using cofu::core::kEngineRate;
  const auto rates = device.getAvailableSampleRates();
  if (rates.contains(wanted) || rates.isEmpty()) {
    return wanted;
  }
  const auto* const found = std::find_if(rates.begin(), rates.end(), [](double rate) { return rate >= kEngineRate; });
  return found == rates.end() ? rates.getLast() : *found;
}

juce::String hertz(double rate) { return juce::String(juce::roundToInt(rate)) + " Hz"; }

}  // namespace

int SoundDevice::moreOutputsOf(const juce::AudioIODevice& device) {
  return device.getTypeName() == kServerOfPorts ? moreOutputs() : 0;
}

SoundDevice::Types SoundDevice::systemTypes() {
  Types types;
  for (juce::AudioIODeviceType* const type : {
           juce::AudioIODeviceType::createAudioIODeviceType_JACK(),
           juce::AudioIODeviceType::createAudioIODeviceType_ALSA(),
           juce::AudioIODeviceType::createAudioIODeviceType_WASAPI(juce::WASAPIDeviceMode::sharedLowLatency),
           juce::AudioIODeviceType::createAudioIODeviceType_WASAPI(juce::WASAPIDeviceMode::shared),
           juce::AudioIODeviceType::createAudioIODeviceType_DirectSound(),
       }) {
    if (type != nullptr) {
      types.emplace_back(type);
    }
  }
  return types;
}

SoundDevice::SoundDevice(juce::AudioIODeviceCallback& player, std::function<std::uint64_t()> countBlocks,
                         MakeTypes makeTypes)
    : callback(player), blockCount(std::move(countBlocks)), typeMaker(std::move(makeTypes)) {}

SoundDevice::~SoundDevice() {
  onChange = nullptr;
  close();
}

void SoundDevice::open(const DeviceChoice& wanted) {
  wantedChoice = wanted;
  wasLost = false;
  close();
  openAny();
}

void SoundDevice::openAny() {
  available();
  lastError.clear();
  const bool isOpened = openWanted() || openDefault();
  startTimer(isOpened ? kWatchMilliseconds : kSearchMilliseconds);
  tell();
}

bool SoundDevice::openWanted() {
  return std::any_of(types.begin(), types.end(), [this](const auto& type) {
    return type->getTypeName() == wantedChoice.type && tryToOpen(*type, wantedChoice);
  });
}

bool SoundDevice::openDefault() {
  return std::any_of(types.begin(), types.end(), [this](const auto& type) {
    const auto names = type->getDeviceNames(false);
    // JACK lists its clients in the order in which they appeared; its sound card is the one named "system".
    const int index = names.contains("system") ? names.indexOf("system") : type->getDefaultDeviceIndex(false);
    return juce::isPositiveAndBelow(index, names.size()) &&
           tryToOpen(*type, {.type = type->getTypeName(), .name = names[index]});
  });
}

bool SoundDevice::tryToOpen(juce::AudioIODeviceType& type, const DeviceChoice& choice) {
  if (!type.getDeviceNames(false).contains(choice.name)) {
    return false;
  }
  setMoreOutputs(choice.hasOuts && choice.type == kServerOfPorts);
  std::unique_ptr<juce::AudioIODevice> opened(type.createDevice(choice.name, {}));
  if (opened == nullptr) {
    return false;
  }
  juce::BigInteger channels;
  channels.setRange(0, std::min(kDeviceChannels, opened->getOutputChannelNames().size()), true);
  const int block = choice.block > 0 ? choice.block : kUsualBlock;
  const juce::String error = opened->open({}, channels, rateFor(*opened, choice.rate), block);
  if (error.isNotEmpty() || !opened->isOpen()) {
    lastError = choice.name + " (" + choice.type + ") does not open" + (error.isEmpty() ? "" : ": " + error);
    return false;
  }
  device = std::move(opened);
  isAnswering = true;
  looksWithoutBlocks = 0;
  looksWithoutPlaying = 0;
  seenBlocks = blockCount();
  wasLost = false;
  device->start(&callback);
  openChoice = {.type = choice.type,
                .name = choice.name,
                .rate = device->getCurrentSampleRate(),
                .block = device->getCurrentBufferSizeSamples(),
                .hasOuts = moreOutputsOf(*device) > 0};
  return true;
}

void SoundDevice::close() {
  if (device != nullptr) {
    device->stop();
    device->close();
    device.reset();
  }
  openChoice = {};
}

DeviceChoice SoundDevice::current() const { return openChoice; }

juce::String SoundDevice::describe() const {
  if (device != nullptr && isAnswering) {
    return openChoice.type + ": " + openChoice.name + ", " + hertz(openChoice.rate) + ", " +
           juce::String(openChoice.block) + " frames" + (openChoice.hasOuts ? ", an out for each pad" : "");
  }
  if (device != nullptr) {
    return "No sound: " + openChoice.type + " does not answer";
  }
  if (wasLost) {
    return "The sound device is gone. Looking for another";
  }
  return lastError.isEmpty() ? "No sound device found. Still looking" : "No sound: " + lastError;
}

std::vector<DeviceChoice> SoundDevice::available() {
  // Destroyed before new ones are made: ALSA's type silences the library's error messages, and ends that in its
  // destructor.
  if (device != nullptr) {
    std::move(types.begin(), types.end(), std::back_inserter(olderTypes));
  } else {
    olderTypes.clear();
  }
  types.clear();
  types = typeMaker();
#ifdef __linux__
  constexpr bool canHaveOuts = true;
#else
  constexpr bool canHaveOuts = false;
#endif
  std::vector<DeviceChoice> choices;
  std::vector<DeviceChoice> withOuts;
  for (const auto& type : types) {
    type->scanForDevices();
    for (const auto& name : type->getDeviceNames(false)) {
      if (name == kJackMidiClient) {
        continue;  // JACK lists every client that has inputs.
      }
      choices.push_back({.type = type->getTypeName(), .name = name});
      if (canHaveOuts && type->getTypeName() == kServerOfPorts) {
        withOuts.push_back({.type = type->getTypeName(), .name = name, .hasOuts = true});
      }
    }
  }
  choices.insert(choices.end(), withOuts.begin(), withOuts.end());
  return choices;
}

std::vector<double> SoundDevice::rates() const {
  std::vector<double> result;
  if (device != nullptr) {
    const auto rates = device->getAvailableSampleRates();
    result.assign(rates.begin(), rates.end());
  }
  return result;
}

std::vector<int> SoundDevice::blocks() const {
  std::vector<int> result;
  if (device != nullptr) {
    const auto sizes = device->getAvailableBufferSizes();
    std::copy_if(sizes.begin(), sizes.end(), std::back_inserter(result), [&](int size) {
      return size == openChoice.block || std::find(kBlocks.begin(), kBlocks.end(), size) != kBlocks.end();
    });
  }
  return result;
}

void SoundDevice::look() {
  if (device == nullptr) {
    openAny();
  } else {
    watch();
  }
}

void SoundDevice::watch() {
  looksWithoutPlaying = device->isPlaying() ? 0 : looksWithoutPlaying + 1;
  if (looksWithoutPlaying >= kLooksUntilLost) {
    close();
    wasLost = true;
    openAny();
    return;
  }
  const std::uint64_t count = blockCount();
  looksWithoutBlocks = count == std::exchange(seenBlocks, count) ? looksWithoutBlocks + 1 : 0;
  if (std::exchange(isAnswering, looksWithoutBlocks < kLooksUntilSilent) != isAnswering) {
    tell();
  }
  followServer();
}

void SoundDevice::followServer() {
  const double rate = device->getCurrentSampleRate();
  const int block = device->getCurrentBufferSizeSamples();
  if ((rate == openChoice.rate && block == openChoice.block) || rate <= 0.0 || block <= 0) {
    return;
  }
  openChoice.rate = rate;
  openChoice.block = block;
  device->stop();
  device->start(&callback);
  tell();
}

void SoundDevice::tell() {
  if (onChange) {
    onChange();
  }
}

}  // namespace tesh::bramel::standalone
