#include "raidlevelsupport.h"

#include <string>

#include "field_comparison.h"
#include "published_fields.h"

using ovra::data_transfer::ServiceObject;

RaidLevelSupport RaidLevelSupport::Builder::build() const {
  return builtOrAssert("src\\common\\raidlevelsupport", __LINE__);
}

namespace {

constexpr std::int32_t kNoDiskCount =
    -1;  ///< Its strip size is for no number of disks and is never published.

std::wstring textOf(const boost::optional<StripSize>& size) {
  return toText(size.value_or(StripSize::SIZE_UNKNOWN));
}

StripSizeByDisks publishedOf(StripSizeByDisks sizes) {
  sizes.erase(kNoDiskCount);
  return sizes;
}

}  // namespace

struct RaidLevelSupport::StripSizeOrUnknown {
  using Size = boost::optional<StripSize>;

  static void put(PublishedForm& form, const wchar_t* key, const Size& size) { form.text(key, textOf(size)); }
  static void describe(ServiceObject& schema) { field::kinds::Word<StripSize>::describe(schema); }
  static bool same(const Size& one, const Size& other, field::Progress) {
    return textOf(one) == textOf(other);
  }
};

struct RaidLevelSupport::StripSizesByDisks {
  using Sizes = boost::optional<StripSizeByDisks>;

  static void put(PublishedForm& form, const wchar_t* key, const Sizes& sizes) {
    ServiceObject object = ServiceObject::object();
    for (const auto& [disks, size] : publishedOf(*sizes))
      object.member(std::to_wstring(disks)) = toText(size);
    form.part(key, std::move(object));
  }

  static void describe(ServiceObject& schema) {
    field::kinds::describeAs(schema, L"object");
    field::kinds::Word<StripSize>::describe(schema.member(L"additionalProperties"));
  }

  static bool same(const Sizes& one, const Sizes& other, field::Progress) {
    return publishedOf(*one) == publishedOf(*other);
  }
};

ServiceObject RaidLevelSupport::toServiceObject() const { return field::formOf<RaidLevelSupport>(*this); }

ServiceObject RaidLevelSupport::schema() { return field::schemaOf<RaidLevelSupport>(); }

bool sameForm(const RaidLevelSupport& one, const RaidLevelSupport& other) {
  if (!one.supported() && !other.supported()) return true;
  return field::sameFields<RaidLevelSupport>(one, other, field::Progress::COUNTS);
}

bool sameStructure(const RaidLevelSupport& one, const RaidLevelSupport& other) {
  return sameForm(one, other);
}
