#include "modules/ModuleCatalogue.h"

#include <algorithm>
#include <array>

namespace zentrova {

namespace {

constexpr std::array catalogue{
    CatalogueEntry{connectivityEntry, "Connectivity & favorites modules", true},
    CatalogueEntry{displaySliderEntry, "Brightness", false},
    CatalogueEntry{audioSliderEntry, "Audio", false},
    CatalogueEntry{mediaEntry, "Media", true},
    CatalogueEntry{powerEntry, "Power module", true},
};

}  // namespace

std::span<const CatalogueEntry> moduleCatalogue() noexcept {
  return catalogue;
}

const CatalogueEntry* catalogueEntry(const platform::Value& identifier) noexcept {
  const auto text = identifier.asString();
  if (!text) return nullptr;
  const auto* const found = std::ranges::find(catalogue, *text, &CatalogueEntry::identifier);
  return found == catalogue.end() ? nullptr : found;
}

bool isPinnedEntry(const platform::Value& identifier) noexcept {
  const auto text = identifier.asString();
  return text && text->find(',') != std::string_view::npos;
}

}  // namespace zentrova
