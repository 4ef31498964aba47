#include "port.h"

#include "field_comparison.h"
#include "published_fields.h"

using ovra::data_transfer::ServiceObject;

Port Port::Builder::build() const& { return builtOrAssert("src\\common\\port", __LINE__); }

Port Port::Builder::build() && { return movedOrAssert("src\\common\\port", __LINE__); }

ServiceObject Port::toServiceObject() const { return field::formOf<Port>(*this); }

ServiceObject Port::schema() { return field::schemaOf<Port>(); }

bool sameForm(const Port& one, const Port& other) {
  return field::sameFields<Port>(one, other, field::Progress::COUNTS);
}

bool sameStructure(const Port& one, const Port& other) {
  return field::sameFields<Port>(one, other, field::Progress::IGNORED);
}
