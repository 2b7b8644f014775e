// The parameters that a block has changed: the latest write of each, and those that the engine moved by itself. Uses
// flat arrays that are reused from block to block.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "core/RealTime.h"
#include "host/shell/ProcessorEvent.h"

namespace tesh::bramel::vst {

/// Ignores ids beyond the list. Audio thread, except `resize`.
class ChangeList {
 public:
  /// Makes room for parameters 0 to count - 1; nothing is allocated afterwards.
  void resize(std::size_t count) {
    writes.resize(count);
    states.assign(count, State::unchanged);
    ids.clear();
    ids.reserve(count);
  }

  /// Keeps `event` as the latest write of its parameter.
  void put(const vimo::ProcessorEvent& event) {
    if (event.parameterId < writes.size()) {
      const auto id = static_cast<std::size_t>(event.parameterId);
      writes[id] = event;
      list(id);
      states[id] = State::written;
    }
  }

  /// Lists a parameter that the engine moved without a write.
  void touch(std::size_t id) {
    if (id < states.size() && states[id] == State::unchanged) {
      list(id);
      states[id] = State::moved;
    }
  }

  /// Sorts the parameters in ascending order, for both loops below.
  void sort() { std::sort(ids.begin(), ids.end()); }

  /// Calls `action(event)` for the latest write of every parameter.
  template <typename Action>
  void forEachWrite(Action action) const {
    for (const std::size_t id : ids) {
      if (states[id] == State::written) {
        action(writes[id]);
      }
    }
  }

  /// Calls `action(id)` for every parameter that was written or has moved.
  template <typename Action>
  void forEach(Action action) const {
    std::for_each(ids.begin(), ids.end(), action);
  }

  bool isEmpty() const { return ids.empty(); }
  bool contains(std::size_t id) const { return id < states.size() && states[id] != State::unchanged; }

  void clear() {
    for (const std::size_t id : ids) {
      states[id] = State::unchanged;
    }
    ids.clear();
  }

 private:
  enum class State : std::uint8_t { unchanged, moved, written };

  void list(std::size_t id) {
    if (states[id] == State::unchanged) {
      cofu::core::vouchFor([this, id] { ids.push_back(id); });  // There is room for every parameter.
    }
  }

  std::vector<vimo::ProcessorEvent> writes;
  std::vector<State> states;
  std::vector<std::size_t> ids;
};

}  // namespace tesh::bramel::vst
