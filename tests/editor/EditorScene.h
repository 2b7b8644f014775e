// An editor on a whole instrument, whose view holds a text field, and a view model whose listeners record their calls.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <memory>
#include <string>

#include <juce_gui_basics/juce_gui_basics.h>

#include "host/editor/BramelInstrumentEditor.h"
#include "host/message/MessageThread.h"
#include "viewmodels/ViewModelScene.h"

namespace editor {

using namespace tesh::bramel;
using namespace tesh::bramel::vst;
using tesh::cofu::core::boxed::Box;
using tesh::cofu::core::boxed::makeBox;

struct PanelView : juce::Component {
  PanelView() {
    setSize(BramelInstrumentEditor::getEditorSize().width, BramelInstrumentEditor::getEditorSize().height);
    text.setBounds(300, 200, 100, 30);
    addAndMakeVisible(text);
  }
  juce::TextEditor text;
};

/// Returns the model that it was given, and a new view each time.
struct PanelProvider final : BramelInstrumentEditorProvider {
  explicit PanelProvider(std::shared_ptr<IPluginEditViewModelOwner> given) : model(std::move(given)) {}
  Box createViewModel(const std::shared_ptr<BramelInstrumentBase>&) override { return makeBox(model); }
  InstrumentEditorParts createEditor(const std::shared_ptr<BramelInstrumentBase>&, int imageScale) override {
    ++made;
    lastImageScale = imageScale;
    if (!givesView) {
      return {nullptr, makeBox(model)};
    }
    const auto panel = std::make_shared<PanelView>();
    view = panel;
    return {makeBox(std::shared_ptr<juce::Component>(panel)), makeBox(model)};
  }
  std::shared_ptr<IPluginEditViewModelOwner> model;
  std::weak_ptr<PanelView> view;
  bool givesView = true;
  int made = 0;
  int lastImageScale = 0;
};

struct WakeUpCounter final : WakeUpListener {
  void wokenUp() override {
    ++count;
    count.notify_all();
  }
  std::atomic<int> count = 0;
};

class Editor : public models::ViewModels {
 protected:
  void onMessageThread(const MessageThread::Work& work) { editor->messageThread()->callAndWait(work); }
  void openView() {
    onMessageThread([this] { editor->createView(1); });
  }
  void closeView() {
    onMessageThread([this] { editor->closeView(); });
  }
  /// Returns the listeners' calls, after all wake-ups have been handled.
  models::Log heard() {
    const auto thread = editor->messageThread();
    if (counter == nullptr) {
      counter = std::make_shared<WakeUpCounter>();
      onMessageThread([&] { thread->addListener(counter); });
    }
    for (int round = 0; round < 2; ++round) {  // The first one may have started before the event that is waited for.
      const int before = counter->count;
      thread->wakeUp();
      counter->count.wait(before);
    }
    models::Log log;
    onMessageThread([&] { log = takeTold(); });
    return log;
  }
  std::string parameter(int id) const {
    return "parameter " + std::to_string(id) + ", key 39 " + std::to_string(model->getKeyState(39));
  }

  std::shared_ptr<PanelProvider> provider = std::make_shared<PanelProvider>(model);
  std::shared_ptr<WakeUpCounter> counter;
  std::shared_ptr<BramelInstrumentEditor> editor =
      std::make_shared<BramelInstrumentEditor>(instrument, provider, MessageThread::Kind::own);
};

}  // namespace editor
