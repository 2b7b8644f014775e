// A minimal VST 3 host that shows a panel, written from the published interfaces: their functions in order, with
// placeholders for those that it does not call.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef _WIN32

#include <array>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <utility>

#include "EditorUnderTrial.h"
#include "platform/WideText.h"
#include "platform/WindowsApi.h"

namespace sivray::trial::vst3 {

// Not in an unnamed namespace, where the compiler would report classes that nobody implements.

using Result = std::int32_t;
constexpr Result kOk = 0;
constexpr Result kNoInterface = static_cast<Result>(0x80004002U);

struct Unknown {
  virtual Result queryInterface(const GUID& id, void** found) = 0;
  virtual std::uint32_t addRef() = 0;
  virtual std::uint32_t release() = 0;

 protected:
  ~Unknown() = default;
};

struct ClassInfo {
  GUID id;
  std::int32_t cardinality;
  std::array<char, 32> category;
  std::array<char, 64> name;
};

struct Factory : Unknown {
  virtual Result getFactoryInfo(void* info) = 0;
  virtual std::int32_t countClasses() = 0;
  virtual Result getClassInfo(std::int32_t index, ClassInfo* info) = 0;
  virtual Result createInstance(const GUID& id, const GUID& wanted, void** made) = 0;
};

struct Base : Unknown {
  virtual Result initialize(Unknown* host) = 0;
  virtual Result terminate() = 0;
};

struct Component : Base {
  virtual Result getControllerClassId(GUID* id) = 0;
};

struct ConnectionPoint : Unknown {
  virtual Result connect(ConnectionPoint* other) = 0;
  virtual Result disconnect(ConnectionPoint* other) = 0;
};

struct ViewRect {
  std::int32_t left, top, right, bottom;
};

struct View : Unknown {
  virtual Result isPlatformTypeSupported(const char* type) = 0;
  virtual Result attached(void* window, const char* type) = 0;
  virtual Result removed() = 0;
  virtual Result onWheel(float distance) = 0;
  virtual Result onKeyDown(char16_t key, std::int16_t code, std::int16_t modifiers) = 0;
  virtual Result onKeyUp(char16_t key, std::int16_t code, std::int16_t modifiers) = 0;
  virtual Result getSize(ViewRect* size) = 0;
  virtual Result onSize(ViewRect* size) = 0;
  virtual Result onFocus(std::uint8_t isFocused) = 0;
  virtual Result setFrame(Unknown* frame) = 0;
};

struct ScaledView : Unknown {
  virtual Result setContentScaleFactor(float scale) = 0;
};

struct Handler : Unknown {
  virtual Result beginEdit(std::uint32_t parameter) = 0;
  virtual Result performEdit(std::uint32_t parameter, double value) = 0;
  virtual Result endEdit(std::uint32_t parameter) = 0;
  virtual Result restartComponent(std::int32_t flags) = 0;
};

struct Frame : Unknown {
  virtual Result resizeView(View* view, ViewRect* size) = 0;
};

struct Controller : Base {
  virtual Result setComponentState(Unknown* stream) = 0;
  virtual Result setState(Unknown* stream) = 0;
  virtual Result getState(Unknown* stream) = 0;
  virtual std::int32_t getParameterCount() = 0;
  virtual Result getParameterInfo(std::int32_t index, void* info) = 0;
  virtual Result getParamStringByValue(std::uint32_t parameter, double value, char16_t* text) = 0;
  virtual Result getParamValueByString(std::uint32_t parameter, char16_t* text, double* value) = 0;
  virtual double normalizedParamToPlain(std::uint32_t parameter, double value) = 0;
  virtual double plainParamToNormalized(std::uint32_t parameter, double value) = 0;
  virtual double getParamNormalized(std::uint32_t parameter) = 0;
  virtual Result setParamNormalized(std::uint32_t parameter, double value) = 0;
  virtual Result setComponentHandler(Handler* handler) = 0;
  virtual View* createView(const char* name) = 0;
};

constexpr GUID kUnknown{0x00000000, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
constexpr GUID kComponent{0xE831FF31, 0xF2D5, 0x4301, {0x92, 0x8E, 0xBB, 0xEE, 0x25, 0x69, 0x78, 0x02}};
constexpr GUID kController{0xDCD7BBE3, 0x7742, 0x448D, {0xA8, 0x74, 0xAA, 0xCC, 0x97, 0x9C, 0x75, 0x9E}};
constexpr GUID kConnectionPoint{0x70A4156F, 0x6E6E, 0x4026, {0x98, 0x91, 0x48, 0xBF, 0xAA, 0x60, 0xD8, 0xD1}};
constexpr GUID kScaledView{0x65ED9690, 0x8AC4, 0x4525, {0x8A, 0xAD, 0xEF, 0x7A, 0x72, 0xEA, 0x70, 0x3F}};
constexpr GUID kHandler{0x93A0BEA3, 0x0BD0, 0x45DB, {0x8E, 0x89, 0x0B, 0x0C, 0xC1, 0xE4, 0x6A, 0xC6}};
constexpr GUID kFrame{0x367FAF01, 0xAFA9, 0x4693, {0x8D, 0x4D, 0xA2, 0xA0, 0xED, 0x08, 0x82, 0xA3}};

/// One of the host's objects, with a single interface. It outlives the plug-in.
template <typename Interface>
class HostObject : public Interface {
 public:
  explicit HostObject(const GUID& ownId) : id(ownId) {}

  Result queryInterface(const GUID& wanted, void** found) override {
    const bool isKnown =
        std::memcmp(&wanted, &id, sizeof(GUID)) == 0 || std::memcmp(&wanted, &kUnknown, sizeof(GUID)) == 0;
    *found = isKnown ? this : nullptr;
    return isKnown ? kOk : kNoInterface;
  }
  std::uint32_t addRef() override { return 1; }
  std::uint32_t release() override { return 1; }

 private:
  const GUID id;
};

class Moves final : public HostObject<Handler> {
 public:
  Moves() : HostObject(kHandler) {}
  Result beginEdit(std::uint32_t /*parameter*/) override { return kOk; }
  Result performEdit(std::uint32_t /*parameter*/, double /*value*/) override {
    ++count;
    return kOk;
  }
  Result endEdit(std::uint32_t /*parameter*/) override { return kOk; }
  Result restartComponent(std::int32_t /*flags*/) override { return kOk; }

  std::atomic<int> count = 0;
};

class Window final : public HostObject<Frame> {
 public:
  Window() : HostObject(kFrame) {}
  Result resizeView(View* view, ViewRect* size) override { return view->onSize(size); }
};

template <typename Interface>
Interface* as(Unknown* object, const GUID& id) {
  void* found = nullptr;
  return object != nullptr && object->queryInterface(id, &found) == kOk ? static_cast<Interface*>(found) : nullptr;
}

class Vst3UnderTrial final : public EditorUnderTrial {
 public:
  explicit Vst3UnderTrial(const std::string& path)
      : library(LoadLibraryW(tesh::bramel::platform::toWide(path).c_str())) {
    if (library == nullptr || !call<bool>("InitDll")) {
      return;
    }
    factory = call<Factory*>("GetPluginFactory");
    GUID controllerId{};
    component = makeComponent();
    if (component == nullptr || component->initialize(&host) != kOk ||
        component->getControllerClassId(&controllerId) != kOk) {
      return;
    }
    controller = make<Controller>(controllerId, kController);
    if (controller != nullptr) {
      controller->initialize(&host);
      controller->setComponentHandler(&moves);
      connect();
    }
  }

  ~Vst3UnderTrial() override {
    closeInstance();
    if (factory != nullptr) {
      factory->release();
      call<bool>("ExitDll");
    }
    if (library != nullptr) {
      FreeLibrary(library);
    }
  }

  bool isThere() const override { return controller != nullptr; }

  void closeInstance() override {
    closeEditor();
    for (ConnectionPoint* const end : ends) {
      if (end != nullptr) {
        end->disconnect(end == ends[0] ? ends[1] : ends[0]);
      }
    }
    for (ConnectionPoint*& end : ends) {
      drop(end);
    }
    for (Base* const part : {static_cast<Base*>(controller), static_cast<Base*>(component)}) {
      if (part != nullptr) {
        part->terminate();
      }
    }
    drop(controller);
    drop(component);
  }

  void openEditor(void* window) override {
    view = controller->createView("editor");
    if (view != nullptr) {
      view->setFrame(&frame);
      view->attached(window, "HWND");
    }
  }

  void closeEditor() override {
    if (view != nullptr) {
      view->setFrame(nullptr);
      view->removed();
      drop(view);
    }
  }

  bool setScale(float scale) override {
    ScaledView* scaled = as<ScaledView>(view, kScaledView);
    const bool isTaken = scaled != nullptr && scaled->setContentScaleFactor(scale) == kOk;
    drop(scaled);
    return isTaken;
  }

  int takeMoves() override { return moves.count.exchange(0); }

 private:
  template <typename Answer>
  Answer call(const char* name) {
    const auto function = reinterpret_cast<Answer (*)()>(reinterpret_cast<void*>(GetProcAddress(library, name)));
    return function == nullptr ? Answer() : function();
  }

  template <typename Interface>
  static void drop(Interface*& object) {
    if (object != nullptr) {
      std::exchange(object, nullptr)->release();
    }
  }

  template <typename Interface>
  Interface* make(const GUID& id, const GUID& wanted) {
    void* made = nullptr;
    return factory->createInstance(id, wanted, &made) == kOk ? static_cast<Interface*>(made) : nullptr;
  }

  Component* makeComponent() {
    for (std::int32_t index = 0; factory != nullptr && index < factory->countClasses(); ++index) {
      ClassInfo info{};
      if (factory->getClassInfo(index, &info) == kOk && std::strcmp(info.category.data(), "Audio Module Class") == 0) {
        return make<Component>(info.id, kComponent);
      }
    }
    return nullptr;
  }

  void connect() {
    ends = {as<ConnectionPoint>(component, kConnectionPoint), as<ConnectionPoint>(controller, kConnectionPoint)};
    if (ends[0] != nullptr && ends[1] != nullptr) {
      ends[0]->connect(ends[1]);
      ends[1]->connect(ends[0]);
    }
  }

  HMODULE library = nullptr;
  HostObject<Unknown> host{kUnknown};
  Moves moves;
  Window frame;
  Factory* factory = nullptr;
  Component* component = nullptr;
  Controller* controller = nullptr;
  std::array<ConnectionPoint*, 2> ends{};  ///< Of component and controller.
  View* view = nullptr;
};

}  // namespace sivray::trial::vst3

namespace sivray::trial {

std::unique_ptr<EditorUnderTrial> loadVst3(const std::string& path) {
  return std::make_unique<vst3::Vst3UnderTrial>(path);
}

}  // namespace sivray::trial

#endif
