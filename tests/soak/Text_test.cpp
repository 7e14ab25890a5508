#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "harness/Trees.h"
#include "plain/PlainText.h"
#include "soak/Cases.h"
#include "soak/Forest.h"

namespace {

/// A text of pieces that begin, end or stand in references.
std::string AnyPieces(Random& random) {
  static const char* const kPieces[] = {
      "&",  ";", "&",   ";", "#",  "lt", "a",  "amp",   "GT",  "q",  "apos", "x41",
      "65", "0", "foo", " ", "&l", "&;", "&#", "55296", "233", "-1", "8364", "\xc3\xa9"};
  std::string text;
  for (int pieces = random.Below(12); pieces > 0; --pieces) text += random.OneOf(kPieces);
  return text;
}

std::string TranslateRandomly(Random random, Observer& observer) {
  const std::string text = AnyPieces(random);
  const std::string before = random.OneIn(2) ? "" : AnyPieces(random);
  const auto run = [&](int (*translate)(const char*, CMemFile&)) {
    return observer.Observe([&](std::string& results) {
      CMemFile out(8);
      const BufferResult translated(out, results);
      out.Write(before.data(), static_cast<unsigned int>(before.size()));
      results += std::to_string(translate(text.c_str(), out)) + "\n";
    });
  };
  return Difference(run(TranslateEntities), run(plain::TranslateEntities));
}

std::string ReadRandomly(Random random, Observer& observer) {
  const ForestShape shape = AnySmallShape(random);
  Forest forest(random, shape);
  random.Next();
  const IXMLDOMNode* node = AnyNode(forest, random);
  const bool isEmpty = random.OneIn(2);
  // Most texts are short; one in four cases cuts them.
  const int size = random.OneIn(4) ? random.Below(12) - 1 : 512;
  const std::string before = forest.State();
  const auto run = [&](bool library) {
    return observer.Observe([&](std::string& results) {
      CMemFile out(8);
      const BufferResult collected(out, results);
      if (!isEmpty) out.Write("-", 1);
      library ? node->GetTextHelper(out) : plain::GetTextHelper(node, out);
      results += TakeHeap(library ? node->GetTextAsStr() : plain::GetTextAsStr(node)) + "\n";
      results += Text(library ? node->GetStrValue() : plain::GetStrValue(node)) + "\n";
    });
  };
  const std::string library = run(true);
  const std::string after = forest.State();
  const auto cut = [&](bool fromLibrary) {
    char buffer[4096] = "untouched";
    char* text = nullptr;
    std::string seen = observer.Observe([&](std::string&) {
      text = fromLibrary ? const_cast<IXMLDOMNode*>(node)->GetStringValue(buffer, size)
                         : plain::GetStringValue(node, buffer, size);
    });
    // Two calls stand on different stacks.
    const std::size_t frames = seen.find("Overrun was initiated from here:\n");
    if (frames != std::string::npos) {
      const std::size_t end = seen.find(">\n", frames);
      seen.erase(frames, end - frames);
    }
    return seen + (text == buffer ? "buffer " : "null ") + buffer + "\n";
  };
  return Difference(library + after + cut(true), run(false) + before + cut(false));
}

/// Long and short texts, some with references.
std::string AnyLateText(Random& random, bool hasOddOnes) {
  static const char* const kOddOnes[] = {"", "&#0;", "&foo;", "x &foo; y"};
  if (hasOddOnes && random.OneIn(40)) return random.OneOf(kOddOnes);
  std::string text = random.OneIn(4) ? " &amp;x" : "x";
  text.append(static_cast<std::size_t>(random.Below(random.OneIn(20) ? 2000 : 8)), 'y');
  return random.OneIn(8) ? text + "&#8364;" : text;
}

/// Hangs up to 200 nodes below each other, texts in front of elements and behind them.
void GrowTexts(IXMLDOMNode* root, Random& random) {
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

std::string ReadManyRandomly(Random random, Observer& observer) {
  ForestShape shape;
  shape.nodes = 0;
  Forest forest(random, shape);
  random.Next();
  IXMLDOMNode* document = forest.At(0);
  IXMLDOMNode* root = document->AddChild("a", nullptr);
  root->RealRelease();
  GrowTexts(root, random);
  const bool prints = random.OneIn(4);
  const bool isEmpty = random.OneIn(2);
  SwitchDebugLines(prints, observer);
  const auto run = [&](bool library) {
    return observer.Observe([&](std::string& results) {
      CMemFile out(8);
      const BufferResult collected(out, results);
      if (!isEmpty) out.Write("-", 1);
      library ? document->GetTextHelper(out) : plain::GetTextHelper(document, out);
      results += TakeHeap(library ? document->GetTextAsStr() : plain::GetTextAsStr(document));
    });
  };
  const std::string difference = Difference(run(true), run(false));
  SwitchDebugLines(true, observer);
  return difference;
}

TEST(SoakText, References_are_translated_as_by_the_plain_translation) {
  RunCases("translation", TranslateRandomly);
}

TEST(SoakText, Text_is_collected_as_by_the_plain_collection) { RunCases("text", ReadRandomly); }

TEST(SoakText, Late_texts_come_where_the_plain_collection_puts_them) {
  RunCases("late texts", ReadManyRandomly, 20);
}

}  // namespace
