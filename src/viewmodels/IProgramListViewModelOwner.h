// The interface of a program list view model for incoming changes.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

#include "viewmodels/IProgramListViewModel.h"

namespace tesh::bramel {

/// Each function notifies the listener, if there is one. `programIds` holds `count` program numbers.
class IProgramListViewModelOwner : public virtual IProgramListViewModel {
 public:
  virtual void programSaved(const std::uint64_t* programIds, std::uint64_t count, const std::string& bankName) = 0;
  virtual void programDeleted(const std::uint64_t* programIds, std::uint64_t count, const std::string& bankName) = 0;
  virtual void programMoved(std::uint64_t from, std::uint64_t to, const std::string& bankName) = 0;
};

}  // namespace tesh::bramel
