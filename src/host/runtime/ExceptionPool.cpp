// What a library that holds its own libstdc++ has to give back when its host unloads it. Linked into each such library.
// SPDX-License-Identifier: GPL-3.0-or-later

/// libstdc++'s own function, for tools that look for leaks: frees the memory that it keeps for exceptions when there is
/// no other, 73 KB. Nothing else frees it.
namespace __gnu_cxx {
void __freeres();
}

namespace {

struct ExceptionPoolUser {
  ~ExceptionPoolUser() { __gnu_cxx::__freeres(); }
};

// Made first of all static objects, and so the last to end: the others may still throw while they end.
constexpr int kFirst = 101;
[[gnu::init_priority(kFirst), gnu::used]] ExceptionPoolUser exceptionPoolUser;

}  // namespace
