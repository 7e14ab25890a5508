#ifndef XMLDOM_BENCH_RESULTS_RESULTS_H
#define XMLDOM_BENCH_RESULTS_RESULTS_H

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

namespace bench {

/// What was measured of one library.
struct Result {
  std::string operation;
  std::string set;  // of documents
  std::string sample;
  std::size_t nodes;
  std::string library;
  std::vector<double> values;  // one a turn: nanoseconds of the operation, or bytes
};

/// All results of a run. They are kept in a text file, one a line with tabs between the fields, so
/// that the parts of a run can be made by several processes.
class Results {
 public:
  void Add(const Result& result) { m_results.push_back(result); }

  /// Adds the results of a file; one that does not exist has none.
  void Read(const std::string& path);

  /// Adds a line to a file.
  static void AppendTo(const std::string& path, const Result& result);

  const std::vector<Result>& All() const { return m_results; }

  /// Null when there is none.
  const Result* Find(const std::string& operation, const std::string& set,
                     const std::string& sample, std::size_t nodes,
                     const std::string& library) const;

  /// The results of one library for an operation, in the order of measuring; an empty set stands
  /// for those that goals are judged on: small, large and real documents.
  std::vector<const Result*> Of(const std::string& operation, const std::string& set,
                                const std::string& library) const;

  /// The result of another library for the same operation and document; null when there is none.
  const Result* Beside(const Result& result, const std::string& library) const;

 private:
  std::vector<Result> m_results;
};

}  // namespace bench

#endif
