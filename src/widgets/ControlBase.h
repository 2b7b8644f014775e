// A base class that implements the listener and the properties of a control, so that a widget only implements its
// value.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <string>
#include <utility>

#include "widgets/IBWControl.h"

namespace tesh::bramel {

/// `Interface` is `IBWControl` or an interface derived from it. After each notification the control may have been
/// deleted.
template <typename Interface>
class ControlBase : public Interface {
 public:
  void setListener(IBWControlListener* newListener) override { listener = newListener; }
  const Box& getProperty(const std::string& key) const override {
    const auto found = properties.find(key);
    return found == properties.end() ? none : found->second;
  }
  void setProperty(const std::string& key, Box value) override { properties[key] = std::move(value); }

  void notifyChanged() override { notify(&IBWControlListener::controlValueChanged); }
  void notifyBegin() override { notify(&IBWControlListener::controlGestureBegan); }
  void notifyEnd() override { notify(&IBWControlListener::controlGestureEnded); }
  void notifyDoubleClick() override { notify(&IBWControlListener::controlDoubleClicked); }

 private:
  void notify(void (IBWControlListener::*event)(IBWControl&)) {
    if (listener != nullptr) {
      (listener->*event)(*this);
    }
  }

  IBWControlListener* listener = nullptr;
  const Box none;
  std::map<std::string, Box> properties;
};

}  // namespace tesh::bramel
