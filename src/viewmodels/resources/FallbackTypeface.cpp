// Takes outlines of installed typefaces by FreeType, which JUCE links too, and selects among them by fontconfig. JUCE's
// own fallback is no help: its typefaces draw a box for each missing character.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewmodels/resources/FallbackTypeface.h"

#ifdef __linux__

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include <algorithm>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "viewmodels/resources/InstalledFonts.h"

namespace tesh::bramel {

// Members of a named class, so they need names too.
namespace glyphs {

struct Library {
  Library() { isOpen = FT_Init_FreeType(&handle) == 0; }
  ~Library() {
    if (isOpen) {
      FT_Done_FreeType(handle);
    }
  }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  FT_Library handle = nullptr;
  bool isOpen = false;
};

struct CloseFace {
  void operator()(FT_Face face) const { FT_Done_Face(face); }
};
using Face = std::unique_ptr<FT_FaceRec, CloseFace>;

/// A character's outline and advance at a size of 1 em.
struct Glyph {
  juce::Path outline;
  float advance = 0.0F;
};

}  // namespace glyphs

namespace {

using glyphs::Face;
using glyphs::Glyph;

bool has(const Face& face, juce::juce_wchar character) {
  return FT_Get_Char_Index(face.get(), static_cast<FT_ULong>(character)) != 0;
}

float number(FT_Pos value) { return static_cast<float>(value); }

/// Callbacks of FreeType for the segments of an outline, whose y axis points upwards.
int moveTo(const FT_Vector* to, void* path) {
  static_cast<juce::Path*>(path)->startNewSubPath(number(to->x), -number(to->y));
  return 0;
}
int lineTo(const FT_Vector* to, void* path) {
  static_cast<juce::Path*>(path)->lineTo(number(to->x), -number(to->y));
  return 0;
}
int quadraticTo(const FT_Vector* control, const FT_Vector* to, void* path) {
  static_cast<juce::Path*>(path)->quadraticTo(number(control->x), -number(control->y), number(to->x), -number(to->y));
  return 0;
}
int cubicTo(const FT_Vector* first, const FT_Vector* second, const FT_Vector* to, void* path) {
  static_cast<juce::Path*>(path)->cubicTo(number(first->x), -number(first->y), number(second->x), -number(second->y),
                                          number(to->x), -number(to->y));
  return 0;
}

std::optional<Glyph> glyphOf(const Face& face, juce::juce_wchar character) {
  constexpr FT_Int32 kPlain = FT_LOAD_NO_SCALE | FT_LOAD_NO_BITMAP | FT_LOAD_NO_HINTING;
  const FT_UInt index = FT_Get_Char_Index(face.get(), static_cast<FT_ULong>(character));
  if (index == 0 || FT_Load_Glyph(face.get(), index, kPlain) != 0 || face->glyph->format != FT_GLYPH_FORMAT_OUTLINE) {
    return std::nullopt;
  }
  FT_Outline_Funcs functions{moveTo, lineTo, quadraticTo, cubicTo, 0, 0};
  Glyph glyph;
  if (FT_Outline_Decompose(&face->glyph->outline, &functions, &glyph.outline) != 0) {
    return std::nullopt;
  }
  glyph.outline.closeSubPath();
  const float em = 1.0F / static_cast<float>(face->units_per_EM);
  glyph.outline.applyTransform(juce::AffineTransform::scale(em));
  glyph.advance = em * number(face->glyph->metrics.horiAdvance);
  return glyph;
}

}  // namespace

class InstalledGlyphs {
 public:
  /// Null if no installed typeface has the character.
  const Glyph* find(juce::juce_wchar character) {
    const auto known = loaded.find(character);
    const auto& glyph =
        known == loaded.end() ? loaded.emplace(character, load(character)).first->second : known->second;
    return glyph.has_value() ? &*glyph : nullptr;
  }

  Face open(std::span<const std::uint8_t> bytes) const {
    FT_Face face = nullptr;
    const bool isOpen = library.isOpen && FT_New_Memory_Face(library.handle, bytes.data(),
                                                             static_cast<FT_Long>(bytes.size()), 0, &face) == 0;
    return Face(isOpen ? face : nullptr);
  }

 private:
  std::optional<Glyph> load(juce::juce_wchar character) {
    const auto isThere = [character](const Face& face) { return has(face, character); };
    auto found = std::find_if(faces.begin(), faces.end(), isThere);
    if (found == faces.end()) {
      const InstalledFont font = fonts.find(static_cast<std::uint32_t>(character));
      FT_Face face = nullptr;
      if (font.path.empty() || !library.isOpen ||
          FT_New_Face(library.handle, font.path.c_str(), font.index, &face) != 0) {
        return std::nullopt;
      }
      faces.emplace_back(face);
      found = faces.end() - 1;
    }
    return FT_IS_SCALABLE(found->get()) ? glyphOf(*found, character) : std::nullopt;
  }

  glyphs::Library library;  // Before the faces, which must be destroyed first.
  InstalledFonts fonts;
  std::vector<Face> faces;
  std::map<juce::juce_wchar, std::optional<Glyph>> loaded;
};

namespace {

/// Glyph numbers are the characters' codes, as in JUCE's own typefaces on this system.
class FallbackTypeface final : public juce::Typeface {
 public:
  FallbackTypeface(juce::Typeface::Ptr ownFace, std::span<const std::uint8_t> ownBytes,
                   std::shared_ptr<InstalledGlyphs> ownInstalled)
      : Typeface(ownFace->getName(), ownFace->getStyle()),
        face(std::move(ownFace)),
        bytes(ownBytes),
        installed(std::move(ownInstalled)) {}

  float getAscent() const override { return face->getAscent(); }
  float getDescent() const override { return face->getDescent(); }
  float getHeightToPointsFactor() const override { return face->getHeightToPointsFactor(); }

  float getStringWidth(const juce::String& text) override {
    float width = 0.0F;
    forEachRun(text, [&](const juce::String& run, const Glyph* borrowed) {
      width += borrowed == nullptr ? face->getStringWidth(run) : em() * borrowed->advance;
    });
    return width;
  }

  void getGlyphPositions(const juce::String& text, juce::Array<int>& glyphs, juce::Array<float>& offsets) override {
    offsets.add(0.0F);
    forEachRun(text, [&](const juce::String& run, const Glyph* borrowed) {
      const float start = offsets.getLast();
      if (borrowed != nullptr) {
        glyphs.add(static_cast<int>(run[0]));
        offsets.add(start + em() * borrowed->advance);
        return;
      }
      juce::Array<float> ownOffsets;
      face->getGlyphPositions(run, glyphs, ownOffsets);
      for (int i = 1; i < ownOffsets.size(); ++i) {
        offsets.add(start + ownOffsets[i]);
      }
    });
  }

  bool getOutlineForGlyph(int number, juce::Path& path) override {
    const Glyph* const borrowed = borrow(static_cast<juce::juce_wchar>(number));
    if (borrowed == nullptr) {
      return face->getOutlineForGlyph(number, path);
    }
    path = borrowed->outline;
    path.applyTransform(juce::AffineTransform::scale(em()));
    return true;
  }

  juce::EdgeTable* getEdgeTableForGlyph(int number, const juce::AffineTransform& transform, float height) override {
    juce::Path path;
    if (borrow(static_cast<juce::juce_wchar>(number)) == nullptr) {
      return face->getEdgeTableForGlyph(number, transform, height);
    }
    if (!getOutlineForGlyph(number, path) || path.isEmpty()) {
      return nullptr;
    }
    const auto bounds = path.getBoundsTransformed(transform).getSmallestIntegerContainer().expanded(1, 0);
    return new juce::EdgeTable(bounds, path, transform);
  }

 private:
  /// Null if the own typeface has the character, or if no typeface has it: a box is then drawn.
  const Glyph* borrow(juce::juce_wchar character) const {
    constexpr juce::juce_wchar kFirstOutsideAscii = 0x80;
    if (character < kFirstOutsideAscii || characters() == nullptr || has(characters(), character)) {
      return nullptr;
    }
    return installed->find(character);
  }

  /// The own typeface in FreeType, opened for the first character that it may lack; null if that fails.
  const Face& characters() const {
    if (!wasOpened) {
      wasOpened = true;
      ownCharacters = installed->open(bytes);
    }
    return ownCharacters;
  }

  /// Size of the em in heights of the typeface.
  float em() const {
    return static_cast<float>(ownCharacters->units_per_EM) /
           static_cast<float>(ownCharacters->ascender - ownCharacters->descender);
  }

  /// Calls `use` with each borrowed character and its glyph, and with null and each run of own characters.
  template <typename Use>
  void forEachRun(const juce::String& text, Use use) const {
    auto start = text.getCharPointer();
    auto at = start;
    const auto useUntilHere = [&] {
      if (at != start) {
        use(juce::String(start, at), nullptr);
      }
    };
    while (!at.isEmpty()) {
      if (const Glyph* const borrowed = borrow(*at)) {
        useUntilHere();
        start = at++;
        use(juce::String(start, at), borrowed);
        start = at;
      } else {
        ++at;
      }
    }
    useUntilHere();
  }

  const juce::Typeface::Ptr face;
  const std::span<const std::uint8_t> bytes;
  const std::shared_ptr<InstalledGlyphs> installed;
  mutable Face ownCharacters;  ///< Destroyed before the library in `installed`.
  mutable bool wasOpened = false;
};

}  // namespace

std::shared_ptr<InstalledGlyphs> makeInstalledGlyphs() { return std::make_shared<InstalledGlyphs>(); }

juce::Typeface::Ptr withFallback(juce::Typeface::Ptr face, std::span<const std::uint8_t> bytes,
                                 std::shared_ptr<InstalledGlyphs> installed) {
  return face == nullptr ? face : new FallbackTypeface(std::move(face), bytes, std::move(installed));
}

}  // namespace tesh::bramel

#else

namespace tesh::bramel {

std::shared_ptr<InstalledGlyphs> makeInstalledGlyphs() { return nullptr; }

juce::Typeface::Ptr withFallback(juce::Typeface::Ptr face, std::span<const std::uint8_t> /*bytes*/,
                                 std::shared_ptr<InstalledGlyphs> /*installed*/) {
  return face;
}

}  // namespace tesh::bramel

#endif
