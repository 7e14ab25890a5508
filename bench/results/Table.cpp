#include "results/Table.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>

namespace bench {

namespace {

void WriteCells(std::ostream& out, const std::vector<std::string>& cells,
                const std::vector<std::size_t>& widths) {
  for (std::size_t i = 0; i < cells.size(); ++i) {
    out << "| " << cells[i] << std::string(widths[i] - cells[i].size(), ' ') << ' ';
  }
  out << "|\n";
}

}  // namespace

void Table::Write(std::ostream& out) const {
  std::vector<std::size_t> widths;
  for (const std::vector<std::string>& row : m_rows) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
  }
  WriteCells(out, m_rows.front(), widths);
  for (std::size_t width : widths) out << '|' << std::string(width + 2, '-');
  out << "|\n";
  for (std::size_t i = 1; i < m_rows.size(); ++i) WriteCells(out, m_rows[i], widths);
}

std::string Fixed(double value, int decimals) {
  char text[64];
  std::snprintf(text, sizeof text, "%.*f", decimals, value);
  return text;
}

std::string PlotValue(double value) { return value > 0 ? Fixed(value, 4) : "?"; }

std::string Ratio(double value) { return value > 0 ? Fixed(value, 2) : "n/a"; }

}  // namespace bench
