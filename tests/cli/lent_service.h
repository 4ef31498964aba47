#ifndef MIRN_TESTS_CLI_LENT_SERVICE_H
#define MIRN_TESTS_CLI_LENT_SERVICE_H

#include "wire/client.h"

/// A service that somebody else owns.
class LentService : public mirnctl::IService {
 public:
  explicit LentService(mirnctl::IService& service) : m_service(service) {}
  mirnctl::Reply ask(const mirnctl::Request& request) override { return m_service.ask(request); }
  mirnctl::Reply follow(const mirnctl::Request& request,
                        const std::function<bool(std::string_view)>& take) override {
    return m_service.follow(request, take);
  }

 private:
  mirnctl::IService& m_service;
};

#endif
