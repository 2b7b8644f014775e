// Stores the setup as named values in an XML file.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/standalone/Settings.h"

#include <cmath>

namespace tesh::bramel::standalone {
namespace {

constexpr const char* kDeviceType = "soundType";
constexpr const char* kDeviceName = "soundDevice";
constexpr const char* kRate = "soundRate";
constexpr const char* kBlockKey = "soundBlock";
constexpr const char* kOutsKey = "soundOuts";
#ifdef _WIN32
constexpr const char* kMidiSwitched = "midiInputsOn";
#else
constexpr const char* kMidiSwitched = "midiInputsOff";
#endif
constexpr const char* kX = "windowX";
constexpr const char* kY = "windowY";

constexpr double kHighestRate = 1e6;
constexpr int kLongestBlock = 1 << 16;
constexpr juce::int64 kLargestState = juce::int64{64} << 20;
constexpr juce::int64 kLargestNotes = juce::int64{1} << 16;

juce::PropertiesFile::Options options() {
  constexpr int kMillisecondsUntilSaved = 500;
  juce::PropertiesFile::Options result;
  result.storageFormat = juce::PropertiesFile::storeAsXML;
  result.millisecondsBeforeSaving = kMillisecondsUntilSaved;
  return result;
}

}  // namespace

Settings::Settings(const juce::File& newFolder)
    : stateFile(newFolder.getChildFile("sound.state")),
      notesFile(newFolder.getChildFile(kTaughtNotesFile)),
      file(newFolder.getChildFile("settings.xml"), options()) {}

DeviceChoice Settings::device() const {
  DeviceChoice choice{.type = file.getValue(kDeviceType), .name = file.getValue(kDeviceName)};
  const double rate = file.getDoubleValue(kRate);
  const int block = file.getIntValue(kBlockKey);
  choice.rate = rate > 0.0 && rate < kHighestRate ? rate : 0.0;
  choice.block = block > 0 && block <= kLongestBlock ? block : 0;
  choice.hasOuts = file.getBoolValue(kOutsKey);
  return choice;
}

void Settings::setDevice(const DeviceChoice& choice) {
  file.setValue(kDeviceType, choice.type);
  file.setValue(kDeviceName, choice.name);
  file.setValue(kRate, choice.rate);
  file.setValue(kBlockKey, choice.block);
  file.setValue(kOutsKey, choice.hasOuts);
}

juce::StringArray Settings::midiNamesSwitched() const {
  return juce::StringArray::fromLines(file.getValue(kMidiSwitched));
}

void Settings::setMidiNamesSwitched(const juce::StringArray& names) {
  file.setValue(kMidiSwitched, names.joinIntoString("\n"));
}

TaughtNotes Settings::taughtNotes() const {
  if (notesFile.getSize() > kLargestNotes) {
    return {};
  }
  return readTaughtNotes(notesFile.loadFileAsString().toStdString()).notes;
}

void Settings::setTaughtNotes(const TaughtNotes& notes) {
  if (notesFile.getParentDirectory().createDirectory().wasOk()) {
    const std::string text = textOf(notes);
    notesFile.replaceWithData(text.data(), text.size());
  }
}

std::optional<juce::Point<int>> Settings::position() const {
  if (!file.containsKey(kX) || !file.containsKey(kY)) {
    return std::nullopt;
  }
  return juce::Point<int>(file.getIntValue(kX), file.getIntValue(kY));
}

void Settings::setPosition(juce::Point<int> topLeft) {
  file.setValue(kX, topLeft.x);
  file.setValue(kY, topLeft.y);
}

juce::MemoryBlock Settings::state() const {
  juce::MemoryBlock bytes;
  if (stateFile.getSize() <= kLargestState) {
    stateFile.loadFileAsData(bytes);
  }
  return bytes;
}

bool Settings::saveState(const juce::MemoryBlock& bytes) {
  const bool isSaved = file.saveIfNeeded();
  return stateFile.getParentDirectory().createDirectory().wasOk() &&
         stateFile.replaceWithData(bytes.getData(), bytes.getSize()) && isSaved;
}

}  // namespace tesh::bramel::standalone
