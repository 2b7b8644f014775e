// The VST 3 bundle in a minimal host: its text for plug-in scanners, its outputs, and the names of its keys.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>

#include <picojson.h>
#include <pluginterfaces/base/ipluginbase.h>
#include <pluginterfaces/vst/ivstaudioprocessor.h>
#include <pluginterfaces/vst/ivstcomponent.h>
#include <pluginterfaces/vst/ivsteditcontroller.h>
#include <pluginterfaces/vst/ivstevents.h>
#include <pluginterfaces/vst/ivstmessage.h>
#include <pluginterfaces/vst/ivstunits.h>

namespace {

using namespace Steinberg;

/// A reference to one of the plug-in's objects, released in the destructor.
template <typename T>
class Held {
 public:
  Held() = default;
  Held(FUnknown* from, const TUID& iid) {
    if (from == nullptr || from->queryInterface(iid, reinterpret_cast<void**>(&object)) != kResultOk) {
      object = nullptr;
    }
  }
  Held(IPluginFactory& factory, const TUID& classId, const TUID& iid) {
    if (factory.createInstance(classId, iid, reinterpret_cast<void**>(&object)) != kResultOk) {
      object = nullptr;
    }
  }
  ~Held() {
    if (object != nullptr) {
      object->release();
    }
  }
  Held(const Held&) = delete;
  Held& operator=(const Held&) = delete;
  T* operator->() const { return object; }
  T* get() const { return object; }

 private:
  T* object = nullptr;
};

/// Counts the reports about the program list. Hosts may be called on their own thread only.
class Host final : public Vst::IComponentHandler, public Vst::IUnitHandler {
 public:
  tresult PLUGIN_API beginEdit(Vst::ParamID) override { return kResultOk; }
  tresult PLUGIN_API performEdit(Vst::ParamID, Vst::ParamValue) override { return kResultOk; }
  tresult PLUGIN_API endEdit(Vst::ParamID) override { return kResultOk; }
  tresult PLUGIN_API restartComponent(int32) override {
    isInside = true;
    for (int tries = 0; tries < kTries && isAwaited; ++tries) {
      std::this_thread::sleep_for(kBetween);
    }
    std::this_thread::sleep_for(5 * kBetween);
    isInside = false;
    return kResultOk;
  }
  tresult PLUGIN_API notifyUnitSelection(Vst::UnitID) override { return kResultOk; }
  tresult PLUGIN_API notifyProgramListChange(Vst::ProgramListID list, int32 program) override {
    toldList = list;
    toldProgram = program;
    isToldByOthers = isToldByOthers || std::this_thread::get_id() != ownThread;
    ++told;
    return kResultOk;
  }
  tresult PLUGIN_API queryInterface(const TUID iid, void** object) override {
    *object = std::memcmp(iid, Vst::IUnitHandler_iid, sizeof(TUID)) == 0
                  ? static_cast<void*>(static_cast<Vst::IUnitHandler*>(this))
              : std::memcmp(iid, Vst::IComponentHandler_iid, sizeof(TUID)) == 0
                  ? static_cast<void*>(static_cast<Vst::IComponentHandler*>(this))
                  : nullptr;
    return *object == nullptr ? kNoInterface : kResultOk;
  }
  uint32 PLUGIN_API addRef() override { return 1; }
  uint32 PLUGIN_API release() override { return 1; }

  /// Returns whether the plug-in reports a change within 30 s, while the host sets one value again and again.
  bool hears(int before, Vst::IEditController& controller, Vst::ParamID parameter) const {
    for (int tries = 0; tries < kTries && told == before; ++tries) {
      std::this_thread::sleep_for(kBetween);
      controller.setParamNormalized(parameter, controller.getParamNormalized(parameter));
    }
    return told > before;
  }

  /// Sets a value. Returns whether the plug-in calls the host within 30 s; that call has not returned yet.
  bool isCalledFor(Vst::IEditController& controller, Vst::ParamID parameter, double value) {
    isAwaited = true;
    controller.setParamNormalized(parameter, value);
    for (int tries = 0; tries < kTries && !isInside; ++tries) {
      std::this_thread::sleep_for(kBetween);
    }
    isAwaited = false;
    return isInside;
  }

  static constexpr int kTries = 3000;
  static constexpr std::chrono::milliseconds kBetween{10};
  const std::thread::id ownThread = std::this_thread::get_id();
  std::atomic<bool> isToldByOthers = false;
  std::atomic<bool> isInside = false;
  std::atomic<bool> isAwaited = false;
  std::atomic<int> told = 0;
  std::atomic<int> toldList = 0;
  std::atomic<int> toldProgram = -1;
};

/// An event list with one note on the first pad.
class OneNote final : public Vst::IEventList {
 public:
  int32 PLUGIN_API getEventCount() override { return 1; }
  tresult PLUGIN_API getEvent(int32 /*index*/, Vst::Event& event) override {
    event = {};
    event.type = Vst::Event::kNoteOnEvent;
    event.noteOn.pitch = 36;
    event.noteOn.velocity = 0.8F;
    return kResultOk;
  }
  tresult PLUGIN_API addEvent(Vst::Event& /*event*/) override { return kResultFalse; }
  tresult PLUGIN_API queryInterface(const TUID /*iid*/, void** object) override {
    *object = nullptr;
    return kNoInterface;
  }
  uint32 PLUGIN_API addRef() override { return 1; }
  uint32 PLUGIN_API release() override { return 1; }
};

std::string narrow(const Vst::TChar* text) {
  std::string result;
  for (; *text != 0; ++text) {
    result += static_cast<char>(*text);
  }
  return result;
}

class Vst3Bundle : public testing::Test {
 protected:
  Vst3Bundle() {
    library = ::dlopen(SIVRAY_VST3_MODULE, RTLD_NOW | RTLD_LOCAL);
    if (library != nullptr) {
      reinterpret_cast<bool (*)(void*)>(::dlsym(library, "ModuleEntry"))(library);
      factory = reinterpret_cast<GetFactoryProc>(::dlsym(library, "GetPluginFactory"))();
    }
  }
  ~Vst3Bundle() override {
    if (library != nullptr) {
      factory->release();
      reinterpret_cast<bool (*)()>(::dlsym(library, "ModuleExit"))();
      ::dlclose(library);
    }
  }
  Vst3Bundle(const Vst3Bundle&) = delete;
  Vst3Bundle& operator=(const Vst3Bundle&) = delete;

  void SetUp() override { ASSERT_NE(library, nullptr) << ::dlerror(); }

  void* library = nullptr;
  IPluginFactory* factory = nullptr;
};

TEST_F(Vst3Bundle, SaysToScannersWhatItsFactorySays) {
  std::ifstream file(SIVRAY_VST3_TEXT);
  picojson::value text;
  ASSERT_EQ(picojson::parse(text, file), "");
  PFactoryInfo maker;
  ASSERT_EQ(factory->getFactoryInfo(&maker), kResultOk);
  const auto& about = text.get("Factory Info");
  EXPECT_EQ(about.get("Vendor").get<std::string>(), maker.vendor);
  EXPECT_EQ(about.get("Flags").get("Unicode").get<bool>(), (maker.flags & PFactoryInfo::kUnicode) != 0);

  const auto& classes = text.get("Classes").get<picojson::array>();
  ASSERT_EQ(static_cast<int32>(classes.size()), factory->countClasses());
  const Held<IPluginFactory2> named(factory, IPluginFactory2_iid);
  for (int32 index = 0; index < factory->countClasses(); ++index) {
    PClassInfo2 info;
    ASSERT_EQ(named->getClassInfo2(index, &info), kResultOk);
    const auto& told = classes[static_cast<std::size_t>(index)];
    std::string id;
    for (const char byte : info.cid) {
      constexpr const char* kDigits = "0123456789ABCDEF";
      id += {kDigits[static_cast<std::uint8_t>(byte) >> 4U], kDigits[static_cast<std::uint8_t>(byte) & 15U]};
    }
    EXPECT_EQ(told.get("CID").get<std::string>(), id);
    EXPECT_EQ(told.get("Category").get<std::string>(), info.category);
    EXPECT_EQ(told.get("Name").get<std::string>(), info.name);
    EXPECT_EQ(told.get("Vendor").get<std::string>(), info.vendor);
    EXPECT_EQ(told.get("Version").get<std::string>(), info.version);
    EXPECT_EQ(told.get("SDKVersion").get<std::string>(), info.sdkVersion);
    EXPECT_EQ(told.get("Class Flags").get<double>(), info.classFlags);
    std::string categories;
    for (const auto& category : told.get("Sub Categories").get<picojson::array>()) {
      categories += (categories.empty() ? "" : "|") + category.get<std::string>();
    }
    EXPECT_EQ(categories, info.subCategories);
  }
}

TEST_F(Vst3Bundle, RendersAnySetOfItsNineFurtherOuts) {
  PClassInfo info;
  ASSERT_EQ(factory->getClassInfo(0, &info), kResultOk);
  Host host;
  const Held<Vst::IComponent> component(*factory, info.cid, Vst::IComponent_iid);
  ASSERT_EQ(component->initialize(static_cast<Vst::IComponentHandler*>(&host)), kResultOk);
  {
    const Held<Vst::IAudioProcessor> processor(component.get(), Vst::IAudioProcessor_iid);
    ASSERT_EQ(component->getBusCount(Vst::kAudio, Vst::kOutput), 10);
    for (int32 index = 0; index < 10; ++index) {
      Vst::BusInfo bus;
      ASSERT_EQ(component->getBusInfo(Vst::kAudio, Vst::kOutput, index, bus), kResultOk);
      EXPECT_EQ(bus.channelCount, 2);
      EXPECT_EQ((bus.flags & Vst::BusInfo::kDefaultActive) != 0, index == 0);
      EXPECT_EQ(narrow(bus.name), index == 0 ? "Main" : index == 9 ? "Effect" : "Pad " + std::to_string(index));
    }
    constexpr int32 kBlock = 256;
    for (const unsigned set : {0x001U, 0x3FFU, 0x203U, 0x009U}) {
      for (int32 index = 0; index < 10; ++index) {
        component->activateBus(Vst::kAudio, Vst::kOutput, index, (set >> index & 1U) != 0);
      }
      Vst::ProcessSetup setup{Vst::kRealtime, Vst::kSample32, kBlock, 48000.0};
      ASSERT_EQ(processor->setupProcessing(setup), kResultOk);
      ASSERT_EQ(component->setActive(true), kResultOk);
      processor->setProcessing(true);
      std::array<std::array<float, kBlock>, 20> samples{};
      std::array<float*, 20> channels{};
      std::array<Vst::AudioBusBuffers, 10> buses;
      for (std::size_t channel = 0; channel < channels.size(); ++channel) {
        samples[channel].fill(9.0F);
        channels[channel] = samples[channel].data();
        buses[channel / 2].numChannels = 2;
        buses[channel / 2].channelBuffers32 = &channels[channel / 2 * 2];
      }
      OneNote note;
      Vst::ProcessData data;
      data.numSamples = kBlock;
      data.symbolicSampleSize = Vst::kSample32;
      data.numOutputs = static_cast<int32>(buses.size());
      data.outputs = buses.data();
      data.inputEvents = &note;
      ASSERT_EQ(processor->process(data), kResultOk);
      for (std::size_t bus = 0; bus < buses.size(); ++bus) {
        const bool isOn = (set >> bus & 1U) != 0;
        const auto& left = samples[2 * bus];
        const bool isHeard = std::any_of(left.begin(), left.end(), [](float x) { return x != 0.0F && x != 9.0F; });
        EXPECT_EQ(isHeard, isOn && bus <= 1) << "out " << bus << " of " << set;
        EXPECT_EQ(left[100] == 9.0F, !isOn) << "out " << bus << " of " << set;
      }
      processor->setProcessing(false);
      component->setActive(false);
    }
  }
  component->terminate();
}

TEST_F(Vst3Bundle, NamesTheKeysOfThePresentKitAndTellsOfAnotherSampleAndKit) {
  PClassInfo info;
  ASSERT_EQ(factory->getClassInfo(0, &info), kResultOk);
  Host host;
  const Held<Vst::IComponent> component(*factory, info.cid, Vst::IComponent_iid);
  ASSERT_EQ(component->initialize(static_cast<Vst::IComponentHandler*>(&host)), kResultOk);
  TUID controllerId;
  ASSERT_EQ(component->getControllerClassId(controllerId), kResultOk);
  const Held<Vst::IEditController> controller(*factory, controllerId, Vst::IEditController_iid);
  ASSERT_EQ(controller->initialize(static_cast<Vst::IComponentHandler*>(&host)), kResultOk);
  Vst::ParamID kit = 0;
  {
    const Held<Vst::IConnectionPoint> componentEnd(component.get(), Vst::IConnectionPoint_iid);
    const Held<Vst::IConnectionPoint> controllerEnd(controller.get(), Vst::IConnectionPoint_iid);
    componentEnd->connect(controllerEnd.get());
    controllerEnd->connect(componentEnd.get());
    controller->setComponentHandler(&host);
    const Held<Vst::IUnitInfo> units(controller.get(), Vst::IUnitInfo_iid);
    Vst::ProgramListInfo list;
    ASSERT_EQ(units->getProgramListInfo(0, list), kResultOk);
    const auto nameOf = [&](int32 program, int key) {
      Vst::String128 name{};
      return units->getProgramPitchName(list.id, program, static_cast<int16>(key), name) == kResultOk ? narrow(name)
                                                                                                      : "";
    };
    EXPECT_EQ(units->hasProgramPitchNames(list.id, 0), kResultTrue);
    EXPECT_NE(units->hasProgramPitchNames(list.id, 1), kResultTrue) << "not of a kit that is not selected";
    EXPECT_NE(units->hasProgramPitchNames(list.id + 1, 0), kResultTrue);
    for (int key = 36; key < 44; ++key) {
      EXPECT_NE(nameOf(0, key), "") << key;
    }
    EXPECT_EQ(nameOf(0, 35) + nameOf(0, 44) + nameOf(0, -1) + nameOf(0, 128), "");

    Vst::ParameterInfo parameter;
    for (int32 index = 0; index < controller->getParameterCount(); ++index) {
      controller->getParameterInfo(index, parameter);
      if (narrow(parameter.title) == "P1 Sample") {
        break;
      }
    }
    ASSERT_EQ(narrow(parameter.title), "P1 Sample");
    const std::string before = nameOf(0, 36);
    int told = host.told;
    controller->setParamNormalized(parameter.id, 0.5);
    EXPECT_TRUE(host.hears(told, *controller.get(), parameter.id));
    EXPECT_EQ(host.toldList, list.id);
    EXPECT_EQ(host.toldProgram, 0);
    EXPECT_NE(nameOf(0, 36), before);

    told = host.told;
    controller->setParamNormalized(static_cast<Vst::ParamID>(list.id), 1.0);
    EXPECT_TRUE(host.hears(told, *controller.get(), parameter.id));
    EXPECT_EQ(host.toldProgram, list.programCount - 1);
    EXPECT_NE(nameOf(list.programCount - 1, 36), "");
    EXPECT_FALSE(host.isToldByOthers);

    kit = static_cast<Vst::ParamID>(list.id);
    EXPECT_TRUE(host.isCalledFor(*controller.get(), kit, 0.0));
    controller->setComponentHandler(nullptr);
    EXPECT_FALSE(host.isInside) << "of a handler that was taken back";
    controller->setComponentHandler(&host);
    componentEnd->disconnect(controllerEnd.get());
    controllerEnd->disconnect(componentEnd.get());
  }
  EXPECT_TRUE(host.isCalledFor(*controller.get(), kit, 1.0));
  controller->terminate();
  EXPECT_FALSE(host.isInside) << "of an instance that was ended";
  component->terminate();
}

}  // namespace
