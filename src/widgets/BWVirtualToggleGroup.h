// Joins buttons into a radio group, wherever they are: exactly one is on. Not a component.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "widgets/ControlBase.h"

namespace tesh::bramel {

/// The state is the index of the button that is on, 0 at first.
class BWVirtualToggleGroup : public ControlBase<IBWMultiStateControl>, public IBWControlListener {
 public:
  ~BWVirtualToggleGroup() override;

  /// Becomes the listener of each button.
  void setButtons(std::vector<std::shared_ptr<IBWTwoStateControl>> newButtons);

  std::uint64_t getStateCount() const override { return buttons.size(); }
  std::uint64_t getState() const override { return current; }
  /// Ignores an index without a button, except 0. Notifies nobody; the next press of any button then notifies, even of
  /// the one that is on, and so does the very first press.
  void setState(std::uint64_t state) override;

  void controlValueChanged(IBWControl& control) override;
  void controlGestureBegan(IBWControl& control) override;
  void controlGestureEnded(IBWControl& control) override;

 private:
  bool choose(const IBWControl& control);
  void tellIfChanged();
  void updateButtons();
  void leaveButtons();

  std::shared_ptr<const bool> alive = std::make_shared<const bool>(true);
  std::vector<std::shared_ptr<IBWTwoStateControl>> buttons;
  std::uint64_t current = 0;
  std::optional<std::uint64_t> reported;  ///< The state that a press has notified last; none after `setState`.
};

}  // namespace tesh::bramel
