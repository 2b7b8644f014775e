// The library's fonts and images, each decoded once; callers get copies that share it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "core/Boxed.h"
#include "platform/EmbeddedResources.h"
#include "viewmodels/resources/FallbackTypeface.h"

namespace tesh::bramel {

/// Message thread only. Must be destroyed before JUCE is shut down.
class ResourceStore {
 public:
  /// Returns the bytes of a resource of type "PNG", "TTF" or "OTF"; none if there is no such resource. The name's case
  /// does not matter.
  /// The bytes of fonts must outlive their typefaces.
  using Lookup = std::function<std::span<const std::uint8_t>(std::string_view type, std::string_view name)>;

  /// The resources in the library.
  static Lookup embedded() { return platform::findEmbeddedResource; }

  explicit ResourceStore(Lookup resourceLookup = embedded()) : lookup(std::move(resourceLookup)) {}

  /// Makes a typeface available to `getFont`. Does nothing if it already is, or if there is no such resource.
  void addFont(const std::string& name);

  /// A boxed `juce::Font` of the typeface that was added as `name`, else of the default typeface.
  cofu::core::boxed::Box getFont(const std::string& name, double height) const;

  /// A boxed `juce::Image` from the set for `scale` (1 or 2); null if that set has no such image. "NAME_5" may also be
  /// the sixth frame of the strips NAME_STRIP_0, NAME_STRIP_1 and so on, in which square frames are side by side.
  cofu::core::boxed::Box getImage(const std::string& name, int scale);

 private:
  void addFramesOf(const std::string& base, const std::string& set);

  Lookup lookup;
  std::shared_ptr<InstalledGlyphs> installed = makeInstalledGlyphs();
  std::map<std::string, cofu::core::boxed::Box> fonts;   ///< By their names as given; boxed `juce::Font`.
  std::map<std::string, cofu::core::boxed::Box> images;  ///< By the names of their resources; boxed `juce::Image`.
};

}  // namespace tesh::bramel
