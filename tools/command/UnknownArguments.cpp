// Refuses commands and options that nobody has declared, and suggests what may have been meant.
// Resemblance is the number of single changes that turn one name into the other (edit distance).
// Tested by tests/tool/UnknownArguments_test.cpp and tests/tool/command_line_test.bash.

#include <tools/command/UnknownArguments.h>

#include <tools/command/Arguments.h>
#include <tools/command/AttachedSuffix.h>
#include <tools/command/Command.h>
#include <tools/io/Diagnostics.h>

#include <algorithm>

namespace tool {

namespace {

/// How many characters have to be changed, added, left out or exchanged with their neighbours to
/// make `to` of `from`.
std::size_t Distance(const std::string& from, const std::string& to) {
  // distances[i][j]: for the first i characters of `from` and the first j of `to`.
  std::vector<std::vector<std::size_t>> distances(from.size() + 1,
                                                  std::vector<std::size_t>(to.size() + 1));
  for (std::size_t i = 0; i <= from.size(); ++i) {
    for (std::size_t j = 0; j <= to.size(); ++j) {
      std::size_t& least = distances[i][j];
      if (i == 0 || j == 0) {
        least = i + j;
        continue;
      }
      least = distances[i - 1][j - 1] + (from[i - 1] == to[j - 1] ? 0 : 1);
      least = std::min({least, distances[i - 1][j] + 1, distances[i][j - 1] + 1});
      const bool isExchange =
          i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1];
      if (isExchange) least = std::min(least, distances[i - 2][j - 2] + 1);
    }
  }
  return distances[from.size()][to.size()];
}

/// The name without the dashes in front of it.
std::string Bare(const std::string& name) {
  return name.substr(std::min(name.find_first_not_of('-'), name.size()));
}

bool BeginsWith(const std::string& text, const std::string& beginning) {
  return text.compare(0, beginning.size(), beginning) == 0;
}

std::string Describe(const char* what, const std::string& typed, const std::string& name,
                     const std::vector<std::string>& known) {
  const std::string nearest = NearestOf(name, known);
  const std::string text = std::string("unknown ") + what + " '" + ForMessage(typed) + "'";
  return nearest.empty() ? text : text + " (did you mean '" + nearest + "'?)";
}

/// How many values an option takes at most; -1 when none of `declared` knows it.
int MostValuesOf(const std::string& name, const std::vector<Arguments>& declared) {
  int most = -1;
  for (const Arguments& arguments : declared) most = std::max(most, arguments.MostValuesOf(name));
  return most;
}

}  // namespace

std::string NearestOf(const std::string& typed, const std::vector<std::string>& known) {
  const std::string bare = Bare(typed);
  std::string nearest;
  std::size_t least = std::string::npos;
  for (const std::string& candidate : known) {
    const std::string other = Bare(candidate);
    // What a single letter may stand for cannot be told.
    if (bare.size() < 2 || other.size() < 2) continue;
    const std::size_t distance = BeginsWith(other, bare) ? 0 : Distance(bare, other);
    const std::size_t most = (std::max(bare.size(), other.size()) + 2) / 3;
    if (distance <= most && distance < least) {
      least = distance;
      nearest = candidate;
    }
  }
  return nearest;
}

void RequireKnownCommand(const std::string& name, const std::vector<std::string>& known) {
  if (std::find(known.begin(), known.end(), name) != known.end()) return;
  throw UsageError(Describe("command", name, name, known));
}

void RequireKnownOptions(const std::vector<std::string>& arguments,
                         const std::vector<Arguments>& declared) {
  std::vector<std::string> known;
  for (const Arguments& part : declared) {
    const std::vector<std::string> names = part.OptionNames();
    known.insert(known.end(), names.begin(), names.end());
  }
  std::string unknown;
  VisitOptions(arguments, [&](std::size_t index, const std::string& name) {
    const std::string& typed = arguments[index];
    const int mostValues = MostValuesOf(name, declared);
    if (mostValues < 0) {
      if (!unknown.empty()) unknown += ", ";
      unknown += Describe("option", typed, name, known);
    }
    if (mostValues == 0 && typed.compare(0, 2, "--") == 0 && typed.size() > name.size()) {
      throw UsageError(name + " takes no value");
    }
    return mostValues;
  });
  if (!unknown.empty()) throw UsageError(unknown);
}

}  // namespace tool
