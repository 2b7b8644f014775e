// The interface of every control of the panel: a value of one of three kinds, named properties and one listener.
// Controls know nothing of parameters. Message thread only.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "core/Boxed.h"
#include "viewmodels/texts/ParameterSteps.h"

namespace tesh::bramel {

using cofu::core::boxed::Box;
using cofu::core::boxed::makeBox;

class IBWControl;

/// Called for actions of the user. Setters never notify. Any of these calls may delete the control.
class IBWControlListener {
 public:
  virtual ~IBWControlListener() = default;
  virtual void controlValueChanged(IBWControl& /*control*/) {}
  virtual void controlGestureBegan(IBWControl& /*control*/) {}
  virtual void controlGestureEnded(IBWControl& /*control*/) {}
  virtual void controlDoubleClicked(IBWControl& /*control*/) {}
};

class IBWTwoStateControl;
class IBWMultiStateControl;
class IBWContinuousStateControl;

class IBWControl {
 public:
  virtual ~IBWControl() = default;

  // This control as one of that kind; null if it is of another kind. Not dynamic_cast, because a panel asks hundreds of
  // times while it opens, and each cast would search all bases of the widget.

  virtual IBWTwoStateControl* asTwoState() { return nullptr; }
  virtual IBWMultiStateControl* asMultiState() { return nullptr; }
  virtual IBWContinuousStateControl* asContinuous() { return nullptr; }

  /// The listener must outlive the control, unless it is replaced by null.
  virtual void setListener(IBWControlListener* listener) = 0;

  /// An empty box if there is no such property. Valid until the property is set again. See `property`.
  virtual const Box& getProperty(const std::string& key) const = 0;
  virtual void setProperty(const std::string& key, Box value) = 0;

  /// Notify the listener, if there is one.
  virtual void notifyChanged() = 0;
  virtual void notifyBegin() = 0;
  virtual void notifyEnd() = 0;
  virtual void notifyDoubleClick() = 0;
};

/// A property's value; nothing if it is missing or has another type.
template <typename T>
std::optional<T> property(const IBWControl& control, const std::string& key) {
  const T* const value = cofu::core::boxed::valueIn<T>(control.getProperty(key));
  return value == nullptr ? std::nullopt : std::optional<T>(*value);
}

class IBWTwoStateControl : public IBWControl {
 public:
  IBWTwoStateControl* asTwoState() override { return this; }

  virtual bool getState() const = 0;
  virtual void setState(bool on) = 0;
};

class IBWMultiStateControl : public IBWControl {
 public:
  IBWMultiStateControl* asMultiState() override { return this; }

  virtual std::uint64_t getStateCount() const = 0;
  virtual std::uint64_t getState() const = 0;
  virtual void setState(std::uint64_t state) = 0;
};

class IBWContinuousStateControl : public IBWControl {
 public:
  IBWContinuousStateControl* asContinuous() override { return this; }

  virtual std::shared_ptr<IParameterQuantizer> getQuantizer() const = 0;
  virtual void setQuantizer(std::shared_ptr<IParameterQuantizer> quantizer) = 0;

  /// 0 makes the control continuous; otherwise the number of states.
  virtual void setStepCount(std::uint64_t count) = 0;

  virtual float getMinimum() const = 0;
  virtual void setMinimum(float minimum) = 0;
  virtual float getMaximum() const = 0;
  virtual void setMaximum(float maximum) = 0;

  /// From minimum to maximum.
  virtual float getValue() const = 0;
  virtual void setValue(float value) = 0;
};

}  // namespace tesh::bramel
