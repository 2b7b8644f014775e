// The functions of fontconfig that are used, looked up at run time, so that the plug-in also loads without it.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef __linux__

#include <dlfcn.h>

#include <type_traits>

#include "viewmodels/resources/InstalledFonts.h"

namespace tesh::bramel {
namespace {

constexpr int kMatch = 0;  // Value for a pattern's kind and for results.
constexpr int kTrue = 1;

}  // namespace

struct InstalledFonts::Impl {
  // Opaque types, as in the library's own interface.
  struct Settings;
  struct Pattern;
  struct Characters;

  Impl() {
    if (library == nullptr) {
      return;
    }
    bool isWhole = true;
    const auto take = [&](auto& function, const char* name) {
      function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(::dlsym(library, name));
      isWhole = isWhole && function != nullptr;
    };
    take(loadSettings, "FcInitLoadConfigAndFonts");
    take(dropSettings, "FcConfigDestroy");
    take(makePattern, "FcPatternCreate");
    take(dropPattern, "FcPatternDestroy");
    take(addCharacters, "FcPatternAddCharSet");
    take(addBool, "FcPatternAddBool");
    take(makeCharacters, "FcCharSetCreate");
    take(dropCharacters, "FcCharSetDestroy");
    take(addCharacter, "FcCharSetAddChar");
    take(hasCharacter, "FcCharSetHasChar");
    take(applySettings, "FcConfigSubstitute");
    take(applyDefaults, "FcDefaultSubstitute");
    take(match, "FcFontMatch");
    take(getText, "FcPatternGetString");
    take(getNumber, "FcPatternGetInteger");
    take(getCharacters, "FcPatternGetCharSet");
    settings = isWhole ? loadSettings() : nullptr;
  }

  /// The library is never unloaded, because it keeps data that its threads may use.
  ~Impl() {
    if (settings != nullptr) {
      dropSettings(settings);
    }
  }
  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;

  InstalledFont find(std::uint32_t character) const {
    Pattern* const wanted = makePattern();
    Characters* const characters = makeCharacters();
    addCharacter(characters, character);
    addCharacters(wanted, "charset", characters);
    addBool(wanted, "scalable", kTrue);
    applySettings(settings, wanted, kMatch);
    applyDefaults(wanted);
    int result = kMatch;
    Pattern* const found = match(settings, wanted, &result);
    InstalledFont font;
    if (found != nullptr) {
      font = fontOf(found, character);
      dropPattern(found);
    }
    dropCharacters(characters);
    dropPattern(wanted);
    return font;
  }

  Settings* settings = nullptr;

 private:
  /// The best match may lack the character if no font has it.
  InstalledFont fontOf(Pattern* found, std::uint32_t character) const {
    InstalledFont font;
    unsigned char* path = nullptr;
    Characters* characters = nullptr;
    if (getCharacters(found, "charset", 0, &characters) == kMatch && hasCharacter(characters, character) == kTrue &&
        getText(found, "file", 0, &path) == kMatch) {
      font.path = reinterpret_cast<const char*>(path);
      getNumber(found, "index", 0, &font.index);
    }
    return font;
  }

  void* const library = ::dlopen("libfontconfig.so.1", RTLD_LAZY | RTLD_LOCAL);
  Settings* (*loadSettings)() = nullptr;
  void (*dropSettings)(Settings*) = nullptr;
  Pattern* (*makePattern)() = nullptr;
  void (*dropPattern)(Pattern*) = nullptr;
  int (*addCharacters)(Pattern*, const char*, const Characters*) = nullptr;
  int (*addBool)(Pattern*, const char*, int) = nullptr;
  Characters* (*makeCharacters)() = nullptr;
  void (*dropCharacters)(Characters*) = nullptr;
  int (*addCharacter)(Characters*, std::uint32_t) = nullptr;
  int (*hasCharacter)(const Characters*, std::uint32_t) = nullptr;
  int (*applySettings)(Settings*, Pattern*, int) = nullptr;
  void (*applyDefaults)(Pattern*) = nullptr;
  Pattern* (*match)(Settings*, Pattern*, int*) = nullptr;
  int (*getText)(const Pattern*, const char*, int, unsigned char**) = nullptr;
  int (*getNumber)(const Pattern*, const char*, int, int*) = nullptr;
  int (*getCharacters)(const Pattern*, const char*, int, Characters**) = nullptr;
};

InstalledFonts::InstalledFonts() = default;
InstalledFonts::~InstalledFonts() = default;

InstalledFont InstalledFonts::find(std::uint32_t character) {
  if (impl == nullptr) {
    impl = std::make_unique<Impl>();
  }
  return impl->settings == nullptr ? InstalledFont() : impl->find(character);
}

}  // namespace tesh::bramel

#endif
