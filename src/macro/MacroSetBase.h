// A set: the mapping of a macro's value to the value of one engine parameter.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "core/Boxed.h"
#include "core/RealTime.h"
#include "macro/MacroTypes.h"

namespace tesh::vimo {

/// A boxed value, or null.
using BoxedValue = cofu::core::boxed::Box;

/// A set of a macro. Built and changed while no audio runs; `map` and `targetId` are called on the audio thread.
class MacroSetBase {
 public:
  virtual ~MacroSetBase() = default;

  virtual MacroSetType type() const = 0;
  virtual const char* typeName() const = 0;

  /// Bytes that `serialize` appends.
  virtual std::uint32_t byteSize() const = 0;
  /// Reads a record. Returns false and leaves the set as it was if the record is too short.
  virtual bool deserialize(std::span<const std::uint8_t> record) = 0;
  /// Appends a record to `out`.
  virtual void serialize(std::vector<std::uint8_t>& out) const = 0;

  /// The engine parameter that the set drives.
  virtual std::uint32_t targetId() const SIVRAY_NONBLOCKING { return target; }
  virtual void setTargetId(std::uint32_t id) { target = id; }

  /// The mapping's curve, for x from 0 to 1. Audio thread.
  virtual float map(float x) const SIVRAY_NONBLOCKING = 0;

  /// Editable properties. For an index past the count, `property` returns null and `setProperty` does nothing; likewise
  /// `setProperty` for a value of another type.
  virtual std::uint32_t propertyCount() const = 0;
  virtual BoxedValue property(std::uint32_t index) const = 0;

  /// Maps an object value.
  virtual std::uint64_t mapObject(std::uint64_t object) const SIVRAY_NONBLOCKING { return object; }

  virtual void setProperty(std::uint32_t index, BoxedValue value) = 0;

 private:
  std::uint32_t target = 0;
};

/// Makes a set of the given type; null if there is no such type.
std::unique_ptr<MacroSetBase> makeMacroSet(MacroSetType type);

}  // namespace tesh::vimo
