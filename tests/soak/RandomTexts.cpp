#include "soak/RandomTexts.h"

#include <vector>

#include "harness/Trees.h"

std::string AnyPieces(Random& random) {
  static const char* const kPieces[] = {
      "&",  ";", "&",   ";", "#",  "lt", "a",  "amp",   "GT",  "q",  "apos", "x41",
      "65", "0", "foo", " ", "&l", "&;", "&#", "55296", "233", "-1", "8364", "\xc3\xa9"};
  std::string text;
  for (int pieces = random.Below(12); pieces > 0; --pieces) text += random.OneOf(kPieces);
  return text;
}

namespace {

/// Long and short texts, some with references.
std::string AnyLateText(Random& random, bool hasOddOnes) {
  static const char* const kOddOnes[] = {"", "&#0;", "&foo;", "x &foo; y"};
  if (hasOddOnes && random.OneIn(40)) return random.OneOf(kOddOnes);
  if (hasOddOnes && random.OneIn(40)) return AnyPieces(random);
  std::string text = random.OneIn(4) ? " &amp;x" : "x";
  text.append(static_cast<std::size_t>(random.Below(random.OneIn(20) ? 2000 : 8)), 'y');
  if (random.OneIn(8)) text += "&#8364;";
  // The only references that are shorter than what they become.
  if (random.OneIn(40)) text += Repeat("&#-1;", random.Below(400));
  return text;
}

}  // namespace

void GrowLateTexts(IXMLDOMNode* root, Random& random) {
  std::vector<IXMLDOMNode*> open = {root};
  const int step = 1 + random.Below(6);  // the more, the less deep
  const bool hasOddOnes = random.OneIn(4);
  for (int nodes = random.Below(200); nodes > 0; --nodes) {
    if (random.OneIn(2)) {
      open.back()->AddTextChild(AnyLateText(random, hasOddOnes).c_str());
    } else if (random.Below(step) < 2) {
      IXMLDOMNode* child = open.back()->AddChild(random.OneIn(2) ? "a" : "b", nullptr);
      child->RealRelease();
      open.push_back(child);
    } else if (open.size() > 1) {
      open.resize(open.size() - 1 - random.Below(static_cast<int>(open.size()) - 1));
    }
  }
}

void NestTexts(IXMLDOMNode* root, Random& random) {
  static const char* const kNames[] = {"a", "a", "a", "b"};
  static const char* const kTexts[] = {"x", "1", " 1b", "x", " ", "&#32;", "x&lt;"};
  static const char* const kOddTexts[] = {"", "&#0;", "&foo;"};
  std::vector<IXMLDOMNode*> open = {root};
  const int oneOddIn = random.OneIn(2) ? 1000 : 40;
  const int oneTextIn = 1 + random.Below(12);
  for (int nodes = random.Below(250); nodes > 0; --nodes) {
    if (random.OneIn(oneTextIn)) {
      const bool isOdd = random.OneIn(oneOddIn);
      open.back()->AddTextChild(isOdd ? random.OneOf(kOddTexts) : random.OneOf(kTexts));
    }
    IXMLDOMNode* child = open.back()->AddChild(random.OneOf(kNames), nullptr);
    child->RealRelease();
    if (!random.OneIn(4)) open.push_back(child);
    if (open.size() > 1 && random.OneIn(4)) open.pop_back();
  }
}
