#include "logging/console_writer.h"

void makeWide(std::FILE*) {}
