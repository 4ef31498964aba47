#ifndef MIRN_HOST_CONTROLS_SIMULATOR_CONTROLS_H
#define MIRN_HOST_CONTROLS_SIMULATOR_CONTROLS_H

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "controls/disk_names.h"
#include "ServiceObject.h"

namespace host {

struct SimulatorControl;

/// What a control tells of itself. Schemas are JSON Schema as JSON text.
struct ControlDescription {
  std::string summary;
  std::string body;             ///< Schema of its arguments; empty: it has none.
  bool needsBody = true;        ///< Not all arguments may be missing.
  std::string answer;           ///< Schema of what it tells; empty: nothing.
  bool mayTellNothing = false;  ///< With an answer: sometimes there is none.
};

/// What a simulated storage library can be told beside its operations. Found by name when the module is
/// there, so that the host needs no such library. Constant after construction, safe from any thread.
class SimulatorControls {
 public:
  using Value = ovra::data_transfer::ServiceObject;

  /// The function of this name, which stays where it is; null when there is none.
  using Finder = std::function<void*(const char* name)>;

  /// There are none.
  SimulatorControls() = default;

  /// Those whose function is found.
  explicit SimulatorControls(const Finder& find);

  bool isEmpty() const { return m_functions.empty(); }
  std::vector<std::wstring> names() const;

  /// A list of objects with `name` and `arguments`, ordered by name.
  Value describe() const;

  /// Of the control `name`, one of the names.
  ControlDescription describe(const std::wstring& name) const;

  /// What the control `name`, one of the names, tells; null when it tells nothing. `arguments` is an object,
  /// or null; `disks` leads from a published id to a name that the library knows, null when nothing does.
  /// Raises a `Refusal`: 400 for wrong arguments, otherwise with the status that fits what the library says.
  Value run(const std::wstring& name, const Value& arguments, DiskNames* disks = nullptr) const;

 private:
  struct Found {
    const SimulatorControl* control;
    void* function;
  };

  std::map<std::wstring, Found> m_functions;
  void* m_lastError = nullptr;
};

}  // namespace host

#endif
