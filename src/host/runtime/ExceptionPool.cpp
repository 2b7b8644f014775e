// Gives back memory of the linked-in libstdc++ when a host unloads the library. Linked into each plug-in library.
// SPDX-License-Identifier: GPL-3.0-or-later

/// libstdc++'s own function, meant for leak checkers: frees the 73 KB that it reserves for exceptions when memory runs
/// out. Nothing else frees them.
namespace __gnu_cxx {
void __freeres();
}

namespace {

struct ExceptionPoolUser {
  ~ExceptionPoolUser() { __gnu_cxx::__freeres(); }
};

// The lowest priority: made before and destroyed after all other static objects, which may still throw while they are
// destroyed.
constexpr int kFirst = 101;
[[gnu::init_priority(kFirst), gnu::used]] ExceptionPoolUser exceptionPoolUser;

}  // namespace
