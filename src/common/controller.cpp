#include "controller.h"

#include "field_comparison.h"
#include "published_fields.h"

using ovra::data_transfer::ServiceObject;

ServiceObject Controller::Functions::toServiceObject() const { return field::formOf<Functions>(*this); }

ServiceObject Controller::toServiceObject() const { return field::formOf<Controller>(*this); }

ServiceObject Controller::schema() { return field::schemaOf<Controller>(); }

bool sameForm(const Controller& one, const Controller& other) {
  return field::sameFields<Controller>(one, other, field::Progress::COUNTS);
}

bool sameStructure(const Controller& one, const Controller& other) {
  return field::sameFields<Controller>(one, other, field::Progress::IGNORED);
}
