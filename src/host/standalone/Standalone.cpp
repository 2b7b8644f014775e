// Connects devices, keys, demo, strip and setup.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/standalone/Standalone.h"

#include <cstdio>
#include <stdexcept>
#include <string>
#include <utility>

#include "host/client/SivrayProcessor.h"
#include "host/client/SivrayProcessorEditor.h"
#include "host/standalone/Audition.h"
#include "host/standalone/DemoKits.h"
#include "host/standalone/Desktop.h"
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
#include "storage/paths/Paths.h"
#include "views/BWPopupView.h"
#include "views/PanelLook.h"

namespace tesh::bramel::standalone {
namespace {

constexpr int kKitsMilliseconds = 1000;  ///< Between two looks whether the user's kits are on the disk.

juce::String kitsFault() {
  const std::string folder = directoryFor(kBramelDirectory_UserPrograms);
  return "Your kits cannot be saved in " +
         juce::String::fromUTF8(folder.c_str()).replaceCharacter('\\', juce::File::getSeparatorChar());
}

DemoScore installedDemo() {
  return readDemoScore(readFile(joinPath(directoryFor(kBramelDirectory_Resource), "SivrayDemo\\demo.mid")));
}

}  // namespace

class Standalone::Impl : public IBWControlListener, private juce::Timer {
 public:
  Impl(const juce::File& settingsFolder, std::function<void()> onClosed, const Devices& devices)
      : settings(settingsFolder),
        playback(processor, installedDemo()),
        sound(
            playback, [this] { return playback.blockCount(); }, devices.sound),
        midi(playback, devices.midi) {
    if (!processor.fault().empty()) {
      throw std::runtime_error(processor.fault());
    }
    const juce::MemoryBlock state = settings.state();
    if (!state.isEmpty()) {
      processor.setStateInformation(state.getData(), static_cast<int>(state.getSize()));
    }
    playback.setNoteMap(noteMaps.map());
    makeWindow(std::move(onClosed));
    sound.onChange = [this] { showDevices(); };
    midi.onChange = [this] { showDevices(); };
    sound.open(settings.device());
    midi.start(settings.midiNamesSwitched());
    startTimer(kKitsMilliseconds);
  }

  ~Impl() override {
    demoKits.stop();
    remember();
  }

  void remember() {
    juce::MemoryBlock state;
    processor.getStateInformation(state);
    settings.saveState(state);
  }

 private:
  void makeWindow(std::function<void()> onClosed) {
    auto strip = std::make_unique<TransportStrip>(fonts, *this);
    strip->demoButton().setEnabled(playback.demo().hasScore());
    auto editor = std::make_unique<vst::SivrayProcessorEditor>(processor);
    editor->leaveKeysToHost(false);
    auto& panel = *editor;
    window = std::make_unique<ProgramWindow>(
        std::move(strip), std::move(editor), desktop::scale(),
        ProgramWindow::Events{.closed = std::move(onClosed),
                              .moved = [this](juce::Point<int> position) { settings.setPosition(position); },
                              .deactivated =
                                  [this] {
                                    if (keyboard != nullptr) {
                                      keyboard->releaseAll();
                                    }
                                  },
                              .scaled = [&panel](float scale) { panel.setScreenScale(scale); }});
    keyboard = std::make_unique<PadKeyboard>(
        *window, [this](int note, bool isOn) { playback.playNote(note, isOn); }, [this] { toggleDemo(); });
    window->setIcon(fonts.getIcon());
    window->open(settings.position());
    desktop::nameWindow(window->getPeer()->getNativeHandle());
  }

  void toggleDemo() {
    if (playback.demo().isPlaying()) {
      demoKits.stop();
    } else {
      demoKits.play();
    }
    window->strip().demoButton().setState(playback.demo().isPlaying());
  }

  void controlGestureBegan(IBWControl& control) override {
    if (&control == static_cast<IBWControl*>(&window->strip().demoButton())) {
      toggleDemo();
    } else if (lesson.isOn()) {
      lesson.stop();
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
                          .hearsChoices = [this](bool hears) { setHearsChoices(hears); }});
    setup = page;
    popup = std::make_shared<BWPopupView>();
    popup->setContentSize(SetupView::kWidth, SetupView::kHeight);
    popup->setContent(page);
    popup->setAnchor(&window->strip().deviceButton());
    popup->setDirection(UIPopupDirection::belowRight);
    popup->show();
  }

  /// Later, because it is asked for by a list that will show the answer.
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
        popup.reset();  // The panel's pads are to be struck.
        lesson.start();
      }
    });
  }

  void setHearsChoices(bool hears) {
    later([this, hears] {
      settings.setHearsChoices(hears);
      showDevices();
    });
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
    if (processor.instrument()->areProgramsWritten() != areKitsWritten) {
      showDevices();
    }
  }

  /// The sound device, or what is worse: kits that would be gone with the program.
  void showDevices() {
    areKitsWritten = processor.instrument()->areProgramsWritten();
    const juce::String state = areKitsWritten ? sound.describe() : kitsFault();
    if (lesson.isOn()) {
      window->strip().showDevice(lesson.text(), true);
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
  vst::SivrayProcessor processor;
  Playback playback;
  NoteMaps noteMaps{settings};
  DemoKits demoKits{processor, playback.demo()};
  Audition audition{processor, [this](int note, bool isOn) { playback.playNote(note, isOn); },
                    [this] { return settings.hearsChoices() && !playback.demo().isPlaying(); }};
  Lesson lesson{
      playback,
      {.note = [this](int drum, int padNote) { teachNote(drum, padNote); }, .changed = [this] { showDevices(); }}};
  std::unique_ptr<ProgramWindow> window;
  std::unique_ptr<PadKeyboard> keyboard;
  std::shared_ptr<BWPopupView> popup;
  std::weak_ptr<SetupView> setup;  ///< In `popup` while that is open.
  juce::String shownState;
  bool areKitsWritten = true;  ///< As the strip tells.
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
