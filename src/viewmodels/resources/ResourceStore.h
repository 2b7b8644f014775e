// The fonts and images that the library carries, each decoded once and then handed out as copies that share it.
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
  /// Gives the bytes of a resource of type "PNG", "TTF" or "OTF"; none if there is no such resource. Letter case of the
  /// name does not matter.
  /// Bytes of fonts must outlive these.
  using Lookup = std::function<std::span<const std::uint8_t>(std::string_view type, std::string_view name)>;

  /// The resources that the library carries.
  static Lookup embedded() { return platform::findEmbeddedResource; }

  explicit ResourceStore(Lookup resourceLookup = embedded()) : lookup(std::move(resourceLookup)) {}

  /// Makes a face available to `getFont`. Does nothing if it is there already, or if there is no such resource.
  void addFont(const std::string& name);

  /// A boxed `juce::Font`: of the face added under `name`, else of the default face.
  cofu::core::boxed::Box getFont(const std::string& name, double height) const;

  /// A boxed `juce::Image` of the set for `scale` (1 or 2); null if that set has no such image. "NAME_5" may also be
  /// the sixth frame of the resources NAME_STRIP_0, NAME_STRIP_1 and so on, in which square frames lie side by side.
  cofu::core::boxed::Box getImage(const std::string& name, int scale);

 private:
  void addFramesOf(const std::string& base, const std::string& set);

  Lookup lookup;
  std::shared_ptr<InstalledGlyphs> installed = makeInstalledGlyphs();
  std::map<std::string, cofu::core::boxed::Box> fonts;   ///< By their names as given; boxed `juce::Font`.
  std::map<std::string, cofu::core::boxed::Box> images;  ///< By the names of their resources; boxed `juce::Image`.
};

}  // namespace tesh::bramel
