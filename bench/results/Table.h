#ifndef XMLDOM_BENCH_RESULTS_TABLE_H
#define XMLDOM_BENCH_RESULTS_TABLE_H

#include <ostream>
#include <string>
#include <vector>

namespace bench {

/// A table in Markdown, its columns aligned so that it can be read as it stands.
class Table {
 public:
  explicit Table(const std::vector<std::string>& header) : m_rows(1, header) {}

  void AddRow(const std::vector<std::string>& cells) { m_rows.push_back(cells); }

  void Write(std::ostream& out) const;

 private:
  std::vector<std::vector<std::string>> m_rows;
};

/// A number with that many decimals.
std::string Fixed(double value, int decimals);

/// A value for a plot: "?", which stands for none, when it is not above 0.
std::string PlotValue(double value);

/// A ratio with two decimals, or "n/a" when it is not above 0.
std::string Ratio(double value);

}  // namespace bench

#endif
