#include <algorithm>
#include <random>
#include <stdexcept>

#include "documents/Documents.h"

// The generated documents. Each is a text with fields in braces, whose content comes from a
// sequence of random numbers that is the same in every run.

namespace bench {

namespace {

/// A document is the head, as many pieces as make its nodes, and the tail.
struct Shape {
  const char* name;
  std::size_t nodesOfPiece;
  std::string head;
  std::string piece;
  std::string tail;
  std::string numbered;         // "//name[@attr='", an attribute with the number of the piece
  std::string steps;            // see Paths
  std::string selectName;       // see Paths
  std::string selectAttribute;  // see Paths; empty: the piece in the middle, by its number
};

const std::vector<Shape>& AllShapes() {
  static const std::vector<Shape> shapes = {
      // Many small records below one parent.
      {"flat", 4, "<records>\n", "  <record id='{number}'><name>{2 words}</name></record>\n",
       "</records>\n", "//record[@id='", "/records/record/name", "//record", ""},

      {"attributes", 9, "<table>\n  <title>{5 words}</title>\n  <rows>\n",
       "    <row number='{number}' name='{1 word}' owner='{1 word}' place='{2 words}'"
       " state='{up|down|unknown|testing}' in='{below 1000000}' out='{below 1000000}'"
       " errors='{below 100}'/>\n",
       "  </rows>\n</table>\n", "//row[@number='", "/table/rows/row", "//row",
       "//row[@state='down']"},

      {"lines", 4, "<log>\n",
       "  <page number='{number}'><text>\n" + Repeated("{10 words}\n", 12) + "</text></page>\n",
       "</log>\n", "//page[@number='", "/log/page/text", "//page", ""},

      // The configuration of a device with many sections.
      {"device", 34, "<device model='{1 word}'>\n",
       "  <section number='{number}'>\n"
       "    <interface name='{1 word}' type='{ethernet|bridge|wireless|tunnel}'"
       " enabled='{yes|no}'>\n"
       "      <address family='ipv4' prefix='24'>192.168.{below 256}.1</address>\n"
       "      <mtu>1500</mtu>\n"
       "      <description>{4 words}</description>\n"
       "    </interface>\n"
       "    <firewall default='drop'>\n" +
           Repeated(
               "      <rule action='accept' from='{1 word}'><service>{1 word}</service></rule>\n",
               3) +
           "    </firewall>\n"
           "    <user name='{1 word}' locked='{yes|no}'/>\n"
           "  </section>\n",
       "</device>\n", "//section[@number='", "/device/section/interface", "//rule",
       "//interface[@type='bridge']"},

      // Words with elements between them.
      {"mixed", 13, "<book>\n<chapter>\n",
       "<p number='{number}'>{6 words} <b>{1 word}</b> {5 words} <i>{2 words}</i>, {4 words}"
       " <b>{1 word}</b> {3 words}.</p>\n",
       "</chapter>\n</book>\n", "//p[@number='", "/book/chapter/p", "//b", ""},

      {"references", 5, "<notes>\n",
       "  <note number='{number}' from='{1 word} &amp; {1 word}'><body>{3 words} &lt;{1 word}&gt;"
       " &amp; {3 words} &#8364; {below 1000}</body></note>\n",
       "</notes>\n", "//note[@number='", "/notes/note/body", "//note", ""},

      // Branches that are many levels deep.
      {"depth", 204, "<tree>\n",
       "<branch number='{number}'><leaf>{1 word}</leaf>" + Repeated("<level>", 200) +
           Repeated("</level>", 200) + "</branch>\n",
       "</tree>\n", "//branch[@number='", "/tree/branch/level", "//level", ""},
  };
  return shapes;
}

/// Fills fields.
class Filler {
 public:
  /// Puts content in the place of all fields of a text; `number` is that of the piece.
  std::string Fill(const std::string& text, std::size_t number) {
    std::string filled;
    std::size_t from = 0;
    for (std::size_t open; (open = text.find('{', from)) != std::string::npos;) {
      const std::size_t close = text.find('}', open);
      filled.append(text, from, open - from);
      filled += ContentOf(text.substr(open + 1, close - open - 1), number);
      from = close + 1;
    }
    return filled.append(text, from, std::string::npos);
  }

 private:
  std::string ContentOf(const std::string& field, std::size_t number) {
    if (field == "number") return std::to_string(number);
    if (field.compare(0, 6, "below ") == 0) {
      return std::to_string(Number(std::stoul(field.substr(6))));
    }
    if (field.find('|') != std::string::npos) return OneOf(field);
    static const std::vector<std::string> words = {
        "anchor", "basket", "copper",  "dune",    "ember", "furrow", "gate", "harbour",
        "island", "jetty",  "kestrel", "lantern", "moor",  "needle", "oak",  "pebble",
        "quarry", "reed",   "sluice",  "thicket", "umber", "valley", "weir", "yard",
    };
    std::string line = words[Number(words.size())];
    for (std::size_t count = std::stoul(field); count > 1; --count) {
      line += ' ' + words[Number(words.size())];
    }
    return line;
  }

  /// One of the choices that a text has, with bars between them.
  std::string OneOf(const std::string& choices) {
    std::size_t begin = 0;
    const auto bars = std::count(choices.begin(), choices.end(), '|');
    for (std::size_t skipped = Number(static_cast<std::size_t>(bars) + 1); skipped > 0; --skipped) {
      begin = choices.find('|', begin) + 1;
    }
    return choices.substr(begin, choices.find('|', begin) - begin);
  }

  /// A number below `limit`.
  std::size_t Number(std::size_t limit) { return m_engine() % limit; }

  std::mt19937 m_engine{20240229};  // Every standard library gives the same numbers.
};

}  // namespace

std::vector<std::string> ShapeNames() {
  std::vector<std::string> names;
  for (const Shape& shape : AllShapes()) names.push_back(shape.name);
  return names;
}

Sample Generate(const std::string& name, std::size_t nodes) {
  for (const Shape& shape : AllShapes()) {
    if (shape.name != name) continue;
    const std::size_t pieces = std::max<std::size_t>(nodes / shape.nodesOfPiece, 4);
    Filler filler;
    Sample sample;
    sample.text = "<?xml version=\"1.0\"?>\n" + filler.Fill(shape.head, 0);
    for (std::size_t i = 0; i < pieces; ++i) sample.text += filler.Fill(shape.piece, i);
    sample.text += shape.tail;

    const auto piece = [&](std::size_t i) { return shape.numbered + std::to_string(i) + "']"; };
    sample.paths = {shape.selectName, shape.selectAttribute, shape.steps, piece(pieces / 4),
                    shape.numbered + "none']"};
    if (sample.paths.attribute.empty()) sample.paths.attribute = piece(pieces / 2);
    return sample;
  }
  throw std::runtime_error("no document " + name);
}

std::string Repeated(const std::string& piece, std::size_t count) {
  std::string text;
  text.reserve(piece.size() * count);
  for (; count > 0; --count) text += piece;
  return text;
}

}  // namespace bench
