#include <iostream>

#include "commands/command.h"
#include "document/api_document.h"
#include "manual/manual_page.h"

/// Writes the page of the manual.
int main(int argc, char** argv) {
  using namespace mirnctl;
  if (argc != 2) {
    std::cerr << "usage: mirnctl-manual DATE\n";
    return 2;
  }
  const ApiDocument document(embeddedDocument());
  std::cout << manualPage(commandsOf(document), argv[1]) << std::flush;
  return std::cout ? 0 : 1;
}
