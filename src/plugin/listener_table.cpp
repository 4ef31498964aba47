#include "listener_table.h"

#include "arrays_listener.h"
#include "basic_listener.h"
#include "controllers_listener.h"
#include "disks_listener.h"
#include "enddevices_listener.h"
#include "events_listener.h"
#include "plugin_identity.h"
#include "ports_listener.h"
#include "raids_listener.h"
#include "volumes_listener.h"

namespace {

using Listener = std::unique_ptr<IListener>;

template <class Concrete>
Listener reading(IMirnSession& session, SessionActions&) {
  return std::make_unique<Concrete>(&session);
}

template <class Concrete>
Listener acting(IMirnSession& session, SessionActions& actions) {
  return std::make_unique<Concrete>(&session, &actions);
}

Listener controllers(IMirnSession& session, SessionActions& actions) {
  return std::make_unique<ControllersListener>(&actions, &session);
}

Listener events(IMirnSession&, SessionActions&) { return std::make_unique<EventsListener>(); }

}  // namespace

const std::map<std::wstring, ListenerMaker>& listenerMakers() {
  static const std::map<std::wstring, ListenerMaker> makers = {
      {kPluginCode, acting<BasicListener>},
      {kPluginCode + L"/raids", reading<RaidsListener>},
      {kPluginCode + L"/arrays", acting<ArraysListener>},
      {kPluginCode + L"/enddevices", reading<EndDevicesListener>},
      {kPluginCode + L"/controllers", controllers},
      {kPluginCode + L"/ports", acting<PortsListener>},
      {kPluginCode + L"/volumes", acting<VolumesListener>},
      {kPluginCode + L"/disks", acting<DisksListener>},
      {kPluginCode + L"/events", events},
  };
  return makers;
}
