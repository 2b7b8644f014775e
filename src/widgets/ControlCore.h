// The listener and the properties of a control, and a base class that implements them, so that a widget only implements
// its value.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <string>
#include <utility>

#include "widgets/IBWControl.h"

namespace tesh::bramel {

class ControlCore {
 public:
  IBWControlListener* listener = nullptr;

  const Box& getProperty(const std::string& key) const {
    const auto found = properties.find(key);
    return found == properties.end() ? none : found->second;
  }
  void setProperty(const std::string& key, Box value) { properties[key] = std::move(value); }

 private:
  const Box none;
  std::map<std::string, Box> properties;
};

/// `Interface` is `IBWControl` or an interface derived from it. After each notification the control may have been
/// deleted.
template <typename Interface>
class ControlBase : public Interface {
 public:
  void setListener(IBWControlListener* listener) override { core.listener = listener; }
  const Box& getProperty(const std::string& key) const override { return core.getProperty(key); }
  void setProperty(const std::string& key, Box value) override { core.setProperty(key, std::move(value)); }

  void notifyChanged() override {
    if (core.listener != nullptr) {
      core.listener->controlValueChanged(*this);
    }
  }
  void notifyBegin() override {
    if (core.listener != nullptr) {
      core.listener->controlGestureBegan(*this);
    }
  }
  void notifyEnd() override {
    if (core.listener != nullptr) {
      core.listener->controlGestureEnded(*this);
    }
  }
  void notifyDoubleClick() override {
    if (core.listener != nullptr) {
      core.listener->controlDoubleClicked(*this);
    }
  }

 private:
  ControlCore core;
};

}  // namespace tesh::bramel
