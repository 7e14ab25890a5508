#include "tool/EditHarness.h"

#include <gtest/gtest.h>
#include <tools/document/SourceEncoding.h>

#include <algorithm>

#include "tool/Loading.h"

tool::Edit MakeEdit(const std::string& option, const std::vector<std::string>& operands) {
  const auto& kinds = tool::EditKinds();
  const auto kind = std::find_if(kinds.begin(), kinds.end(),
                                 [&](const tool::EditKind& each) { return each.option == option; });
  EXPECT_NE(kinds.end(), kind) << option;
  EXPECT_EQ(static_cast<std::size_t>(kind->operandCount), operands.size());
  return tool::Edit{&*kind, operands};
}

tool::EditedText MakeEdited(const std::string& bytes) {
  const tool::SourceEncoding encoding(bytes);
  std::string text;
  std::string reason;
  EXPECT_TRUE(encoding.Decode(bytes, text, reason)) << reason;
  return tool::EditedText(text, Load(text), encoding);
}
