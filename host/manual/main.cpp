#include <functional>
#include <iostream>
#include <map>
#include <string>

#include "configuration/configuration_file.h"
#include "manual/manual_pages.h"

/// Writes what is made from the table of options, by the name of the file that is wanted.
int main(int argc, char** argv) {
  const std::map<std::string, std::function<std::string(const std::string&)>> files{
      {"mirn-host.8", host::programPage},
      {"mirn-host.conf.5", host::configurationPage},
      {"sample.conf", [](const std::string&) { return host::sampleConfiguration(); }},
  };
  const auto wanted = argc == 3 ? files.find(argv[1]) : files.end();
  if (wanted == files.end()) {
    std::cerr << "usage: mirn-host-manual mirn-host.8|mirn-host.conf.5|sample.conf DATE\n";
    return 2;
  }
  std::cout << wanted->second(argv[2]) << std::flush;
  return std::cout ? 0 : 1;
}
