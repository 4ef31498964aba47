#ifndef MIRN_BASE_METRIC_TEXT_H
#define MIRN_BASE_METRIC_TEXT_H

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Numbers of one meaning, one for each set of labels.
struct MetricFamily {
  enum class Type { kCounter, kGauge, kHistogram };

  const char* name;
  Type type;
  const char* help;  ///< One sentence.
};

struct MetricLabel {
  std::string_view name;
  std::string_view value;  ///< UTF-8, escaped on its way out.
};

/// Writes metrics in the text exposition format, version 0.0.4. A machine of 10,000 disks has some 200,000
/// lines, so nothing is kept of them but their bytes. One thread at a time.
class MetricText {
 public:
  using Labels = std::initializer_list<MetricLabel>;

  /// The samples that follow are of this family; there may be none.
  void begin(const MetricFamily& family);

  void add(Labels labels, std::uint64_t value);
  void addReal(Labels labels, double value);

  /// A histogram: how many are in each bucket, the last of which has no bound; bounds rise.
  void addHistogram(Labels labels, const std::vector<double>& bounds,
                    const std::vector<std::uint64_t>& counts, double sum);

  /// What another one has written.
  void append(std::string_view text) { m_text.append(text); }

  const std::string& text() const { return m_text; }
  std::string take() { return std::move(m_text); }

 private:
  void beginSample(std::string_view suffix, Labels labels, std::string_view bound = {});
  void addLabel(const MetricLabel& label, char before);
  void end(std::uint64_t value);
  void endReal(double value);

  std::string m_text;
  std::string_view m_name;
};

#endif
