// Texts before the root element that a stranger could send: declarations, comments and values,
// eight times as many of which may not take the square of that in time, whatever they refer to.

#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <ostream>
#include <string>

#include "harness/ExpatVersion.h"
#include "harness/LinearTime.h"
#include "harness/SmallStack.h"
#include "harness/Trees.h"

namespace {

const int kMostInChain = 256;
const int kFactor = 8;
/// Half way, on a scale of factors, between what grows with the size and what grows with its
/// square.
const double kMostGrowth = 24;

std::string Entity(const std::string& name, const std::string& value) {
  return "<!ENTITY " + name + " '" + value + "'>";
}

std::string Name(int number) { return "e" + std::to_string(number); }

std::string Reference(int number) { return "&" + Name(number) + ";"; }

/// Calls `piece` with 0, 1 and so on. Result: all of that, one behind the other.
template <class Piece>
std::string Join(int count, Piece piece) {
  std::string text;
  for (int i = 0; i < count; ++i) text += piece(i);
  return text;
}

/// The declarations of one document, which are many or large by a number.
struct Prolog {
  const char* name;
  int size;  // of the smaller document
  std::string (*declarations)(int size);
};

std::ostream& operator<<(std::ostream& out, const Prolog& prolog) { return out << prolog.name; }

const Prolog kPrologs[] = {
    {"FlatEntities", 2000,
     [](int size) { return Join(size, [](int i) { return Entity(Name(i), "x"); }); }},
    {"EntitiesOfOneName", 4000,
     [](int size) { return Join(size, [](int) { return Entity("e", "&f;&g;"); }); }},
    {"NamesThatDifferAtTheirEnd", 100,
     [](int size) {
       const std::string begin(2000, 'n');
       return Join(size, [&](int i) { return Entity(begin + Name(i), "&" + begin + ";"); });
     }},
    {"ReferencesToOneEntity", 2000,
     [](int size) {
       return Join(size, [](int i) { return Entity(Name(i), "&last;"); }) + Entity("last", "x");
     }},
    // What many refer to is found to have a longer chain again and again.
    {"ReferencesToAnEntityWhoseChainGrows", 1000,
     [](int size) {
       return Join(size, [](int i) { return Entity("f" + std::to_string(i), "&hub;"); }) +
              Entity(Name(0), "x") +
              Join(kMostInChain - 2, [](int i) { return Entity(Name(i + 1), Reference(i)); }) +
              Entity("hub", Join(kMostInChain - 1, Reference));
     }},
    {"ChainsFromTheirEnds", 20,
     [](int size) {
       return Join(size, [](int chain) {
         return Join(kMostInChain, [chain](int i) {
           const int last = (chain + 1) * kMostInChain - 1 - i;
           const bool isFirst = last % kMostInChain == 0;
           return Entity(Name(last), isFirst ? "x" : Reference(last - 1));
         });
       });
     }},
    {"ManyReferencesInACycle", 30,
     [](int size) {
       return Join(kMostInChain, [size](int i) {
         return Entity(Name(i),
                       Join(size, [i](int k) { return Reference((i + k + 1) % kMostInChain); }));
       });
     }},
    {"OneValueOfReferences", 10000,
     [](int size) {
       return Entity("e", Join(size, [](int i) { return i % 2 == 0 ? "&f;" : "&#38;g;"; }));
     }},
    {"OneValueOfAmpersands", 20000,
     [](int size) { return Entity("e", Join(size, [](int) { return "&#38;"; })); }},
    {"Comments", 5000, [](int size) { return Join(size, [](int) { return "<!-- - -->"; }); }},
    {"OneComment", 5000,
     [](int size) { return "<!--" + Join(size, [](int) { return " <!ENTITY "; }) + "-->"; }},
    {"OtherDeclarations", 2000,
     [](int size) {
       return Join(size, [](int i) { return "<!NOTATION " + Name(i) + " SYSTEM '&e;'>"; });
     }},
};

class GrowthOfPrologs : public testing::TestWithParam<Prolog> {
 private:
  ExpatVersion m_recursing{2, 6, 4};  // only where the parser recurses are declarations read
};

INSTANTIATE_TEST_SUITE_P(All, GrowthOfPrologs, testing::ValuesIn(kPrologs),
                         [](const testing::TestParamInfo<Prolog>& row) {
                           return std::string(row.param.name);
                         });

}  // namespace

TEST_P(GrowthOfPrologs, Is_linear) {
  const Prolog& prolog = GetParam();
  ExpectGrowthBelow(kMostGrowth, prolog.size, prolog.size * kFactor, [&prolog](int size) {
    const std::string xml = "<!DOCTYPE a [" + prolog.declarations(size) + "]><a/>";
    return OnSmallStack([&xml] { Load(xml); });
  });
}
