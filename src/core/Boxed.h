// A value of any type behind one pointer, with a deep copy: for property maps, and for results whose type only the
// receiver knows.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <new>
#include <utility>

namespace tesh::cofu::core::boxed {

/// The base of every boxed value. Readers cast it to `holder<T>`; a value of another type counts as no value.
class holder_base {
 public:
  virtual ~holder_base() = default;

  /// Stores a deep copy in `out`, or null if there is no memory for it.
  virtual void clone(std::unique_ptr<holder_base>& out) const = 0;
};

template <typename T>
class holder final : public holder_base {
 public:
  explicit holder(T boxedValue) : value(std::move(boxedValue)) {}

  void clone(std::unique_ptr<holder_base>& out) const override { out.reset(new (std::nothrow) holder<T>(value)); }

  T value;
};

/// An owned boxed value; null means no value.
using Box = std::unique_ptr<holder_base>;

template <typename T>
Box makeBox(T value) {
  return std::make_unique<holder<T>>(std::move(value));
}

/// The value in `box`, or null if the box is empty or holds another type.
template <typename T>
const T* valueIn(const Box& box) {
  const auto* const held = dynamic_cast<const holder<T>*>(box.get());
  return held == nullptr ? nullptr : &held->value;
}

/// A deep copy; null for null.
inline Box copyOf(const Box& box) {
  Box copy;
  if (box != nullptr) {
    box->clone(copy);
  }
  return copy;
}

}  // namespace tesh::cofu::core::boxed
