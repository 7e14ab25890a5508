#include <gtest/gtest.h>
#include <tools/edit/EditProof.h>

#include <string>

#include "tool/EditHarness.h"
#include "tool/Loading.h"

// The proof that an edit has made of a text what it should.

namespace {

using tool::ProofFailure;

/// Why `found` is not what is expected; empty when it is. Texts of the root element may have been
/// joined.
std::string Prove(const std::string& expected, const std::string& found, bool joinsTexts = false) {
  const XMLPtr<IXMLDOMDocument2> tree = Load(expected);
  tool::Elements joined;
  if (joinsTexts) joined.insert(tree->m_pFirstChild);
  try {
    EXPECT_NE(nullptr, tool::ProveEdit(found, *tree, joined));
    return std::string();
  } catch (const ProofFailure& failure) {
    return failure.what();
  }
}

TEST(EditProof, Same_tree_passes_whatever_its_layout) {
  EXPECT_EQ("", Prove("<a b='1'><c/>x</a>", "<?xml version='1.0'?><a\nb=\"1\">\n <c></c>x</a>"));
}

TEST(EditProof, Any_difference_fails) {
  const std::string expected = "<a b='1' c='2'><d/>x</a>";
  for (const char* found :
       {"<z b='1' c='2'><d/>x</z>", "<a c='2' b='1'><d/>x</a>", "<a b='1'><d/>x</a>",
        "<a b='1' c='2' e='3'><d/>x</a>", "<a b='1' c='2'><e/>x</a>", "<a b='1' c='2'><d/>y</a>",
        "<a b='1' c='2'><d/>x </a>", "<a b='1' c='2'>x<d/></a>", "<a b='1' c='2'><d/></a>",
        "<a b='1' c='2'><d/>x<e/></a>", "<a b='1' c='2'><d><e/></d>x</a>",
        "<a b='1' c='3'><d/>x</a>"}) {
    EXPECT_NE("", Prove(expected, found)) << found;
  }
}

TEST(EditProof, Text_that_is_not_well_formed_fails) {
  EXPECT_EQ("it is not well-formed: mismatched tag, near </b>", Prove("<a/>", "<a></b>"));
}

TEST(EditProof, White_space_counts_unless_texts_were_joined) {
  EXPECT_NE("", Prove("<a>xy</a>", "<a>x y</a>"));
  EXPECT_EQ("", Prove("<a>xy</a>", "<a>x y</a>", true));
  EXPECT_NE("", Prove("<a>xy</a>", "<a>xz</a>", true));
  EXPECT_NE("", Prove("<a b='xy'/>", "<a b='x y'/>", true));
  EXPECT_NE("", Prove("<a><b>xy</b></a>", "<a><b>x y</b></a>", true)) << "of another element";
}

TEST(EditProof, References_to_greater_count_as_the_character_where_texts_were_joined) {
  EXPECT_NE("", Prove("<a>x>y</a>", "<a>x&gt;y</a>"));
  EXPECT_EQ("", Prove("<a>x>y</a>", "<a>x&gt;y</a>", true));
  EXPECT_NE("", Prove("<a>x<y/></a>", "<a>x&lt;y/></a>", true));
  EXPECT_NE("", Prove("<a><b>></b></a>", "<a><b>&gt;</b></a>", true)) << "of another element";
}

TEST(EditProof, Markup_in_texts_counts_as_it_is) {
  for (const auto& pair :
       {std::make_pair("<a><![CDATA[>]]></a>", "<a><![CDATA[&gt;]]></a>"),
        std::make_pair("<a><?p a?>b?></a>", "<a><?p a?&gt;b?></a>"),
        std::make_pair("<a><!--a-->b--&gt;</a>", "<a><!--a- ->b--></a>"),
        std::make_pair("<a><![CDATA[x]]>y]]&gt;</a>", "<a><![CDATA[x]]&gt;y]]></a>")}) {
    EXPECT_NE("", Prove(pair.first, pair.second, true)) << pair.first;
    EXPECT_EQ("", Prove(pair.first, pair.first, true)) << pair.first;
  }
}

/// Each fault in what was spliced is found, and leaves the text and the tree as they were.
TEST(EditProof, Fault_of_an_edit_is_found_and_nothing_changes) {
  const struct {
    const char* from;
    const char* to;
  } faults[] = {{"<c/>", "<c></c>x"}, {"<c/>", ""},       {"new", "old"},
                {"</b>", ""},         {"d='1'", "d='2'"}, {"<b d='1'>", "<b d='1' e=''>"}};
  for (const auto& fault : faults) {
    tool::EditedText edited = MakeEdited("<a><b d='1'>old</b><c/></a>");
    edited.SetFault([&](std::string& text) {
      const std::string from = fault.from;
      ASSERT_NE(text.npos, text.find(from));
      text.replace(text.find(from), from.size(), fault.to);
    });
    EXPECT_THROW(edited.Apply(MakeEdit("--set", {"//b", "new"}), false), ProofFailure) << fault.to;
    EXPECT_EQ("<a><b d='1'>old</b><c/></a>", edited.Bytes());
    edited.SetFault(nullptr);
    EXPECT_EQ(1u, edited.Apply(MakeEdit("--set", {"//b", "new"}), false).changed);
    EXPECT_EQ("<a><b d='1'>new</b><c/></a>", edited.Bytes());
  }
}

TEST(EditProof, Fault_in_each_kind_of_edit_is_found) {
  for (const tool::EditKind& kind : tool::EditKinds()) {
    std::vector<std::string> operands = {"/a/b"};
    if (kind.operandCount > 1) operands.push_back("<n/>");
    if (std::string(kind.option).find("attr") != std::string::npos) operands[1] = "c";
    if (std::string(kind.option) == "--rename") operands[1] = "n";
    if (kind.operandCount > 2) operands.push_back("3");
    tool::EditedText edited = MakeEdited("<a><b c='1'>x</b><d/></a>");
    edited.SetFault([](std::string& text) { text = "<a><b c='1'>x</b><d/></a>"; });
    EXPECT_THROW(edited.Apply(MakeEdit(kind.option, operands), false), ProofFailure) << kind.option;
  }
}

// Texts that are joined must not hold "]]>". Therefore the edit may write a reference, which means
// the same character.
TEST(EditProof, Removal_may_change_how_a_character_is_written_but_no_character) {
  const auto remove = [](const std::string& result) {
    tool::EditedText edited = MakeEdited("<a>]]<b/>></a>");
    edited.SetFault([&](std::string& text) { text = result; });
    edited.Apply(MakeEdit("--remove", {"//b"}), false);
  };
  EXPECT_NO_THROW(remove("<a>]]&gt;</a>"));
  for (const char* wrong : {"<a>]]></a>", "<a>]]</a>", "<a>]]&gt;&gt;</a>", "<a>]]&lt;</a>"}) {
    EXPECT_THROW(remove(wrong), ProofFailure) << wrong;
  }
}

TEST(EditProof, Value_that_the_document_type_would_change_is_refused) {
  tool::EditedText edited = MakeEdited("<!DOCTYPE a [<!ATTLIST a b NMTOKENS #IMPLIED>]><a b='x'/>");
  EXPECT_THROW(edited.Apply(MakeEdit("--set-attr", {"/", "b", " x  y "}), false), ProofFailure);
}

}  // namespace
