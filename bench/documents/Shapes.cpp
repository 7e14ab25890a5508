#include <algorithm>
#include <random>

#include "documents/Documents.h"

// The generated documents.

namespace bench {

namespace {

/// Where generated documents get their contents from: the same sequence in every run.
class Words {
 public:
  /// A number below `limit`.
  std::size_t Number(std::size_t limit) { return m_engine() % limit; }

  /// One of a few choices.
  template <std::size_t N>
  const char* OneOf(const char* const (&choices)[N]) {
    return choices[Number(N)];
  }

  std::string Word() {
    static const char* const words[] = {
        "anchor", "basket", "copper",  "dune",    "ember", "furrow", "gate", "harbour",
        "island", "jetty",  "kestrel", "lantern", "moor",  "needle", "oak",  "pebble",
        "quarry", "reed",   "sluice",  "thicket", "umber", "valley", "weir", "yard",
    };
    return OneOf(words);
  }

  /// Words with blanks between them.
  std::string Line(std::size_t count) {
    std::string line = Word();
    for (; count > 1; --count) line += ' ' + Word();
    return line;
  }

 private:
  std::mt19937 m_engine{20240229};  // every standard library gives the same numbers
};

/// How many pieces of `nodesOfOne` nodes each make a document of `nodes` nodes.
std::size_t Pieces(std::size_t nodes, std::size_t nodesOfOne) {
  return std::max<std::size_t>(nodes / nodesOfOne, 4);
}

std::string Attribute(const std::string& name, const std::string& value) {
  return " " + name + "=\"" + value + "\"";
}

std::string Attribute(const std::string& name, std::size_t value) {
  return Attribute(name, std::to_string(value));
}

/// The paths of a document whose elements `name` are numbered by an attribute.
Paths NumberedPaths(const std::string& name, const std::string& attribute, std::size_t count,
                    const std::string& steps) {
  const std::string test = "//" + name + "[@" + attribute + "='";
  Paths paths;
  paths.name = "//" + name;
  paths.attribute = test + std::to_string(count / 2) + "']";
  paths.steps = steps;
  paths.found = test + std::to_string(count / 4) + "']";
  paths.absent = test + "none']";
  return paths;
}

/// Many small records below one parent.
void FlatRecords(std::size_t nodes, Sample& sample) {
  const std::size_t count = Pieces(nodes, 4);
  Words words;
  std::string& xml = sample.text = "<?xml version=\"1.0\"?>\n<records>\n";
  for (std::size_t i = 0; i < count; ++i) {
    xml += "  <record" + Attribute("id", i) + "><name>" + words.Line(2) + "</name></record>\n";
  }
  xml += "</records>\n";
  sample.paths = NumberedPaths("record", "id", count, "/records/record/name");
}

void EightAttributes(std::size_t nodes, Sample& sample) {
  static const char* const states[] = {"up", "down", "unknown", "testing"};
  const std::size_t count = Pieces(nodes, 9);
  Words words;
  std::string& xml = sample.text =
      "<?xml version=\"1.0\"?>\n<table>\n  <title>" + words.Line(5) + "</title>\n  <rows>\n";
  for (std::size_t i = 0; i < count; ++i) {
    xml += "    <row" + Attribute("number", i) + Attribute("name", words.Word()) +
           Attribute("owner", words.Word()) + Attribute("place", words.Line(2)) +
           Attribute("state", words.OneOf(states)) + Attribute("in", words.Number(1000000)) +
           Attribute("out", words.Number(1000000)) + Attribute("errors", words.Number(100)) +
           "/>\n";
  }
  xml += "  </rows>\n</table>\n";
  sample.paths = NumberedPaths("row", "number", count, "/table/rows/row");
  sample.paths.attribute = "//row[@state='down']";
}

void LinesOfText(std::size_t nodes, Sample& sample) {
  const std::size_t lines = 12;
  const std::size_t count = Pieces(nodes, 4);
  Words words;
  std::string& xml = sample.text = "<?xml version=\"1.0\"?>\n<log>\n";
  for (std::size_t i = 0; i < count; ++i) {
    xml += "  <page" + Attribute("number", i) + "><text>\n";
    for (std::size_t line = 0; line < lines; ++line) xml += words.Line(10) + "\n";
    xml += "</text></page>\n";
  }
  xml += "</log>\n";
  sample.paths = NumberedPaths("page", "number", count, "/log/page/text");
}

/// The configuration of a device with many sections.
void DeviceConfiguration(std::size_t nodes, Sample& sample) {
  static const char* const kinds[] = {"ethernet", "bridge", "wireless", "tunnel"};
  static const char* const answers[] = {"yes", "no"};
  const std::size_t count = Pieces(nodes, 34);
  Words words;
  std::string& xml = sample.text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<device" +
                                   Attribute("model", words.Word()) + ">\n";
  for (std::size_t i = 0; i < count; ++i) {
    xml += "  <section" + Attribute("number", i) + ">\n    <interface" +
           Attribute("name", words.Word()) + Attribute("type", words.OneOf(kinds)) +
           Attribute("enabled", words.OneOf(answers)) + ">\n      <address" +
           Attribute("family", "ipv4") + Attribute("prefix", "24") + ">192.168." +
           std::to_string(words.Number(256)) + ".1</address>\n      <mtu>1500</mtu>\n" +
           "      <description>" + words.Line(4) + "</description>\n    </interface>\n" +
           "    <firewall" + Attribute("default", "drop") + ">\n";
    for (int rule = 0; rule < 3; ++rule) {
      xml += "      <rule" + Attribute("action", "accept") + Attribute("from", words.Word()) +
             "><service>" + words.Word() + "</service></rule>\n";
    }
    xml += "    </firewall>\n    <user" + Attribute("name", words.Word()) +
           Attribute("locked", words.OneOf(answers)) + "/>\n  </section>\n";
  }
  xml += "</device>\n";
  sample.paths = NumberedPaths("section", "number", count, "/device/section/interface");
  sample.paths.name = "//rule";
  sample.paths.attribute = "//interface[@type='bridge']";
}

/// Words with elements between them.
void MixedContent(std::size_t nodes, Sample& sample) {
  const std::size_t count = Pieces(nodes, 13);
  Words words;
  std::string& xml = sample.text = "<?xml version=\"1.0\"?>\n<book>\n<chapter>\n";
  for (std::size_t i = 0; i < count; ++i) {
    xml += "<p" + Attribute("number", i) + ">" + words.Line(6) + " <b>" + words.Word() + "</b> " +
           words.Line(5) + " <i>" + words.Line(2) + "</i>, " + words.Line(4) + " <b>" +
           words.Word() + "</b> " + words.Line(3) + ".</p>\n";
  }
  xml += "</chapter>\n</book>\n";
  sample.paths = NumberedPaths("p", "number", count, "/book/chapter/p");
  sample.paths.name = "//b";
}

void References(std::size_t nodes, Sample& sample) {
  const std::size_t count = Pieces(nodes, 5);
  Words words;
  std::string& xml = sample.text = "<?xml version=\"1.0\"?>\n<notes>\n";
  for (std::size_t i = 0; i < count; ++i) {
    xml += "  <note" + Attribute("number", i) +
           Attribute("from", words.Word() + " &amp; " + words.Word()) + "><body>" + words.Line(3) +
           " &lt;" + words.Word() + "&gt; &amp; " + words.Line(3) + " &#8364; " +
           std::to_string(words.Number(1000)) + "</body></note>\n";
  }
  xml += "</notes>\n";
  sample.paths = NumberedPaths("note", "number", count, "/notes/note/body");
}

/// Branches that are many levels deep.
void Depth(std::size_t nodes, Sample& sample) {
  const std::size_t levels = 200;
  const std::size_t count = Pieces(nodes, levels + 4);
  Words words;
  std::string& xml = sample.text = "<?xml version=\"1.0\"?>\n<tree>\n";
  for (std::size_t i = 0; i < count; ++i) {
    xml += "<branch" + Attribute("number", i) + "><leaf>" + words.Word() + "</leaf>";
    for (std::size_t level = 0; level < levels; ++level) xml += "<level>";
    for (std::size_t level = 0; level < levels; ++level) xml += "</level>";
    xml += "</branch>\n";
  }
  xml += "</tree>\n";
  sample.paths = NumberedPaths("branch", "number", count, "/tree/branch/level");
  sample.paths.name = "//level";
}

}  // namespace

const std::vector<Shape>& AllShapes() {
  static const std::vector<Shape> shapes = {
      {"flat", FlatRecords},   {"attributes", EightAttributes},
      {"lines", LinesOfText},  {"device", DeviceConfiguration},
      {"mixed", MixedContent}, {"references", References},
      {"depth", Depth},
  };
  return shapes;
}

}  // namespace bench
