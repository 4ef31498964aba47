#ifndef MIRN_LISTENERS_PORTS_LISTENER_H
#define MIRN_LISTENERS_PORTS_LISTENER_H

#include "action_interfaces.h"
#include "base_listener.h"
#include "read_interface.h"

/// Ports and their locate LEDs. The constructor is the route table. The pointers are views of one session
/// that outlives the listener.
class PortsListener : public BaseListener {
 public:
  PortsListener(IMirnSession* session, IMirnPortsActions* actions);

 private:
  ovra::data_transfer::ServiceObject getPorts(const RouteMatch& match, const RequestParameters& parameters,
                                              const ovra::data_transfer::ServiceObject& body);
  ovra::data_transfer::ServiceObject locatePort(const RouteMatch& match, const RequestParameters& parameters,
                                                const ovra::data_transfer::ServiceObject& body);

  IMirnSession* m_session;
  IMirnPortsActions* m_actions;
};

#endif
