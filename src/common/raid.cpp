#include "raid.h"

#include <algorithm>
#include <cstddef>

#include "field_comparison.h"
#include "published_fields.h"

using ovra::data_transfer::ServiceObject;

Raid Raid::Builder::build() const { return builtOrAssert("src\\common\\raid", __LINE__); }

bool Raid::showsLevels() const {
  return m_range != RaidRange::kInfo &&
         std::any_of(m_levels.begin(), m_levels.end(), [](const auto& level) { return level.supported(); });
}

/// Without gaps for the levels that are not supported.
struct Raid::SupportedLevels {
  using Levels = std::vector<RaidLevelSupport>;

  static void put(PublishedForm& form, const wchar_t* key, const Levels& levels) {
    form.part(key, listOf(
                       levels, [](const auto& level) { return level.supported(); },
                       [](const auto& level) { return level.toServiceObject(); }));
  }

  static void describe(ServiceObject& schema) {
    field::kinds::describeAs(schema, L"array");
    field::kinds::describeObject(schema.member(L"items"), RaidLevelSupport::schema());
  }

  static bool same(const Levels& one, const Levels& other, field::Progress) {
    const Levels left = supportedOf(one);
    const Levels right = supportedOf(other);
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](const auto& a, const auto& b) { return sameForm(a, b); });
  }

  static Levels supportedOf(Levels levels) {
    levels.erase(
        std::remove_if(levels.begin(), levels.end(), [](const auto& level) { return !level.supported(); }),
        levels.end());
    return levels;
  }
};

ServiceObject Raid::toServiceObject() const {
  if (m_range == RaidRange::kLevel && m_levels.empty()) return ServiceObject::null();
  return field::formOf<Raid>(*this);
}

ServiceObject Raid::schema() { return field::schemaOf<Raid>(); }

bool sameForm(const Raid& one, const Raid& other) {
  return field::sameFields<Raid>(one, other, field::Progress::COUNTS);
}

bool sameStructure(const Raid& one, const Raid& other) {
  return field::sameFields<Raid>(one, other, field::Progress::IGNORED);
}
