#ifndef MIRN_HOST_INSIGHT_LIST_ANSWER_H
#define MIRN_HOST_INSIGHT_LIST_ANSWER_H

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>
#include <string>
#include <utility>

#include "answers/answer.h"

namespace host {

/// A page of a list: `items`, and `next` as null where it is empty, beside what `form` tells already.
inline Answer listAnswer(boost::json::object form, boost::json::array items, const std::string& next) {
  form["items"] = std::move(items);
  form["next"] = next.empty() ? boost::json::value(nullptr) : boost::json::value(next);
  return jsonAnswer(boost::json::serialize(form));
}

}  // namespace host

#endif
