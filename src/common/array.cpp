#include "array.h"

#include "field_comparison.h"
#include "published_fields.h"

using ovra::data_transfer::ServiceObject;

Array Array::Builder::build() const& { return builtOrAssert("src\\common\\array", __LINE__); }

Array Array::Builder::build() && { return movedOrAssert("src\\common\\array", __LINE__); }

ServiceObject Array::toServiceObject() const { return field::formOf<Array>(*this); }

ServiceObject Array::schema() { return field::schemaOf<Array>(); }

bool sameForm(const Array& one, const Array& other) {
  return field::sameFields<Array>(one, other, field::Progress::COUNTS);
}

bool sameStructure(const Array& one, const Array& other) {
  return field::sameFields<Array>(one, other, field::Progress::IGNORED);
}
