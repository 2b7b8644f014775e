// The LV2 bundle in a minimal host, which reads the names of keys as Ardour does, and listens to single outputs.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include <lv2/atom/forge.h>
#include <lv2/core/lv2.h>
#include <lv2/midi/midi.h>
#include <lv2/patch/patch.h>
#include <lv2/urid/urid.h>

#include "Midnam.h"

namespace {

using tesh::bramel::lv2::MidnamInterface;
using tesh::bramel::lv2::MidnamUpdate;

constexpr int kFrames = 256;

constexpr std::uint32_t kMainChannels = 2;
constexpr std::uint32_t kAllChannels = 20;

class Lv2Host {
 public:
  /// The plug-in with one output (number 0) or with ten (number 1).
  explicit Lv2Host(std::uint32_t number = 0) {
    library = ::dlopen(SIVRAY_LV2_MODULE, RTLD_NOW | RTLD_LOCAL);
    const auto find = library == nullptr ? nullptr : ::dlsym(library, "lv2_descriptor");
    descriptor = find == nullptr ? nullptr : reinterpret_cast<LV2_Descriptor_Function>(find)(number);
    if (descriptor == nullptr) {
      return;
    }
    const std::array<const LV2_Feature*, 3> features{&mapFeature, &updateFeature, nullptr};
    instance = descriptor->instantiate(descriptor, 48000.0, SIVRAY_LV2_BUNDLE, features.data());
    ::lv2_atom_forge_init(&forge, &map);
    const std::uint32_t channels = number == 0 ? kMainChannels : kAllChannels;
    for (std::uint32_t port = 0; port < channels; ++port) {
      descriptor->connect_port(instance, port, audio[port].data());
    }
    descriptor->connect_port(instance, channels, input.data());
    descriptor->connect_port(instance, channels + 1, output.data());
    descriptor->activate(instance);
  }
  ~Lv2Host() {
    if (descriptor != nullptr) {
      descriptor->deactivate(instance);
      descriptor->cleanup(instance);
    }
    if (library != nullptr) {
      ::dlclose(library);
    }
  }
  Lv2Host(const Lv2Host&) = delete;
  Lv2Host& operator=(const Lv2Host&) = delete;

  std::string address() const { return descriptor->URI; }
  void disconnect(std::uint32_t port) { descriptor->connect_port(instance, port, nullptr); }
  const std::array<float, kFrames>& channel(std::size_t port) const { return audio[port]; }

  /// Renders a block that begins with a note.
  void strike(std::uint8_t note) {
    struckNote = note;
    run();
    struckNote = 0;
  }

  /// Renders a block, in which a parameter gets a value if `parameter` is not empty.
  void run(const std::string& parameter = {}, float value = 0.0F) {
    ::lv2_atom_forge_set_buffer(&forge, reinterpret_cast<std::uint8_t*>(input.data()), sizeof(input));
    LV2_Atom_Forge_Frame sequence;
    ::lv2_atom_forge_sequence_head(&forge, &sequence, 0);
    if (struckNote != 0) {
      const std::array<std::uint8_t, 3> message{0x90, struckNote, 100};
      ::lv2_atom_forge_frame_time(&forge, 0);
      ::lv2_atom_forge_atom(&forge, message.size(), numberOf(LV2_MIDI__MidiEvent));
      ::lv2_atom_forge_write(&forge, message.data(), message.size());
    }
    if (!parameter.empty()) {
      LV2_Atom_Forge_Frame object;
      ::lv2_atom_forge_frame_time(&forge, 0);
      ::lv2_atom_forge_object(&forge, &object, 0, numberOf(LV2_PATCH__Set));
      ::lv2_atom_forge_key(&forge, numberOf(LV2_PATCH__property));
      ::lv2_atom_forge_urid(&forge, numberOf(parameter.c_str()));
      ::lv2_atom_forge_key(&forge, numberOf(LV2_PATCH__value));
      ::lv2_atom_forge_float(&forge, value);
      ::lv2_atom_forge_pop(&forge, &object);
    }
    ::lv2_atom_forge_pop(&forge, &sequence);
    reinterpret_cast<LV2_Atom*>(output.data())->size = sizeof(output) - sizeof(LV2_Atom);
    descriptor->run(instance, kFrames);
  }

  std::string text(char* (*MidnamInterface::*ask)(void*)) const {
    const auto* const names =
        static_cast<const MidnamInterface*>(descriptor->extension_data(tesh::bramel::lv2::kMidnamInterface));
    if (names == nullptr) {
      return {};
    }
    char* const given = (names->*ask)(instance);
    std::string copy = given == nullptr ? "" : given;
    names->freeText(given);
    return copy;
  }

  /// Returns the name of a key in the document; empty if it has none.
  std::string nameOf(int key) const {
    const std::string document = text(&MidnamInterface::midnam);
    const std::string mark = "<Note Number=\"" + std::to_string(key) + "\" Name=\"";
    const std::size_t at = document.find(mark);
    return at == std::string::npos
               ? ""
               : document.substr(at + mark.size(), document.find('"', at + mark.size()) - at - mark.size());
  }

  void* instance = nullptr;
  int updates = 0;

 private:
  LV2_URID numberOf(const char* address) {
    for (std::size_t index = 0; index < addresses.size(); ++index) {
      if (addresses[index] == address) {
        return static_cast<LV2_URID>(index + 1);
      }
    }
    addresses.emplace_back(address);
    return static_cast<LV2_URID>(addresses.size());
  }

  void* library = nullptr;
  const LV2_Descriptor* descriptor = nullptr;
  std::vector<std::string> addresses;
  LV2_URID_Map map{this,
                   [](void* host, const char* address) { return static_cast<Lv2Host*>(host)->numberOf(address); }};
  MidnamUpdate update{this, [](void* host) { ++static_cast<Lv2Host*>(host)->updates; }};
  LV2_Feature mapFeature{LV2_URID__map, &map};
  LV2_Feature updateFeature{tesh::bramel::lv2::kMidnamUpdate, &update};
  LV2_Atom_Forge forge{};
  std::uint8_t struckNote = 0;
  std::array<std::array<float, kFrames>, kAllChannels> audio{};
  alignas(8) std::array<char, 32768> input{};
  alignas(8) std::array<char, 32768> output{};
};

TEST(Lv2Bundle, NamesTheKeysOfItsPadsAndTellsOfAnotherSample) {
  Lv2Host host;
  ASSERT_NE(host.instance, nullptr);
  for (int key = 0; key < 128; ++key) {
    EXPECT_EQ(host.nameOf(key).empty(), key < 36 || key > 43) << key;
  }
  const std::string model = host.text(&MidnamInterface::model);
  EXPECT_NE(host.text(&MidnamInterface::midnam).find("<Model>" + model + "</Model>"), std::string::npos);
  EXPECT_NE(Lv2Host().text(&MidnamInterface::model), model) << "each instance has names of its own";

  host.run();
  host.updates = 0;
  host.run("urn:tesh:sivray:macro1", 0.25F);
  EXPECT_EQ(host.updates, 0) << "a level is no name";
  const std::string before = host.nameOf(36);
  host.run("urn:tesh:sivray:macro0", 0.5F);
  EXPECT_EQ(host.updates, 1);
  EXPECT_NE(host.nameOf(36), before);
  host.run();
  EXPECT_EQ(host.updates, 1);
}

TEST(Lv2Bundle, HasASecondPlugInWithAnOutForEachPad) {
  Lv2Host main;
  Lv2Host host(1);
  EXPECT_EQ(main.address(), "urn:tesh:sivray");
  ASSERT_EQ(host.address(), "urn:tesh:sivray:outs");
  host.disconnect(4 * 2);
  host.disconnect(4 * 2 + 1);
  for (int block = 0; block < 20; ++block) {
    for (Lv2Host* const each : {&main, &host}) {
      block % 4 == 0 ? each->strike(36) : each->run();
    }
    ASSERT_EQ(host.channel(0), main.channel(0)) << block;
    ASSERT_EQ(host.channel(1), main.channel(1)) << block;
  }
  const auto isHeard = [&host](std::size_t port) {
    return std::any_of(host.channel(port).begin(), host.channel(port).end(), [](float x) { return x != 0.0F; });
  };
  EXPECT_TRUE(isHeard(0) && isHeard(2) && isHeard(3));
  for (std::size_t port = 4; port < 18; ++port) {
    EXPECT_FALSE(isHeard(port)) << port;
  }
}

}  // namespace
