// Writes MIDI name documents.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Midnam.h"

#include <cstring>
#include <memory>
#include <string>

namespace tesh::bramel::lv2 {
namespace {

constexpr int kKeys = 128;
constexpr int kChannels = 16;

std::string modelOf(const void* instance) {
  return "Sivray:" + std::to_string(reinterpret_cast<std::uintptr_t>(instance));
}

/// Escapes a text for an XML attribute.
std::string escaped(const std::string& text) {
  std::string result;
  for (const char letter : text) {
    switch (letter) {
      case '&':
        result += "&amp;";
        break;
      case '<':
        result += "&lt;";
        break;
      case '"':
        result += "&quot;";
        break;
      default:
        result += letter;
    }
  }
  return result;
}

std::string channels(const std::string& before, const std::string& after) {
  std::string result;
  for (int channel = 1; channel <= kChannels; ++channel) {
    result += before + std::to_string(channel) + after + "\n";
  }
  return result;
}

char* copyOf(const std::string& text) {
  auto copy = std::make_unique<char[]>(text.size() + 1);
  std::memcpy(copy.get(), text.c_str(), text.size() + 1);
  return copy.release();
}

}  // namespace

char* midnamOf(const vst::KeyNames* names, const void* instance) {
  if (names == nullptr) {
    return nullptr;
  }
  std::string notes;
  for (int key = 0; key < kKeys; ++key) {
    if (const std::string name = names->keyName(key); !name.empty()) {
      notes += "<Note Number=\"" + std::to_string(key) + "\" Name=\"" + escaped(name) + "\"/>\n";
    }
  }
  return copyOf(
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<!DOCTYPE MIDINameDocument PUBLIC \"-//MIDI Manufacturers Association//DTD MIDINameDocument 1.0//EN\" "
      "\"http://dev.midi.org/dtds/MIDINameDocument10.dtd\">\n"
      "<MIDINameDocument>\n<Author/>\n<MasterDeviceNames>\n"
      "<Manufacturer>TESH</Manufacturer>\n<Model>" +
      modelOf(instance) +
      "</Model>\n"
      "<CustomDeviceMode Name=\"Pads\">\n<ChannelNameSetAssignments>\n" +
      channels("<ChannelNameSetAssign Channel=\"", "\" NameSet=\"Pads\"/>") +
      "</ChannelNameSetAssignments>\n</CustomDeviceMode>\n"
      "<ChannelNameSet Name=\"Pads\">\n<AvailableForChannels>\n" +
      channels("<AvailableChannel Channel=\"", "\" Available=\"true\"/>") +
      "</AvailableForChannels>\n<UsesNoteNameList Name=\"Pads\"/>\n</ChannelNameSet>\n"
      "<NoteNameList Name=\"Pads\">\n" +
      notes + "</NoteNameList>\n</MasterDeviceNames>\n</MIDINameDocument>\n");
}

char* midnamModelOf(const void* instance) { return copyOf(modelOf(instance)); }

void freeText(char* text) { delete[] text; }

}  // namespace tesh::bramel::lv2
