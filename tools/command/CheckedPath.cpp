// Refuses what is no path. A path is checked before a file is read, because the library does not
// report malformed ones. Tested by tests/tool/select_test.bash and tests/tool/path_test.bash.

#include <tools/command/CheckedPath.h>

#include <tools/command/Command.h>
#include <tools/io/SourceExcerpt.h>

namespace tool {

namespace {

[[noreturn]] void RefusePath(const std::string& what, const std::string& path, std::size_t offset,
                             const std::string& reason) {
  throw UsageError(DescribeProblem(what, path, PositionOf(path, offset), reason));
}

}  // namespace

SearchPath CheckedPath(const std::string& text, PathPurpose purpose, const std::string& what) {
  SearchPath path;
  const xmldom::PathProblem problem = ReadPath(text, purpose, path);
  if (problem) RefusePath(what, text, problem.offset, problem.reason);
  return path;
}

SearchPath CheckedElementPath(const std::string& text, PathPurpose purpose,
                              const std::string& reason) {
  SearchPath path = CheckedPath(text, purpose);
  if (!path.attribute.empty()) RefusePath("path", text, text.rfind('@'), reason);
  return path;
}

}  // namespace tool
