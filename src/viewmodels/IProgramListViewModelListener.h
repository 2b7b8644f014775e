// Notifications to the program list that is open.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace tesh::bramel {

class IProgramListViewModel;

/// Called on the message thread, after the change. `programIds` holds `count` program numbers.
class IProgramListViewModelListener {
 public:
  virtual ~IProgramListViewModelListener() = default;

  /// A weak pointer to this object, which expires with it. May share its count with a token that the object holds.
  virtual std::weak_ptr<IProgramListViewModelListener> getWeakSelf() = 0;

  virtual void onProgramSaved(IProgramListViewModel&, const std::uint64_t* programIds, std::uint64_t count,
                              const std::string& bankName) {
    static_cast<void>(programIds);
    static_cast<void>(count);
    static_cast<void>(bankName);
  }
  virtual void onProgramDeleted(IProgramListViewModel&, const std::uint64_t* programIds, std::uint64_t count,
                                const std::string& bankName) {
    static_cast<void>(programIds);
    static_cast<void>(count);
    static_cast<void>(bankName);
  }
  virtual void onProgramMoved(IProgramListViewModel&, std::uint64_t from, std::uint64_t to,
                              const std::string& bankName) {
    static_cast<void>(from);
    static_cast<void>(to);
    static_cast<void>(bankName);
  }
};

}  // namespace tesh::bramel
