#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <algorithm>
#include <cstdlib>

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

TEST(SoakText, References_are_translated_as_by_the_plain_translation) {
  RunCases("translation", TranslateRandomly);
}

TEST(SoakText, Text_is_collected_as_by_the_plain_collection) { RunCases("text", ReadRandomly); }

}  // namespace
