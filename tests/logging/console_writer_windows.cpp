#include <fcntl.h>
#include <io.h>

#include "logging/console_writer.h"

void makeWide(std::FILE* file) { ::_setmode(::_fileno(file), _O_U16TEXT); }
