#include "jobs/operation_works.h"

#include "text.h"

namespace insight {

OperationWorks operationWorksOf(const ovra::data_transfer::ServiceObject& description) {
  OperationWorks works;
  for (const auto route : description.member(L"routes")) {
    const std::string operation = wideToUtf8(route.value->member(L"id").toString());
    for (const auto work : route.value->member(L"work")) {
      works.emplace(operation, wideToUtf8(work.value->member(L"kind").toString()));
    }
  }
  return works;
}

}  // namespace insight
