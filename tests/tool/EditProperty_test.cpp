#include <gtest/gtest.h>
#include <tools/document/SourceEncoding.h>
#include <tools/document/SourceMap.h>
#include <tools/edit/Edit.h>
#include <tools/edit/EditProof.h>
#include <tools/edit/EditStep.h>
#include <tools/edit/EditedText.h>
#include <xmldom/xmldom.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "tool/Loading.h"
#include "tool/RandomText.h"

// What holds for any edit of any text: many small ones, made at random.

namespace {

using tool::Edit;
using tool::EditedText;
using tool::EditKind;
using tool::SourceEncoding;

const int kTexts = 8000;

class EditProperty : public testing::TestWithParam<unsigned int> {
 protected:
  void SetUp() override { std::printf("seed %u, %d texts\n", GetParam(), kTexts); }
};

INSTANTIATE_TEST_SUITE_P(Seeds, EditProperty, testing::Values(20261122u, 3u));

/// An edit of any kind at one of the names of RandomText.
Edit RandomEdit(std::mt19937& engine, RandomText& random) {
  const auto& kinds = tool::EditKinds();
  const auto oneOf = [&engine](std::initializer_list<const char*> texts) {
    return std::string(texts.begin()[engine() % texts.size()]);
  };
  const EditKind& kind = kinds[engine() % kinds.size()];
  Edit edit = {&kind, {oneOf({"/", "//a", "//b", "//c", "/*/*", "/a/b", "//c/*"})}};
  const std::string operands = kind.operands;
  if (operands.find("NAME") != operands.npos) edit.operands.push_back(oneOf({"y", "z"}));
  if (operands.find("XML") != operands.npos) {
    edit.operands.push_back(oneOf({"<n/>", "<n y='1'>x</n>", " <n>\n  <m/>\n</n>\n", "<b>x</b>"}));
  } else if (operands.find("TEXT") != operands.npos || operands.find("VALUE") != operands.npos) {
    edit.operands.push_back(random.Plain());
  }
  return edit;
}

std::string Describe(const std::string& text, const Edit& edit, bool all) {
  std::string shown = text + "\n";
  shown += edit.kind->option;
  for (const std::string& operand : edit.operands) shown += " '" + operand + "'";
  return shown + (all ? " --all" : "");
}

/// Where the first line begins, and the last one ends, that the elements of a path stand on.
tool::SourceRange LinesOf(const std::string& text, const Edit& edit, bool all) {
  const XMLPtr<IXMLDOMDocument2> tree = Load(text);
  const SourceEncoding encoding(text);
  tool::EditStep step(edit, text, *tree, encoding);
  step.SelectTargets(all);
  std::size_t begin = text.size();
  std::size_t end = 0;
  for (const auto& target : step.targets) {
    begin = std::min<std::size_t>(begin, target.place->begin);
    end = std::max<std::size_t>(end, target.place->end);
  }
  while (begin > 0 && text[begin - 1] != '\n' && text[begin - 1] != '\r') --begin;
  end = std::min(text.find_first_of("\r\n", end), text.size());
  end = std::min(end + (text.compare(end, 2, "\r\n") == 0 ? 2 : 1), text.size());
  return {begin, end};
}

TEST_P(EditProperty, Edit_is_proved_and_changes_nothing_but_its_lines) {
  RandomText random(GetParam());
  std::mt19937 engine(GetParam());
  std::map<std::string, int> made;
  int refused = 0;
  for (int i = 0; i < kTexts; ++i) {
    const std::string bytes = random.Document();
    const SourceEncoding encoding(bytes);
    std::string text;
    std::string reason;
    ASSERT_TRUE(encoding.Decode(bytes, text, reason)) << bytes;
    ASSERT_EQ(bytes, encoding.Encode(text)) << bytes;
    XMLPtr<IXMLDOMDocument2> tree = TryLoad(text);
    if (tree == nullptr) continue;
    EditedText edited(text, tree, encoding);
    const Edit edit = RandomEdit(engine, random);
    const bool all = engine() % 2 == 0;
    try {
      if (edited.Apply(edit, all).changed == 0) continue;
      const std::string result = edited.Text();
      ASSERT_NO_THROW(edited.Bytes()) << Describe(text, edit, all);
      const tool::SourceRange lines = LinesOf(text, edit, all);
      ASSERT_EQ(text.substr(0, lines.begin), result.substr(0, lines.begin))
          << Describe(text, edit, all);
      const std::size_t rest = text.size() - lines.end;
      ASSERT_LE(rest, result.size()) << Describe(text, edit, all);
      ASSERT_EQ(text.substr(lines.end), result.substr(result.size() - rest))
          << Describe(text, edit, all);
      ++made[edit.kind->option];
    } catch (const tool::EditRefusal&) {
      ++refused;
    } catch (const tool::ProofFailure& failure) {
      ADD_FAILURE() << Describe(text, edit, all) << "\n" << failure.what();
    }
  }
  for (const auto& kind : made) std::printf("%s %d\n", kind.first.c_str(), kind.second);
  std::printf("refused %d\n", refused);
  EXPECT_EQ(tool::EditKinds().size(), made.size());
  for (const auto& kind : made) EXPECT_LT(kTexts / 400, kind.second) << kind.first;
}

}  // namespace
