#include "scenario/scenario.h"

#include <fstream>
#include <iterator>

#include "scenario/object_reader.h"
#include "scenario/object_writer.h"
#include "scenario/parse.h"
#include "scenario/relate.h"

namespace simulator {
namespace {

template <class T>
void settle(Loading& loading, Table<T>& table) {
  for (T& object : loading.waiting<T>()) {
    const Handle handle = object.handle;
    table.add(handle, std::move(object));
  }
}

}  // namespace

boost::json::value parseJson(std::string_view text) {
  boost::json::error_code error;
  boost::json::stream_parser parser;
  const std::size_t taken = parser.write_some(text.data(), text.size(), error);
  if (!error && taken < text.size()) error = boost::json::error::extra_data;
  if (!error) parser.finish(error);
  if (error) throw NotJson("not JSON at byte " + std::to_string(taken) + ": " + error.message());
  return parser.release();
}

Machine readScenario(std::string_view json) { return readParsedScenario(parseJson(json)); }

Machine readParsedScenario(const boost::json::value& file) {
  Machine machine;
  Loading loading;
  ObjectReader<Machine>(machine, file, "", loading).read();
  loading.number(machine.nextHandle);
  loading.resolve();
  settle(loading, machine.engines);
  settle(loading, machine.controllers);
  settle(loading, machine.devices);
  settle(loading, machine.ports);
  settle(loading, machine.arrays);
  settle(loading, machine.volumes);
  relate(machine, loading);
  return machine;
}

std::string writeScenario(const Machine& machine) {
  return boost::json::serialize(ObjectWriter<Machine>(machine, IdsOf(machine)).write()) + "\n";
}

Machine loadScenario(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw ScenarioError(path + ": cannot be read");
  const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  if (file.bad()) throw ScenarioError(path + ": cannot be read");
  try {
    return readScenario(text);
  } catch (const ScenarioError& error) {
    throw ScenarioError(path + ": " + error.what());
  }
}

}  // namespace simulator
