// Creates and destroys view and view model, and posts the instrument's reports to the message thread.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/editor/BramelInstrumentEditor.h"

#include <mutex>
#include <stdexcept>
#include <utility>
#include <vector>

#include "core/MidiStatus.h"
#include "host/editor/Delivery.h"
#include "host/shell/BramelInstrument.h"

namespace tesh::bramel::vst {

using cofu::core::boxed::Box;

class BramelInstrumentEditor::Impl {
 public:
  Impl(const std::shared_ptr<BramelInstrumentBase>& base, std::shared_ptr<BramelInstrumentEditorProvider> newProvider,
       MessageThread::Kind newKind)
      : kind(newKind), instrument(std::dynamic_pointer_cast<BramelInstrument>(base)), provider(std::move(newProvider)) {
    if (instrument == nullptr) {
      throw std::invalid_argument("not an instrument of the family");
    }
    delivery = std::make_shared<Delivery>(instrument->cachedParameterCount());
  }

  const MessageThread::Kind kind;
  std::mutex threadMutex;                 ///< Guards the making of `thread`.
  std::shared_ptr<MessageThread> thread;  ///< Destroyed last: the other members may hold objects that were made on it.
  std::shared_ptr<BramelInstrument> instrument;
  std::shared_ptr<BramelInstrumentEditorProvider> provider;
  std::shared_ptr<Delivery> delivery;
  bool isListening = false;  ///< `delivery` is one of the listeners of `thread`. Message thread only.
  Box view;                  ///< A shared pointer to the component; empty while closed.
};

BramelInstrumentEditor::BramelInstrumentEditor(const std::shared_ptr<BramelInstrumentBase>& instrument,
                                               std::shared_ptr<BramelInstrumentEditorProvider> provider,
                                               MessageThread::Kind kind)
    : impl(std::make_unique<Impl>(instrument, std::move(provider), kind)) {}

BramelInstrumentEditor::~BramelInstrumentEditor() = default;

std::shared_ptr<MessageThread> BramelInstrumentEditor::messageThread() {
  const std::lock_guard lock(impl->threadMutex);
  if (impl->thread == nullptr) {
    impl->thread = MessageThread::acquire(impl->kind);
  }
  return impl->thread;
}

Box BramelInstrumentEditor::createView(int imageScale) {
  if (!impl->isListening) {
    impl->thread->addListener(impl->delivery);
    impl->isListening = true;
  }
  if (!impl->delivery->isViewModelOpen()) {
    InstrumentEditorParts parts = impl->provider->createEditor(impl->instrument, imageScale);
    if (parts.view != nullptr) {
      impl->view = std::move(parts.view);
    }
    const auto* const viewModel =
        cofu::core::boxed::valueIn<std::shared_ptr<IPluginEditViewModelOwner>>(parts.viewModel);
    if (viewModel != nullptr) {
      impl->delivery->open(*viewModel, *impl->thread);
    }
  }
  return cofu::core::boxed::copyOf(impl->view);
}

void BramelInstrumentEditor::closeView() {
  impl->view.reset();
  impl->delivery->close();
}

void BramelInstrumentEditor::holdUpdates() { impl->delivery->holdUpdates(); }

void BramelInstrumentEditor::releaseUpdates() { impl->delivery->releaseUpdates(); }

void BramelInstrumentEditor::programSaved(const std::string& bankName, const std::uint64_t* programIds,
                                          std::uint64_t count) {
  impl->delivery->enqueue([&](JobStore& jobs) {
    jobs.putNews([bankName, ids = std::vector(programIds, programIds + count)](IPluginEditViewModelOwner& viewModel) {
      viewModel.notifyProgramSaved(ids.data(), ids.size(), bankName);
    });
  });
}

void BramelInstrumentEditor::programDeleted(const std::string& bankName, const std::uint64_t* programIds,
                                            std::uint64_t count) {
  impl->delivery->enqueue([&](JobStore& jobs) {
    jobs.putNews([bankName, ids = std::vector(programIds, programIds + count)](IPluginEditViewModelOwner& viewModel) {
      viewModel.notifyProgramDeleted(ids.data(), ids.size(), bankName);
    });
  });
}

void BramelInstrumentEditor::programMoved(const std::string& bankName, std::uint64_t fromIndex, std::uint64_t toIndex) {
  impl->delivery->enqueue([&](JobStore& jobs) {
    jobs.putNews([bankName, fromIndex, toIndex](IPluginEditViewModelOwner& viewModel) {
      viewModel.notifyProgramMoved(fromIndex, toIndex, bankName);
    });
  });
}

void BramelInstrumentEditor::programChanged() {
  impl->delivery->enqueue([](JobStore& jobs) { jobs.putAllParameters(); });
}

void BramelInstrumentEditor::parameterChanged(std::uint64_t parameterId) {
  impl->delivery->enqueue([parameterId](JobStore& jobs) { jobs.putParameter(parameterId); });
}

void BramelInstrumentEditor::midiReceived(const std::uint8_t* data, std::size_t size) {
  using namespace cofu::core;
  constexpr std::size_t kNoteBytes = 3;
  if (data == nullptr || size < kNoteBytes) {
    return;
  }
  const int status = data[0] & kMidiKindBits;
  if (status == kMidiNoteOn || status == kMidiNoteOff) {
    const bool isOn = status == kMidiNoteOn && data[2] != 0;
    impl->delivery->enqueue([data, isOn](JobStore& jobs) { jobs.putNote(data[1], isOn); });
  }
}

}  // namespace tesh::bramel::vst
