// A cell of a collection view: a button with its index and a selected state.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "widgets/BWButtonBase.h"

namespace tesh::bramel {

/// Derived classes draw it.
class BWCollectionViewCell : public BWButtonBase {
 public:
  BWCollectionViewCell() {
    setMomentary(true);
    setValueText([this] { return juce::String(isSelected() ? "selected" : ""); });
  }

  virtual std::uint64_t getIndex() const { return index; }
  virtual void setIndex(std::uint64_t newIndex) { index = newIndex; }
  virtual bool isSelected() const { return selected; }
  virtual void setSelected(bool isSelected) { selected = isSelected; }

 private:
  std::uint64_t index = 0;
  bool selected = false;
};

}  // namespace tesh::bramel
