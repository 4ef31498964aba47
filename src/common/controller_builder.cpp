#include "controller_builder.h"

Controller Controller::Builder::build() const {
  return builtOrAssert("src\\common\\controller_builder", __LINE__);
}

Controller::Functions Controller::Functions::Builder::build() const {
  return builtOrThrow<InitializationException>();
}
