#ifndef MIRN_TESTS_MODULE_TOLD_EFFECTS_H
#define MIRN_TESTS_MODULE_TOLD_EFFECTS_H

#include <string>
#include <vector>

#include "module/machine_picture.h"
#include "module/request.h"

/// Holds what a request did to the machine against what its route tells of it.
class ToldEffects {
 public:
  /// `route` is the form of the request's route, which must outlive this.
  ToldEffects(const ovra::data_transfer::ServiceObject& route, const Request& request,
              const MachinePicture& before, const MachinePicture& after);

  /// What became of an object and is not told: such as "disk 7 changed".
  std::vector<std::string> untold() const;

  /// The texts of the effects that are told of this request, and of those the ones that the pictures show.
  std::set<std::string> told() const;
  std::set<std::string> seen() const;

  /// The work that is told of this request: the kinds by the ids of the volumes that it goes on in.
  std::map<std::wstring, std::wstring> work() const;

 private:
  using Forms = std::vector<const ovra::data_transfer::ServiceObject*>;

  bool holds(const ovra::data_transfer::ServiceObject& form) const;
  Forms formsUnder(const wchar_t* key) const;
  /// The texts that an argument of the request holds.
  std::vector<std::wstring> valuesOf(const std::wstring& argument) const;
  ObjectIds inArraysOf(const std::wstring& type, const std::vector<std::wstring>& values) const;
  ObjectIds showing(const std::wstring& type, const std::vector<std::wstring>& values,
                    const wchar_t* key) const;
  ObjectIds portsOf(const std::vector<std::wstring>& devices) const;
  ObjectIds objectsOf(const ovra::data_transfer::ServiceObject& effect) const;
  ObjectIds allOf(const std::wstring& type) const;
  void strike(const ovra::data_transfer::ServiceObject& effect, ObjectChanges& changes) const;

  const ovra::data_transfer::ServiceObject& m_route;
  const Request m_request;
  const MachinePicture m_before;
  const MachinePicture m_after;
};

#endif
