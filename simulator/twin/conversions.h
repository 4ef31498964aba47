#ifndef MIRN_SIMULATOR_TWIN_CONVERSIONS_H
#define MIRN_SIMULATOR_TWIN_CONVERSIONS_H

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/value.hpp>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// From a value as the plug-in publishes it to one as a scenario has it. What has the wrong type raises a
/// `TwinError` that names `path`; nothing: the scenario leaves it out.
namespace simulator {

using Converted = std::optional<boost::json::value>;
using Conversion = Converted (*)(const boost::json::value& published, const std::string& path);

namespace conversions {

Converted text(const boost::json::value& published, const std::string& path);
Converted flag(const boost::json::value& published, const std::string& path);
Converted number(const boost::json::value& published, const std::string& path);
/// Decimal text.
Converted size(const boost::json::value& published, const std::string& path);
/// "0x1f75".
Converted hexadecimal(const boost::json::value& published, const std::string& path);
/// "0-23-0-0".
Converted address(const boost::json::value& published, const std::string& path);
/// A word, or nothing where the plug-in has none.
Converted word(const boost::json::value& published, const std::string& path);
/// An id; nothing for an empty one and for null.
Converted reference(const boost::json::value& published, const std::string& path);
/// The maker's number without what the plug-in puts in front of it.
Converted vendor(const boost::json::value& published, const std::string& path);
/// A list of the phy with this speed.
Converted phys(const boost::json::value& published, const std::string& path);

}  // namespace conversions

// Parts of answers, each with the place for its failure.
const boost::json::object& objectAt(const boost::json::value& value, const std::string& path);
const boost::json::array& arrayAt(const boost::json::value& value, const std::string& path);
std::string textAt(const boost::json::value& value, const std::string& path);
std::uint64_t numberAt(const boost::json::value& value, const std::string& path);
/// Of decimal text.
std::uint64_t sizeAt(const boost::json::value& value, const std::string& path);

/// A member by its path, as in "preboot.loaded"; null where it is missing.
const boost::json::value* memberOf(const boost::json::object& object, std::string_view path);
/// Raises a `TwinError` where it is missing.
const boost::json::value& neededMemberOf(const boost::json::object& object, std::string_view path,
                                         const std::string& place);

}  // namespace simulator

#endif
