#include <chrono>
#include <memory>

#include "commands/command_line.h"
#include "destination/profile.h"
#include "document/api_document.h"
#include "process_start.h"
#include "terminal/terminal.h"
#include "wire/client.h"

int main(int argc, char** argv) {
  using namespace mirnctl;
  Terminal terminal = processTerminal();
  try {
    const ApiDocument document(embeddedDocument());
    const auto makeClient = [](const Destination& destination, std::chrono::seconds patience) {
      return std::make_unique<Client>(destination, patience);
    };
    return static_cast<int>(
        runCommand(programArguments(argc, argv), document, surroundings(), makeClient, terminal));
  } catch (const std::exception& failure) {
    terminal.err << "mirnctl: " << failure.what() << std::endl;
    return static_cast<int>(ExitStatus::kInternal);
  }
}
