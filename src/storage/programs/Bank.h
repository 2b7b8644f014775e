// The banks of programs, and the selection of a program in one.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

namespace tesh::vimo {

/// The number is the position of the bank's database, as states and program changes carry it. Nothing is ever stored in
/// the ghost bank: a selection there matches no list. A state may contain any other number, which refers to no bank.
enum class Bank : std::uint64_t { factory = 0, factoryTwo = 1, user = 2, ghost = 3 };

inline constexpr std::size_t kBankCount = 4;

struct ProgramSelection {
  std::uint64_t program = 0;
  Bank bank = Bank::factory;
  bool operator==(const ProgramSelection&) const = default;
};

}  // namespace tesh::vimo
