// The receiver of a macro's mapped values outside of blocks, and the listener to changes of its sets.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "engine/Generator.h"

namespace tesh::vimo {

class MacroParameterControlTarget {
 public:
  virtual ~MacroParameterControlTarget() = default;
  virtual void setValue(std::uint32_t id, float value) = 0;
  virtual void setObject(std::uint32_t id, std::uint64_t object) = 0;
};

template <typename Target>
class MacroParameterControlTargetAny;

/// Passes float values to a generator, which accepts them while it is not active. Ignores object values, which
/// generators do not have.
template <>
class MacroParameterControlTargetAny<Generator<float>*> final : public MacroParameterControlTarget {
 public:
  /// `engine` must outlive the target.
  explicit MacroParameterControlTargetAny(Generator<float>* engine) : generator(engine) {}
  void setValue(std::uint32_t id, float value) override { generator->setParameter(id, value); }
  void setObject(std::uint32_t, std::uint64_t) override {}

 private:
  Generator<float>* generator;
};

class MacroParameterControlListener {
 public:
  virtual ~MacroParameterControlListener() = default;
  virtual void macrosChanged() = 0;
};

}  // namespace tesh::vimo
