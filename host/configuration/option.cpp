#include "configuration/option.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <sstream>
#include <system_error>

namespace host {

namespace {

constexpr std::int64_t kLargest = 1 << 30;
constexpr double kLongest = 86400;
constexpr double kMillisecondsPerSecond = 1000;

/// The whole of `text` as a number; nothing where it is none.
template <class Number>
bool readNumber(const std::string& text, Number& number) {
  const char* const end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, number);
  return result.ec == std::errc() && result.ptr == end;
}

std::int64_t integerWithin(const std::string& text, std::int64_t least, std::int64_t most,
                           const std::string& range) {
  std::int64_t value = 0;
  if (!readNumber(text, value) || value < least || value > most) throw ValueError("is not " + range);
  return value;
}

std::string fromTo(std::int64_t least, std::int64_t most) {
  return "from " + std::to_string(least) + " to " + std::to_string(most);
}

template <class Owner>
Option integerOption(const std::string& name, const std::string& help, std::size_t Owner::*target,
                     Owner& (*ownerOf)(Options&), std::int64_t least) {
  Options defaults;
  Option option{name, "N", fromTo(least, kLargest), std::to_string(ownerOf(defaults).*target), help, {},
                {},   {}};
  option.group = OptionGroup::kBounds;
  option.take = [target, ownerOf, least, range = option.range](Options& options, const std::string& text) {
    ownerOf(options).*target = static_cast<std::size_t>(integerWithin(text, least, kLargest, range));
  };
  return option;
}

std::string secondsText(std::chrono::milliseconds time) {
  std::ostringstream text;
  text << static_cast<double>(time.count()) / kMillisecondsPerSecond;
  return text.str();
}

}  // namespace

Option textOption(const std::string& name, const std::string& argument, std::string Options::*target,
                  const std::string& help) {
  Option option{name, argument, {}, Options().*target, help, {}, {}, {}};
  option.take = [target](Options& options, const std::string& text) { options.*target = text; };
  return option;
}

Option listOption(const std::string& name, const std::string& argument,
                  std::vector<std::string> Options::*target, const std::string& help) {
  Option option{name, argument, {}, {}, help, {}, {}, {}};
  option.mayRepeat = true;
  option.take = [target](Options& options, const std::string& text) { (options.*target).push_back(text); };
  return option;
}

Option switchOption(const std::string& name, bool Options::*target, const std::string& help) {
  Option option{name, {}, std::string(kOn) + " or " + kOff, kOff, help, {}, {}, {}};
  option.take = [target, range = option.range](Options& options, const std::string& text) {
    if (text != kOn && text != kOff) throw ValueError("is not " + range);
    options.*target = text == kOn;
  };
  return option;
}

Option portOption(const std::string& name, std::uint16_t Options::*target, const std::string& help) {
  constexpr std::int64_t kMost = std::numeric_limits<std::uint16_t>::max();
  Option option{name, "PORT", fromTo(0, kMost), std::to_string(Options().*target), help, {}, {}, {}};
  option.take = [target, range = option.range](Options& options, const std::string& text) {
    options.*target = static_cast<std::uint16_t>(integerWithin(text, 0, kMost, range));
  };
  return option;
}

Option countOption(const std::string& name, std::size_t Options::*target, std::int64_t least,
                   const std::string& help) {
  return integerOption<Options>(
      name, help, target, [](Options& options) -> Options& { return options; }, least);
}

Option countOption(const std::string& name, std::size_t Limits::*target, std::int64_t least,
                   const std::string& help) {
  return integerOption<Limits>(
      name, help, target, [](Options& options) -> Limits& { return options.limits; }, least);
}

Option timeOption(const std::string& name, std::chrono::milliseconds Limits::*target,
                  const std::string& help) {
  Option option{name, "SECONDS", "above 0, up to 86400 seconds", secondsText(Limits().*target), help, {},
                {},   {}};
  option.group = OptionGroup::kBounds;
  option.take = [target, range = option.range](Options& options, const std::string& text) {
    double value = 0;
    if (!readNumber(text, value) || !(value > 0 && value <= kLongest)) throw ValueError("is not " + range);
    options.limits.*target =
        std::chrono::milliseconds(std::max(1L, std::lround(value * kMillisecondsPerSecond)));
  };
  return option;
}

}  // namespace host
