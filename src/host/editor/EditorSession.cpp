// Carries opening, closing, scale and keys to the message thread.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/editor/EditorSession.h"

#include <algorithm>
#include <atomic>
#include <utility>

#include "host/editor/EditorKeys.h"
#include "host/editor/PanelFrame.h"
#include "host/editor/WindowScale.h"
#include "host/message/MessageThread.h"

namespace tesh::bramel::vst {
namespace {

/// How long a call of the host waits for the message thread, which may itself wait for the host.
constexpr std::chrono::milliseconds kClosing{500};
constexpr std::chrono::milliseconds kOpening{5000};
constexpr std::chrono::milliseconds kKey{250};

constexpr float kSmallestScale = 0.5F;
constexpr float kLargestScale = 8.0F;

/// True while a mouse button is held: one of the view's own handlers may then be running. JUCE alone keeps saying so if
/// the pressed view was destroyed before the release, so the system is asked too.
bool isMouseDown() {
  return juce::Desktop::getInstance().getNumDraggingMouseSources() > 0 &&
         juce::ModifierKeys::getCurrentModifiersRealtime().isAnyMouseButtonDown();
}

}  // namespace

/// The panel that is shown, and the host's wishes for it. Work on the message thread shares ownership: it may outlast
/// the host's call that asked for it, but never the session.
struct EditorSession::Shown {
  /// The panel's native window, in screen pixels; the frame inside keeps the panel's own size and is scaled. Message
  /// thread only.
  class Window final : public juce::Component {
   public:
    /// A child of the host's window `hostWindow`. No native window is made if the editor has no view.
    Window(void* hostWindow, BramelInstrumentEditor& editor, float scale) : frame(editor) {
      setOpaque(true);
      addChildComponent(frame);
      if (setScale(scale)) {
        setVisible(true);
        addToDesktop(0, hostWindow);
        frame.takeKeys(*this, hostWindow);
      }
    }

    /// False where the editor has no view.
    bool setScale(float scale) {
      frame.setTransform(juce::AffineTransform::scale(scale));
      setSize(scaledLength(frame.getWidth(), scale), scaledLength(frame.getHeight(), scale));
      return frame.showFor(scale);
    }

    std::unique_ptr<juce::ComponentTraverser> createKeyboardFocusTraverser() override {
      return frame.createKeyboardFocusTraverser();
    }

   private:
    PanelFrame frame;
  };

  explicit Shown(BramelInstrumentEditor& shownEditor) : editor(shownEditor) {}

  /// Opens, closes, moves or scales the window as the host wants. Message thread.
  void settle() {
    void* const wanted = wantedWindow;
    if (wanted != hostWindow) {
      window.reset();
      hostWindow = nullptr;
    }
    if (window != nullptr) {
      window->setScale(wantedScale);
    } else if (wanted != nullptr) {
      open(wanted);
    } else if (hasEntered.exchange(false)) {
      thread->leave();
    }
  }

  void open(void* wanted) {
    if (juce::Desktop::getInstance().getDisplays().getPrimaryDisplay() == nullptr) {
      return;
    }
    window = std::make_unique<Window>(wanted, editor, wantedScale);
    if (window->isOnDesktop()) {
      hostWindow = wanted;
    } else {
      window.reset();
    }
  }

  BramelInstrumentEditor& editor;
  MessageThread* thread = nullptr;            ///< Owned by the session; null until the first opening.
  std::atomic<bool> hasEntered = false;       ///< `thread` was entered: true from an opening until the panel is closed.
  std::atomic<void*> wantedWindow = nullptr;  ///< Null for closed.
  std::atomic<float> wantedScale = 1.0F;

  // Message thread only.
  std::unique_ptr<Window> window;
  void* hostWindow = nullptr;  ///< The host's window that holds `window`.
  EditorKeys keys;
};

EditorSession::EditorSession(std::shared_ptr<BramelInstrumentEditor> newEditor)
    : editor(std::move(newEditor)), shown(std::make_shared<Shown>(*editor)) {}

EditorSession::~EditorSession() {
  shown->wantedWindow = nullptr;
  // A panel that was closed long ago must not wait for the host's thread, which may be waiting for this one.
  if (thread == nullptr || (MessageLoop::kIsOnHostsThread && !shown->hasEntered)) {
    return;
  }
  void* const hostWindow = lastWindow;
  thread->callAndWait([this] { shown->settle(); });
  MessageLoop::awaitReturn(hostWindow);
}

bool EditorSession::isOpen() const { return shown->wantedWindow != nullptr; }

void EditorSession::open(void* window) {
  if (isOpen() || window == nullptr) {
    return;
  }
  if (thread == nullptr) {
    thread = editor->messageThread();
  }
  if (thread != nullptr && !shown->hasEntered.exchange(true)) {
    shown->thread = thread.get();
    thread->enter();
  }
  lastWindow = window;
  if (!isScaleGiven) {
    shown->wantedScale = std::clamp(scaleOfWindow(window), kSmallestScale, kLargestScale);
  }
  shown->wantedWindow = window;
  settle(kOpening);
}

void EditorSession::close() {
  if (shown->wantedWindow.exchange(nullptr) != nullptr) {
    settle(kClosing);
  }
}

BramelInstrumentEditor::Size EditorSession::size() const {
  constexpr auto kSize = BramelInstrumentEditor::getEditorSize();
  const float scale = shown->wantedScale;
  return {scaledLength(kSize.width, scale), scaledLength(kSize.height, scale)};
}

float EditorSession::scale() const { return shown->wantedScale; }

bool EditorSession::setScale(float scale) {
  if (!(scale >= kSmallestScale && scale <= kLargestScale)) {
    return false;
  }
  isScaleGiven = true;
  if (shown->wantedScale.exchange(scale) != scale && isOpen()) {
    settle(kOpening);
  }
  return true;
}

void EditorSession::settle(std::chrono::milliseconds longest) {
  if (thread == nullptr) {
    return;
  }
  // On a thread of our own, this call comes from a mouse handler of the view; on the host's thread it may, while a
  // mouse button is down. The view must not be destroyed inside its own handler.
  if (MessageThread::isCurrent() && (!MessageLoop::kIsOnHostsThread || isMouseDown())) {
    thread->callLater([own = shown] { own->settle(); });
  } else {
    thread->callAndWait([own = shown] { own->settle(); }, longest);
  }
}

bool EditorSession::keyDown(const VstKeyCode& keyCode) { return passOn(keyCode, &EditorKeys::keyDown); }

bool EditorSession::keyUp(const VstKeyCode& keyCode) { return passOn(keyCode, &EditorKeys::keyUp); }

template <typename Use>
bool EditorSession::passOn(const VstKeyCode& keyCode, Use use) {
  if (!isOpen() || thread == nullptr) {
    return false;
  }
  const auto isUsed = std::make_shared<std::atomic<bool>>(false);
  thread->callAndWait([own = shown, isUsed, keyCode, use] { *isUsed = (own->keys.*use)(keyCode); }, kKey);
  return *isUsed;
}

}  // namespace tesh::bramel::vst
