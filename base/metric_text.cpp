#include "metric_text.h"

#include <array>
#include <charconv>
#include <cmath>

namespace {

constexpr std::string_view kTypes[] = {"counter", "gauge", "histogram"};

/// Digits of a number; the shortest that mean just it.
class Digits {
 public:
  template <class... Number>
  explicit Digits(Number... number) {
    const auto result = std::to_chars(m_space.data(), m_space.data() + m_space.size(), number...);
    m_length = static_cast<std::size_t>(result.ptr - m_space.data());
  }

  std::string_view text() const { return {m_space.data(), m_length}; }

 private:
  std::array<char, 32> m_space{};
  std::size_t m_length = 0;
};

/// Without an exponent where that is not long: moments are read by people, too.
Digits digitsOf(double value) {
  constexpr double kSmall = 1e-6;
  constexpr double kLarge = 1e15;
  const double size = std::fabs(value);
  const bool isPlain = size < kLarge && (size >= kSmall || size == 0);
  return isPlain ? Digits(value, std::chars_format::fixed) : Digits(value);
}

void appendEscaped(std::string& text, std::string_view value) {
  for (std::size_t begin = 0; begin < value.size();) {
    const std::size_t end = value.find_first_of("\\\"\n", begin);
    text.append(value.substr(begin, end - begin));
    if (end == std::string_view::npos) return;
    text += '\\';
    text += value[end] == '\n' ? 'n' : value[end];
    begin = end + 1;
  }
}

}  // namespace

void MetricText::begin(const MetricFamily& family) {
  m_name = family.name;
  m_text.append("# HELP ").append(m_name).append(1, ' ').append(family.help);
  m_text.append("\n# TYPE ").append(m_name).append(1, ' ');
  m_text.append(kTypes[static_cast<std::size_t>(family.type)]).append(1, '\n');
}

void MetricText::add(Labels labels, std::uint64_t value) {
  beginSample({}, labels);
  end(value);
}

void MetricText::addReal(Labels labels, double value) {
  beginSample({}, labels);
  endReal(value);
}

void MetricText::addHistogram(Labels labels, const std::vector<double>& bounds,
                              const std::vector<std::uint64_t>& counts, double sum) {
  std::uint64_t below = 0;
  for (std::size_t place = 0; place < counts.size(); ++place) {
    below += counts[place];
    const bool isBounded = place < bounds.size();
    const Digits bound = digitsOf(isBounded ? bounds[place] : 0);
    beginSample("_bucket", labels, isBounded ? bound.text() : std::string_view("+Inf"));
    end(below);
  }
  beginSample("_sum", labels);
  endReal(sum);
  beginSample("_count", labels);
  end(below);
}

void MetricText::beginSample(std::string_view suffix, Labels labels, std::string_view bound) {
  m_text.append(m_name).append(suffix);
  char before = '{';
  for (const MetricLabel& label : labels) {
    addLabel(label, before);
    before = ',';
  }
  if (!bound.empty()) {
    addLabel({"le", bound}, before);
    before = ',';
  }
  if (before == ',') m_text += '}';
  m_text += ' ';
}

void MetricText::addLabel(const MetricLabel& label, char before) {
  m_text.append(1, before).append(label.name).append("=\"");
  appendEscaped(m_text, label.value);
  m_text += '"';
}

void MetricText::end(std::uint64_t value) { m_text.append(Digits(value).text()).append(1, '\n'); }

void MetricText::endReal(double value) { m_text.append(digitsOf(value).text()).append(1, '\n'); }
