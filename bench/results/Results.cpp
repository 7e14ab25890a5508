#include "results/Results.h"

#include <fstream>
#include <iomanip>
#include <limits>
#include <sstream>
#include <stdexcept>

namespace bench {

void Results::Read(const std::string& path) {
  std::ifstream file(path);
  std::string line;
  while (std::getline(file, line)) {
    std::istringstream fields(line);
    Result result;
    fields >> result.operation >> result.set >> result.sample >> result.nodes >> result.library;
    double value = 0;
    while (fields >> value) result.values.push_back(value);
    if (result.values.empty()) throw std::runtime_error(path + ": no result: " + line);
    Add(result);
  }
}

void Results::AppendTo(const std::string& path, const Result& result) {
  std::ofstream file(path, std::ios::app);
  file << std::setprecision(std::numeric_limits<double>::digits10) << result.operation << '\t'
       << result.set << '\t' << result.sample << '\t' << result.nodes << '\t' << result.library;
  for (double value : result.values) file << '\t' << value;
  file << '\n';
  if (!file.flush()) throw std::runtime_error("cannot write " + path);
}

const Result* Results::Find(const std::string& operation, const std::string& set,
                            const std::string& sample, std::size_t nodes,
                            const std::string& library) const {
  for (const Result& result : m_results) {
    if (result.operation == operation && result.set == set && result.sample == sample &&
        result.nodes == nodes && result.library == library) {
      return &result;
    }
  }
  return nullptr;
}

std::vector<const Result*> Results::Of(const std::string& operation, const std::string& set,
                                       const std::string& library) const {
  std::vector<const Result*> found;
  for (const Result& result : m_results) {
    const bool inSet = set.empty()
                           ? result.set == "small" || result.set == "large" || result.set == "real"
                           : result.set == set;
    if (inSet && result.operation == operation && result.library == library) {
      found.push_back(&result);
    }
  }
  return found;
}

const Result* Results::Beside(const Result& result, const std::string& library) const {
  return Find(result.operation, result.set, result.sample, result.nodes, library);
}

}  // namespace bench
