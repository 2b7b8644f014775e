// Connects devices, keys, demo, strip and setup.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/standalone/Standalone.h"

#include <algorithm>
#include <cstdio>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

#include "host/client/ClientParameter.h"
#include "host/client/SivrayProcessor.h"
#include "host/client/SivrayProcessorEditor.h"
#include "host/shell/Construction.h"
#include "host/shell/MissingSounds.h"
#include "host/standalone/Audition.h"
#include "host/standalone/DemoKits.h"
#include "host/standalone/Desktop.h"
#include "host/standalone/ImportView.h"
#include "host/standalone/Imports.h"
#include "host/standalone/Lesson.h"
#include "host/standalone/MidiInputs.h"
#include "host/standalone/NoteMaps.h"
#include "host/standalone/PadKeyboard.h"
#include "host/standalone/Playback.h"
#include "host/standalone/ProgramFonts.h"
#include "host/standalone/ProgramWindow.h"
#include "host/standalone/Settings.h"
#include "host/standalone/SetupView.h"
#include "host/standalone/SoundDevice.h"
#include "macro/UserControllerMap.h"
#include "platform/SpecialFolders.h"
#include "storage/paths/Paths.h"
#include "viewmodels/texts/PanelMacros.h"
#include "viewmodels/texts/ParameterSteps.h"
#include "views/BWPopupView.h"
#include "views/PanelLook.h"

namespace tesh::bramel::standalone {
namespace {

constexpr int kKitsMilliseconds = 1000;  ///< Interval of the checks whether the user's kits are on the disk.

juce::String kitsFault() {
  const std::string folder = directoryFor(kBramelDirectory_UserPrograms);
  return "Your kits cannot be saved in " +
         juce::String::fromUTF8(folder.c_str()).replaceCharacter('\\', juce::File::getSeparatorChar());
}

DemoScore installedDemo() {
  return readDemoScore(readFile(pathBelow(directoryFor(kBramelDirectory_Resource), "SivrayDemo\\demo.mid")));
}

}  // namespace

class Standalone::Impl : public IBWControlListener, private juce::Timer {
 public:
  Impl(const juce::File& settingsFolder, std::function<void()> onClosed, const Devices& devices)
      : settings(settingsFolder),
        playback(*processor, installedDemo()),
        sound(
            playback, [this] { return playback.blockCount(); }, devices.sound),
        midi(playback, devices.midi) {
    if (!processor->fault().empty()) {
      throw std::runtime_error(processor->fault());
    }
    setState(*processor, settings.state());
    listenToInstrument();
    playback.setNoteMap(noteMaps.map());
    makeWindow(std::move(onClosed));
    sound.onChange = [this] { showDevices(); };
    midi.onChange = [this] { showDevices(); };
    sound.open(settings.device());
    midi.start(settings.midiNamesSwitched());
    startTimer(kKitsMilliseconds);
    if (usesOwnContent()) {
      imports.refresh();
    }
  }

  ~Impl() override {
    demoKits->stop();
    remember();
  }

  void remember() { settings.saveState(stateNow()); }

 private:
  void makeWindow(std::function<void()> onClosed) {
    auto strip = std::make_unique<TransportStrip>(fonts, *this);
    strip->demoButton().setEnabled(playback.demo().hasScore());
    window = std::make_unique<ProgramWindow>(
        std::move(strip), makeEditor(), desktop::scale(),
        ProgramWindow::Events{
            .closed = std::move(onClosed),
            .moved = [this](juce::Point<int> position) { settings.setPosition(position); },
            .deactivated =
                [this] {
                  if (keyboard != nullptr) {
                    keyboard->releaseAll();
                  }
                },
            .scaled = [this](float scale) { setScreenScale(scale); },
            .dropped = imports.canImport()
                           ? [this](const juce::StringArray& files, std::optional<int> pad) { imports.add(files, pad); }
                           : std::function<void(const juce::StringArray&, std::optional<int>)>()});
    keyboard = std::make_unique<PadKeyboard>(
        *window, [this](int note, bool isOn) { playback.playNote(note, isOn); }, [this] { toggleDemo(); });
    window->setIcon(fonts.getIcon());
    window->open(settings.position());
    void* const native = window->getPeer()->getNativeHandle();
    desktop::nameWindow(native);
    windowScale = std::make_unique<desktop::WindowScale>(native, [this](float scale) { window->setScale(scale); });
  }

  std::unique_ptr<vst::SivrayProcessorEditor> makeEditor() {
    auto editor = std::make_unique<vst::SivrayProcessorEditor>(*processor);
    editor->leaveKeysToHost(false);
    shownEditor = editor.get();
    return editor;
  }

  void setScreenScale(float scale) {
    screenScale = scale;
    if (shownEditor != nullptr) {
      shownEditor->setScreenScale(scale);
    }
  }

  static void setState(vst::SivrayProcessor& instrument, const juce::MemoryBlock& state) {
    if (!state.isEmpty()) {
      instrument.setStateInformation(state.getData(), static_cast<int>(state.getSize()));
    }
  }

  juce::MemoryBlock stateNow() {
    juce::MemoryBlock state;
    processor->getStateInformation(state);
    return state;
  }

  void listenToInstrument() {
    demoKits = std::make_unique<DemoKits>(*processor, playback.demo());
    audition = std::make_unique<Audition>(
        *processor, [this](int note, bool isOn) { playback.playNote(note, isOn); },
        [this] { return settings.hearsChoices() && !playback.demo().isPlaying(); });
    lesson = std::make_unique<Lesson>(
        playback, *processor,
        Lesson::Pupil{
            .note = [this](int drum, int padNote) { teachNote(drum, padNote); },
            .controller = [this](int controller, int parameter) { return teachController(controller, parameter); },
            .changed = [this] { showDevices(); }});
  }

  bool isTeaching() const { return lesson != nullptr && lesson->isOn(); }

  /// Builds a new instrument from the present content while the old one plays on, and then replaces it. If the content
  /// cannot be played, the old one stays.
  void reload(const juce::MemoryBlock& wanted, std::optional<int> pad, int number) {
    demoKits->stop();
    window->strip().demoButton().setState(false);
    auto next = std::make_unique<vst::SivrayProcessor>();
    if (!next->fault().empty()) {
      return;
    }
    setState(*next, wanted.isEmpty() ? stateNow() : wanted);
    if (pad) {
      chooseSound(*next, *pad, number);
    }
    window->setEditor(nullptr);
    lesson.reset();
    audition.reset();
    demoKits.reset();
    playback.setInstrument(*next);
    processor = std::move(next);
    listenToInstrument();
    window->setEditor(makeEditor());
    shownEditor->setScreenScale(screenScale);
    if (pad && settings.hearsChoices()) {
      audition->sound(panel::kFirstPadNote + *pad);
    }
    showDevices();
  }

  /// Makes a pad play the wave with this number.
  static void chooseSound(vst::SivrayProcessor& instrument, int pad, int number) {
    const auto* const library = instrument.instrument()->processorHandle()->generator().sampleLibrary();
    instrument.instrument()->setParameterFromEditor(panel::padMacro(static_cast<std::size_t>(pad), panel::kSample),
                                                    normaliseState(number, library->numberCount(), 0));
  }

  static bool usesOwnContent() {
    const std::string own = platform::ownContentFolder();
    return !own.empty() && platform::commonFilesFolder() == own;
  }

  /// Shows the results for dropped files, if there are any.
  void openImports() {
    if (!imports.result()) {
      return;
    }
    const auto undo = [this] {
      later([this] {
        popup->close();
        imports.undo();
      });
    };
    showPopup(std::make_shared<ImportView>(*imports.result(), fonts,
                                           imports.canUndo() ? std::function<void()>(undo) : nullptr),
              ImportView::kWidth, ImportView::kHeight);
  }

  /// Shows the page below the strip's display.
  void showPopup(const std::shared_ptr<juce::Component>& page, int width, int height) {
    popup = std::make_shared<BWPopupView>();
    popup->setContentSize(width, height);
    popup->setContent(page);
    popup->setAnchor(&window->strip().deviceButton());
    popup->setDirection(UIPopupDirection::belowRight);
    popup->show();
  }

  /// The list opens by itself, once, if it holds files that could not be used.
  void importsChanged() {
    showDevices();
    const auto isUnused = [](const ToolResult::File& file) { return file.kind == ToolResult::File::Kind::unused; };
    const bool wasShown = std::exchange(isResultShown, imports.result().has_value());
    if (!wasShown && isResultShown && std::ranges::any_of(imports.result()->files, isUnused)) {
      openImports();
    }
  }

  void toggleDemo() {
    if (playback.demo().isPlaying()) {
      demoKits->stop();
    } else {
      demoKits->play();
    }
    window->strip().demoButton().setState(playback.demo().isPlaying());
  }

  void controlGestureBegan(IBWControl& control) override {
    if (&control == static_cast<IBWControl*>(&window->strip().demoButton())) {
      toggleDemo();
    } else if (isTeaching()) {
      lesson->stop();
    } else if (imports.text().isNotEmpty()) {
      openImports();
      imports.dismiss();
    } else {
      openSetup();
    }
  }

  void openSetup() {
    const auto page = std::make_shared<SetupView>(
        sound, midi, noteMaps, settings, fonts,
        SetupView::Wishes{.device = [this](const DeviceChoice& choice) { openDevice(choice); },
                          .midi = [this](const juce::String& name, bool isOn) { switchMidi(name, isOn); },
                          .testTone = [this] { playback.playTestTone(); },
                          .notes = [this](int row) { chooseNotes(row); },
                          .hearsChoices = [this](bool hears) { setHearsChoices(hears); },
                          .controllers = [this] { learnControllers(); }});
    setup = page;
    showPopup(page, SetupView::kWidth, SetupView::kHeight);
  }

  /// Postponed, because the list that asks for it will show the result.
  void openDevice(const DeviceChoice& choice) {
    later([this, choice] {
      settings.setDevice(choice);
      sound.open(choice);
    });
  }

  void switchMidi(const juce::String& name, bool isOn) {
    later([this, name, isOn] {
      midi.setOn(name, isOn);
      settings.setMidiNamesSwitched(midi.namesSwitched());
    });
  }

  void chooseNotes(int row) {
    later([this, row] {
      noteMaps.choose(row);
      playback.setNoteMap(noteMaps.map());
      if (row == NoteMaps::learnedRow()) {
        popup.reset();  // The user must reach the panel's pads.
        lesson->teachNotes();
      }
    });
  }

  void setHearsChoices(bool hears) {
    later([this, hears] {
      settings.setHearsChoices(hears);
      showDevices();
    });
  }

  void learnControllers() {
    later([this] {
      popup.reset();
      lesson->teachControllers();
    });
  }

  /// Holds at once, and for every instance that is made later.
  bool teachController(int controller, int parameter) {
    const auto* const moved = dynamic_cast<const vst::ClientParameter*>(processor->getParameters()[parameter]);
    const auto key = static_cast<std::uint8_t>(controller);
    const bool isKept = vimo::changeUserController(vst::kInstrumentName, key, moved->shellId());
    vimo::ControllerMap map = vimo::activeControllerMap(vst::kInstrumentName);
    map[key] = moved->shellId();
    processor->instrument()->setControllers(std::move(map));
    return isKept;
  }

  void teachNote(int drum, int padNote) {
    noteMaps.teach(drum, padNote);
    playback.setNoteMap(noteMaps.map());
  }

  void later(std::function<void()> work) {
    juce::MessageManager::callAsync([token = std::weak_ptr<const bool>(alive), own = std::move(work)] {
      if (!token.expired()) {
        own();
      }
    });
  }

  void timerCallback() override {
    const std::string missing = vst::describeMissing(vst::missingSounds(*processor->instrument()));
    if (processor->instrument()->areProgramsWritten() != areKitsWritten || missing != shownMissing) {
      showDevices();
    }
  }

  /// The display shows the sound device, or more important facts: kits that are not on the disk, and missing sounds.
  void showDevices() {
    areKitsWritten = processor->instrument()->areProgramsWritten();
    shownMissing = vst::describeMissing(vst::missingSounds(*processor->instrument()));
    juce::String state = areKitsWritten ? sound.describe() : kitsFault();
    const bool isMissing = areKitsWritten && sound.isOpen() && !shownMissing.empty();
    if (isMissing) {
      state = juce::String::fromUTF8(shownMissing.c_str());
    }
    if (isTeaching()) {
      window->strip().showDevice(lesson->text(), true);
    } else if (imports.text().isNotEmpty()) {
      window->strip().showDevice(imports.text(), true);
    } else if (isMissing) {
      window->strip().showDevice(state, true);
    } else {
      window->strip().showDevice(state, !areKitsWritten || !sound.isOpen());
    }
    if (std::exchange(shownState, state) != state) {
      std::fprintf(stderr, "sivray: %s\n", state.toRawUTF8());
    }
    if (const auto page = setup.lock()) {
      page->refresh();
    }
  }

  const std::shared_ptr<const bool> alive = std::make_shared<const bool>(true);
  Settings settings;
  ProgramFonts fonts;
  std::unique_ptr<vst::SivrayProcessor> processor = std::make_unique<vst::SivrayProcessor>();
  Playback playback;
  NoteMaps noteMaps{settings};
  std::unique_ptr<DemoKits> demoKits;
  std::unique_ptr<Audition> audition;
  std::unique_ptr<Lesson> lesson;
  Imports imports{{.reload = [this](const juce::MemoryBlock& state, std::optional<int> pad,
                                    int number) { reload(state, pad, number); },
                   .state = [this] { return stateNow(); },
                   .changed = [this] { importsChanged(); }}};
  std::unique_ptr<ProgramWindow> window;
  vst::SivrayProcessorEditor* shownEditor = nullptr;  ///< Owned by the window.
  float screenScale = 1.0F;
  std::unique_ptr<desktop::WindowScale> windowScale;
  std::unique_ptr<PadKeyboard> keyboard;
  std::shared_ptr<BWPopupView> popup;
  std::weak_ptr<SetupView> setup;  ///< In `popup` while it is open.
  juce::String shownState;
  std::string shownMissing;    ///< As shown on the strip.
  bool isResultShown = false;  ///< The result of `imports`.
  bool areKitsWritten = true;  ///< As shown on the strip.
  SoundDevice sound;
  MidiInputs midi;
};

Standalone::Standalone(const juce::File& settingsFolder, std::function<void()> onClosed, const Devices& devices)
    : impl(std::make_unique<Impl>(settingsFolder, std::move(onClosed), devices)) {}

Standalone::~Standalone() = default;

void Standalone::remember() { impl->remember(); }

void showFault(const juce::String& text) {
  ProgramFonts fonts;
  const auto look = PanelLook::acquire(fonts);
  juce::Desktop::getInstance().setGlobalScaleFactor(desktop::scale());
  juce::AlertWindow::showMessageBox(juce::MessageBoxIconType::NoIcon, "Sivray", text);
}

}  // namespace tesh::bramel::standalone
