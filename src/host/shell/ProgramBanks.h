// The banks as host and editor number them, against the places of their databases.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "macro/MacroControllerBase.h"

namespace tesh::bramel::vst {

inline constexpr std::uint64_t kFactoryBank = 0;
inline constexpr std::uint64_t kFactoryTwoBank = 1;
inline constexpr std::uint64_t kGhostBank = 2;
inline constexpr std::uint64_t kUserBank = 3;  ///< Numbers above it name the same bank.

/// The database of a bank.
constexpr vimo::Bank databaseOf(std::uint64_t bank) {
  switch (bank) {
    case kFactoryBank:
      return vimo::Bank::factory;
    case kFactoryTwoBank:
      return vimo::Bank::factoryTwo;
    case kGhostBank:
      return vimo::Bank::ghost;
    default:
      return vimo::Bank::user;
  }
}

/// The bank of a database's place; one that does not exist shows, like the ghost bank, in no list.
constexpr std::uint64_t bankOf(std::uint64_t database) {
  switch (static_cast<vimo::Bank>(database)) {
    case vimo::Bank::factory:
      return kFactoryBank;
    case vimo::Bank::factoryTwo:
      return kFactoryTwoBank;
    case vimo::Bank::user:
      return kUserBank;
    default:
      return kGhostBank;
  }
}

/// The name under which listeners know a bank.
constexpr const char* bankName(std::uint64_t bank) {
  switch (bank) {
    case kFactoryBank:
      return "Factory";
    case kFactoryTwoBank:
      return "Factory2";
    case kGhostBank:
      return "Ghost";
    default:
      return "User";
  }
}

}  // namespace tesh::bramel::vst
