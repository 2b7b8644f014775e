// The banks' numbers for host and editor, and their names in notifications.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "storage/programs/Bank.h"

namespace tesh::bramel::vst {

inline constexpr std::uint64_t kFactoryBank = 0;
inline constexpr std::uint64_t kFactoryTwoBank = 1;
inline constexpr std::uint64_t kGhostBank = 2;
inline constexpr std::uint64_t kUserBank = 3;  ///< So is every higher number.

constexpr vimo::Bank bankOf(std::uint64_t number) {
  switch (number) {
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

/// A bank that does not exist gets the ghost bank's number, because neither shows in a list.
constexpr std::uint64_t numberOf(vimo::Bank bank) {
  switch (bank) {
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

constexpr const char* nameOf(vimo::Bank bank) {
  switch (bank) {
    case vimo::Bank::factory:
      return "Factory";
    case vimo::Bank::factoryTwo:
      return "Factory2";
    case vimo::Bank::user:
      return "User";
    default:
      return "Ghost";
  }
}

}  // namespace tesh::bramel::vst
