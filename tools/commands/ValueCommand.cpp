// The command `value`: writes the text, or attributes, of the nodes that a path selects.
// With fields, which are paths from each of these nodes, it writes a row for each node.
// Tested by tests/tool/value_test.bash.

#include <tools/command/Arguments.h>
#include <tools/command/CheckedPath.h>
#include <tools/command/FileCommand.h>
#include <tools/command/Query.h>
#include <tools/commands/Commands.h>
#include <tools/document/CharacterData.h>
#include <tools/document/DocumentLoad.h>
#include <tools/document/PathSearch.h>

#include <xmldom/dom/XMLDocument.h>
#include <xmldom/text/NodeTexts.h>

#include <algorithm>

namespace tool {

namespace {

/// A text without white space at its ends, and with one blank for each run of white space inside.
std::string Normalized(const std::string& text) {
  std::string normalized;
  for (const char c : text) {
    const bool isFirst = normalized.empty() || normalized.back() == ' ';
    if (!IsSpace(c)) {
      normalized += c;
    } else if (!isFirst) {
      normalized += ' ';
    }
  }
  if (!normalized.empty() && normalized.back() == ' ') normalized.pop_back();
  return normalized;
}

class ValueCommand : public FileCommand {
 public:
  ValueCommand() : FileCommand(kResults) {}

  void Check() const override {
    m_query.Check();
    if (m_attribute.isGiven && !m_fields.empty()) {
      throw UsageError("with --field, an attribute is a field too, such as -f @name");
    }
    if (m_attribute.isGiven && m_query.SelectsAttributes()) {
      throw UsageError("with --attr, the path has to end in an element");
    }
    if (m_separator.isGiven && m_fields.empty()) {
      throw UsageError("--separator stands between fields; --field names them");
    }
    Fields();
  }

 protected:
  void DeclareOptions(Arguments& arguments) override {
    m_query.DeclareArguments(arguments);
    arguments.AddText("--attr", "NAME", m_attribute,
                      "Write this attribute instead; nodes without it are passed over");
    arguments.AddRepeatable(
        "-f,--field", "FIELD", 1,
        [this](const std::vector<std::string>& values) { m_fields.push_back(values.front()); },
        "Write a row for each node instead, of the first value that each FIELD selects: a path "
        "from the node, such as name, @id, a/b[2]/@c or '.'",
        "");
    arguments.AddText("--separator", "TEXT", m_separator,
                      "What stands between the fields of a row; a tab unless given");
    arguments.AddFlag("--normalize", m_normalizes,
                      "Write one blank for each run of white space, and none at the ends");
    arguments.AddFlag("--library", m_asLibrary,
                      "Write the text that a program gets from the library, by GetTextAsStr");
    arguments.AddFlag("-0,--null", m_endWithNul,
                      "End each value or row with a NUL, not a line feed");
  }

  ExitStatus RunOn(const Input& input, ResultWriter& results, const Session&) override {
    const XMLPtr<IXMLDOMDocument2> document = LoadDocument(input);
    if (document == nullptr) return ExitStatus::kTrouble;
    if (m_endWithNul) results.SetTerminator('\0');
    const std::vector<IXMLDOMNode*> cells = Cells(document.Get());
    const CharacterData texts(input.text, document.Get(), ElementsToRead(cells));
    const std::size_t width = std::max<std::size_t>(m_fields.size(), 1);
    for (std::size_t i = 0; i < cells.size(); ++i) {
      if (cells[i] != nullptr) results.Write(ValueOf(cells[i], texts));
      if ((i + 1) % width == 0) {
        results.EndLine();
      } else {
        results.Write(m_separator.isGiven ? m_separator.text : "\t");
      }
    }
    return cells.empty() ? ExitStatus::kNo : ExitStatus::kDone;
  }

 private:
  std::vector<SearchPath> Fields() const {
    std::vector<SearchPath> fields;
    for (const std::string& field : m_fields) {
      fields.push_back(CheckedPath(field, PathPurpose::kField, "field"));
    }
    return fields;
  }

  /// The nodes whose values are to be written, row by row; null for a field that selects nothing.
  std::vector<IXMLDOMNode*> Cells(IXMLDOMDocument2* document) const {
    std::vector<IXMLDOMNode*> nodes = m_query.Select(document);
    std::vector<IXMLDOMNode*> cells;
    if (!m_fields.empty()) {
      const std::vector<SearchPath> fields = Fields();
      std::vector<FieldSearch> searches(fields.begin(), fields.end());
      for (IXMLDOMNode* node : nodes) {
        for (FieldSearch& search : searches) cells.push_back(search.From(node));
      }
      return cells;
    }
    if (!m_attribute.isGiven) return nodes;
    for (const IXMLDOMNode* node : nodes) {
      IXMLDOMNode* const attribute = xmldom::FindAttribute(node, m_attribute.text.c_str());
      if (attribute != nullptr) cells.push_back(attribute);
    }
    return cells;
  }

  /// Those of the nodes whose text has to be read from the file.
  std::vector<IXMLDOMNode*> ElementsToRead(const std::vector<IXMLDOMNode*>& nodes) const {
    std::vector<IXMLDOMNode*> elements;
    if (m_asLibrary) return elements;
    for (IXMLDOMNode* node : nodes) {
      if (node != nullptr && node->m_eNodeType == NODE_ELEMENT) elements.push_back(node);
    }
    return elements;
  }

  std::string ValueOf(const IXMLDOMNode* node, const CharacterData& texts) const {
    const std::string value =
        node->m_eNodeType == NODE_ELEMENT && !m_asLibrary ? texts.Of(node) : xmldom::Text(node);
    return m_normalizes ? Normalized(value) : value;
  }

  Query m_query{Query::kAll};
  OptionalText m_attribute;
  std::vector<std::string> m_fields;
  OptionalText m_separator;
  bool m_normalizes = false;
  bool m_asLibrary = false;
  bool m_endWithNul = false;
};

std::unique_ptr<Command> Make() { return std::make_unique<ValueCommand>(); }

}  // namespace

const CommandEntry kValueCommand = {
    "value", "Write the text of the nodes that a path selects",
    "The text of an element is all character data in it, as XML defines it: references such as\n"
    "&amp; are written as what they stand for, CDATA sections without their marks, line ends and\n"
    "other white space as they stand; comments are left out. The library keeps less of a text,\n"
    "which --library shows. 'xmldom select --help' explains paths.\n"
    "Exit status: 0 when there is a value, 1 when there is none, 2 for trouble.\n"
    "\n"
    "Example: xmldom value //interface/@name config.xml\n"
    "Example: xmldom value -f @name -f address //interface config.xml",
    Make};

}  // namespace tool
