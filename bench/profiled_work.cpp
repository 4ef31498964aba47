#include <valgrind/callgrind.h>

#include <cstdlib>
#include <exception>
#include <functional>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>

#include "library_calls.h"
#include "mirn_session.h"
#include "renaming.h"
#include "running_plugin.h"
#include "scripted_library/large_machine.h"

// Does one thing on a machine of so many devices, twice, and a third time under the eyes of callgrind
// (`--instr-atstart=no`); bench/profile.py reads what it saw. Usage: profiled_work WORK DEVICES, the work by
// a name of `kWork`.

namespace {

void profile(const std::function<void()>& work) {
  work();
  work();
  CALLGRIND_START_INSTRUMENTATION;
  work();
  CALLGRIND_STOP_INSTRUMENTATION;
}

void onSession(ScriptedMachine machine, const std::function<void(MirnSession&)>& work) {
  ScriptedLibrary& library = ScriptedLibrary::fresh();
  library.recordCalls(false);
  library.setMachine(std::move(machine));
  MirnSession session;
  session.refresh(false);
  profile([&] { work(session); });
}

void takeSnapshot(ScriptedMachine machine) {
  onSession(std::move(machine), [](MirnSession& session) { session.takeSnapshot(); });
}

void refresh(ScriptedMachine machine) {
  onSession(std::move(machine), [](MirnSession& session) { session.refresh(false); });
}

void callLibrary(ScriptedMachine machine) {
  onSession(std::move(machine), [](MirnSession&) { callLibraryAsASnapshotDoes(); });
}

void rename(ScriptedMachine machine) {
  RunningPlugin running(std::move(machine));
  Renaming renaming(running);
  profile([&] { renaming.rename(); });
}

void get(ScriptedMachine machine, const wchar_t* path) {
  RunningPlugin running(std::move(machine));
  profile([&] { running.get(path); });
}

const std::map<std::string, std::function<void(ScriptedMachine)>> kWork = {
    {"snapshot", takeSnapshot},
    {"refresh", refresh},
    {"library", callLibrary},
    {"rename", rename},
    {"get-devices", [](ScriptedMachine machine) { get(std::move(machine), L"mirn/enddevices"); }},
    {"get-volumes", [](ScriptedMachine machine) { get(std::move(machine), L"mirn/volumes"); }}};

}  // namespace

int main(int count, char** arguments) try {
  if (count != 3) throw std::invalid_argument("usage: profiled_work WORK DEVICES");
  kWork.at(arguments[1])(large_machine::make(std::stoul(arguments[2])));
  return EXIT_SUCCESS;
} catch (const std::exception& error) {
  std::cerr << error.what() << std::endl;
  return EXIT_FAILURE;
}
