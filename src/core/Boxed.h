// A value of any type behind one pointer, with a deep copy: for property tables, and for results whose type only the
// far end knows. SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <new>
#include <utility>

namespace tesh::cofu::core::boxed {

/// What every boxed value is. The reader casts down to `holder<T>` and treats a wrong type as no value.
class holder_base {
 public:
  virtual ~holder_base() = default;

  /// Writes a copy into `out`, or null when there is no memory for it.
  virtual void clone(std::unique_ptr<holder_base>& out) const = 0;
};

template <typename T>
class holder final : public holder_base {
 public:
  explicit holder(T boxedValue) : value(std::move(boxedValue)) {}

  void clone(std::unique_ptr<holder_base>& out) const override { out.reset(new (std::nothrow) holder<T>(value)); }

  T value;
};

}  // namespace tesh::cofu::core::boxed
