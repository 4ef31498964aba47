#include "version.h"

#include "field_comparison.h"
#include "published_fields.h"

using ovra::data_transfer::ServiceObject;

Version Version::Builder::build() const { return builtOrAssert("src\\common\\version", __LINE__); }

ServiceObject Version::toServiceObject() const { return field::formOf<Version>(*this); }

ServiceObject Version::schema() { return field::schemaOf<Version>(); }

bool sameForm(const Version& one, const Version& other) {
  return field::sameFields<Version>(one, other, field::Progress::COUNTS);
}

bool sameStructure(const Version& one, const Version& other) {
  return field::sameFields<Version>(one, other, field::Progress::IGNORED);
}
