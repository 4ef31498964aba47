#include "volume.h"

#include "field_comparison.h"
#include "published_fields.h"

using ovra::data_transfer::ServiceObject;

Volume Volume::Builder::build() const& { return builtOrThrow<InitializationException>(); }

Volume Volume::Builder::build() && { return movedOrThrow<InitializationException>(); }

ServiceObject Volume::toServiceObject() const { return field::formOf<Volume>(*this); }

ServiceObject Volume::schema() { return field::schemaOf<Volume>(); }

bool sameForm(const Volume& one, const Volume& other) {
  return field::sameFields<Volume>(one, other, field::Progress::COUNTS);
}

bool sameStructure(const Volume& one, const Volume& other) {
  return field::sameFields<Volume>(one, other, field::Progress::IGNORED);
}
