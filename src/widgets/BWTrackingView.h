// An invisible area that converts a drag to a value from 0 to 1, used by knobs and faders.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <cstdint>
#include <memory>

#include "widgets/ControlBase.h"
#include "widgets/DragLaw.h"
#include "widgets/HeldPress.h"

namespace tesh::bramel {

/// Reacts only to the left button, and to one press at a time. Alt makes a relative drag fine.
class BWTrackingView : public juce::Component, public ControlBase<IBWControl> {
 public:
  enum class Mode { relative, absolute };
  using Clock = std::uint32_t (*)();  ///< Milliseconds.

  BWTrackingView();

  /// Ignores null.
  void setQuantizer(std::shared_ptr<IParameterQuantizer> newQuantizer);
  const std::shared_ptr<IParameterQuantizer>& getQuantizer() const { return quantizer; }

  /// Follows y (up increases), or x (right increases), which is the default.
  void setVertical(bool vertical);
  bool isVertical() const { return settings.vertical; }
  void setMode(Mode newMode) { mode = newMode; }
  void setSensitivity(float sensitivity) { settings.sensitivity = sensitivity; }
  /// 0 is continuous. The value changes only when it is next set.
  void setStepCount(std::uint64_t count) { stepCount = count; }
  std::uint64_t getStepCount() const { return stepCount; }

  float getValue() const { return value; }
  /// Sets the state nearest to `newValue`. Notifies nobody. A drag in progress continues from the pointer's position.
  void setValueQuietly(float newValue);
  /// Acts like a whole gesture of the user: begin, change, end; within a gesture in progress, like a change. For screen
  /// readers.
  void moveTo(float newValue);

  /// `juce::Time::getMillisecondCounter`, unless a test replaces it.
  void setClock(Clock newClock) { clock = newClock; }

  void mouseDown(const juce::MouseEvent& event) override;
  void mouseDrag(const juce::MouseEvent& event) override;
  void mouseUp(const juce::MouseEvent& event) override;
  void enablementChanged() override { updateCursor(); }

 private:
  /// Loaded for the first view and shared by all, because loading reads a file.
  struct Cursors {
    juce::MouseCursor upDown{juce::MouseCursor::UpDownResizeCursor};
    juce::MouseCursor leftRight{juce::MouseCursor::LeftRightResizeCursor};
  };

  void take(float newValue);
  void updateCursor();
  double seconds() const { return static_cast<double>(clock()) / 1000.0; }
  void takePosition(const juce::MouseEvent& event);

  std::shared_ptr<IParameterQuantizer> quantizer = std::make_shared<NormalParameterQuantizer>();
  drag::Settings settings;
  drag::State state;
  Mode mode = Mode::relative;
  std::uint64_t stepCount = 0;
  float value = 0.0F;
  HeldPress hand;
  Clock clock = &juce::Time::getMillisecondCounter;
  juce::SharedResourcePointer<Cursors> cursors;
};

}  // namespace tesh::bramel
