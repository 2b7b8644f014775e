// The library as a host loads it.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <dlfcn.h>

#include <chrono>
#include <cstdio>
#include <iterator>

#include "adapter/AdapterScene.h"
#include "support/Sanitized.h"

namespace adapter {
namespace {

namespace fs = std::filesystem;

/// The library, loaded while this object exists.
class Module {
 public:
  explicit Module(const char* path) : handle(dlopen(path, RTLD_NOW | RTLD_LOCAL)) {
    EXPECT_NE(handle, nullptr) << dlerror();
  }
  ~Module() { dlclose(handle); }
  Module(const Module&) = delete;
  Module& operator=(const Module&) = delete;

  AEffect* start() const {
    using Main = AEffect* (*)(AudioMasterCallback);
    return reinterpret_cast<Main>(dlsym(handle, "VSTPluginMain"))(FakeHost::callback);
  }

 private:
  void* handle;
};

struct Holdings {
  std::ptrdiff_t threads = std::distance(fs::directory_iterator("/proc/self/task"), fs::directory_iterator());
  std::ptrdiff_t handles = std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
  long pages = residentPages();

  static long residentPages() {
    long size = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> size >> resident;
    return resident;
  }
};

TEST(Module, ExportsItsTwoDoorsAndNothingElse) {
  FILE* const pipe = popen("nm -D --defined-only -P '" SIVRAY_MODULE "'", "r");
  ASSERT_NE(pipe, nullptr);
  std::vector<std::string> names;
  for (char line[1024]; fgets(line, sizeof(line), pipe) != nullptr;) {
    names.emplace_back(line, std::strcspn(line, " "));
  }
  EXPECT_EQ(pclose(pipe), 0);
  EXPECT_EQ(names, (std::vector<std::string>{"VSTPluginMain", "createVstPlugin"}));
}

TEST(Module, LeavesNothingBehindHoweverOftenItIsLoaded) {
  const InstrumentFolder folder;
  FakeHost host;
  const int cycles = support::kIsSanitized ? 30 : 1000;
  const long pageLimit = 1024;  // 4 MiB; a leak of one voice's memory per cycle would be a hundred times that.
  std::unique_ptr<Holdings> early;
  for (int cycle = 1; cycle <= cycles; ++cycle) {
    {
      const Module module(SIVRAY_MODULE);
      AEffect* const effect = module.start();
      ASSERT_NE(effect, nullptr);
      effect->dispatcher(effect, effOpen, 0, 0, nullptr, 0.0F);
      EXPECT_EQ(effect->dispatcher(effect, effClose, 0, 0, nullptr, 0.0F), 1);
      host.take();
    }
    ASSERT_EQ(dlopen(SIVRAY_MODULE, RTLD_NOW | RTLD_NOLOAD), nullptr) << "something holds the library";
    if (cycle == 10) {
      early = std::make_unique<Holdings>();
    }
  }
  const Holdings late;
  EXPECT_EQ(late.threads, early->threads);
  EXPECT_EQ(late.handles, early->handles);
  if (!support::kIsSanitized) {
    EXPECT_LE(late.pages, early->pages + pageLimit);
  }
}

TEST(Module, FindsItsFilesBesideItself) {
  const InstrumentFolder folder;
  FakeHost host;
  const fs::path base = folder.pathOf("../../../..").lexically_normal();
  const fs::path nowhere = base / "nowhere";
  fs::create_directories(nowhere);
  unsetenv("BRAMEL_COMMON_FILES");
  setenv("XDG_DATA_HOME", nowhere.c_str(), 1);
  setenv("XDG_DATA_DIRS", nowhere.c_str(), 1);
  for (const auto& [place, isFound] : {std::make_pair(base, true), std::make_pair(nowhere, false)}) {
    const fs::path copy = place / "Sivray.so";
    fs::copy_file(SIVRAY_MODULE, copy);
    const Module module(copy.c_str());
    AEffect* const effect = module.start();
    EXPECT_EQ(effect != nullptr, isFound) << copy;
    if (effect != nullptr) {
      effect->dispatcher(effect, effClose, 0, 0, nullptr, 0.0F);
    }
  }
  unsetenv("XDG_DATA_HOME");
  unsetenv("XDG_DATA_DIRS");
}

}  // namespace
}  // namespace adapter
