#include "support/given_reader.h"

#include "vex_exception.h"
#include "vex_info.h"

MirnSnapshot GivenReader::picture;
std::vector<std::string> GivenReader::asked;

namespace {

template <class Object>
std::string handlesOf(const std::vector<Object>& objects) {
  std::string text;
  for (const Object& object : objects) text += (text.empty() ? "" : " ") + std::to_string(object.handle());
  return text;
}

class Reader : public IVexInfo {
 public:
  ~Reader() override { note("deleted"); }

  Version getVersion() const override {
    note("getVersion()");
    if (!GivenReader::picture.version) throw VexException(VEX_STATUS_FAILED);
    return *GivenReader::picture.version;
  }
  std::vector<Controller> getControllers() const override {
    return noted("getControllers()", &MirnSnapshot::controllers);
  }
  std::vector<EndDevice> getEndDevices(VEX_HANDLE handle, VEX_SCOPE_TYPE scope,
                                       std::string filter) const override {
    return noted("getEndDevices" + arguments(handle, scope, filter), &MirnSnapshot::endDevices);
  }
  std::vector<Array> getArrays(VEX_HANDLE handle, VEX_SCOPE_TYPE scope, std::string filter) const override {
    return noted("getArrays" + arguments(handle, scope, filter), &MirnSnapshot::arrays);
  }
  std::vector<Volume> getVolumes(VEX_HANDLE handle, VEX_SCOPE_TYPE scope, std::string filter) const override {
    return noted("getVolumes" + arguments(handle, scope, filter), &MirnSnapshot::volumes);
  }
  std::vector<Port> getPorts(VEX_HANDLE handle, VEX_SCOPE_TYPE scope) const override {
    return noted("getPorts(" + std::to_string(handle) + ", " + std::to_string(scope) + ")",
                 &MirnSnapshot::ports);
  }
  std::vector<Raid> getRaids() const override { return noted("getRaids()", &MirnSnapshot::raids); }
  RaidLevelSupport getRaidLevel(const Raid& raid, RaidLevel level) const override {
    note("getRaidLevel()");
    return GivenReader::picture.raidLevels.at(raid.id()).at(level);
  }
  ControllerIds getControllerArrays(const std::vector<Controller>& controllers) const override {
    return noted("getControllerArrays(" + handlesOf(controllers) + ")", &MirnSnapshot::controllerArrays);
  }
  ControllerIds getControllerPorts(const std::vector<Controller>& controllers) const override {
    return noted("getControllerPorts(" + handlesOf(controllers) + ")", &MirnSnapshot::controllerPorts);
  }
  ControllerIds getControllerVolumes(const std::vector<Controller>& controllers) const override {
    return noted("getControllerVolumes(" + handlesOf(controllers) + ")", &MirnSnapshot::controllerVolumes);
  }
  RaidLevels getRaidLevels(const std::vector<Raid>& raids) const override {
    return noted("getRaidLevels(" + handlesOf(raids) + ")", &MirnSnapshot::raidLevels);
  }
  void open() override { note("open()"); }
  void close() override { note("close()"); }

 private:
  static void note(const std::string& operation) { GivenReader::asked.push_back(operation); }

  template <class Part>
  static Part noted(const std::string& operation, Part MirnSnapshot::*part) {
    note(operation);
    return GivenReader::picture.*part;
  }

  static std::string arguments(VEX_HANDLE handle, VEX_SCOPE_TYPE scope, const std::string& filter) {
    return "(" + std::to_string(handle) + ", " + std::to_string(scope) + ", \"" + filter + "\")";
  }
};

}  // namespace

std::unique_ptr<IVexInfo> makeVexInfo(const std::shared_ptr<KnownTexts>& /*texts*/) {
  return std::make_unique<Reader>();
}
