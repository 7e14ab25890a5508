#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <cstdlib>

#include "harness/Trees.h"
#include "plain/PlainText.h"
#include "soak/Cases.h"
#include "soak/Forest.h"
#include "soak/RandomTexts.h"

namespace {

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
      observer.LookAtEvents([&] { return std::string(out.GetAsStr()); });
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

std::string ReadManyRandomly(Random random, Observer& observer) {
  ForestShape shape;
  shape.nodes = 0;
  Forest forest(random, shape);
  random.Next();
  IXMLDOMNode* document = forest.At(0);
  IXMLDOMNode* root = document->AddChild("a", nullptr);
  root->RealRelease();
  GrowLateTexts(root, random);
  forest.State();
  for (int changes = random.OneIn(2) ? 0 : random.Below(6); changes > 0; --changes) {
    forest.ChangeByHand(random, shape);
  }
  const bool prints = random.OneIn(4);
  const bool isEmpty = random.OneIn(2);
  const bool isRewound = random.OneIn(8);
  SwitchDebugLines(prints, observer);
  const auto run = [&](bool library) {
    return observer.Observe([&](std::string& results) {
      CMemFile out(8);
      const BufferResult collected(out, results);
      observer.LookAtEvents([&] { return std::string(out.GetAsStr()); });
      if (!isEmpty) out.Write("-", 1);
      if (isRewound) out.m_uPosition = 0;
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
