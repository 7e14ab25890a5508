#include "documents/Documents.h"

#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>

// The real documents with their paths, and the documents of all kinds by their names.

namespace bench {

namespace {

const std::map<std::string, Paths> kRealDocuments = {
    {"vk.xml",
     {"//type", "//type[@category='struct']", "/registry/types/type",
      "//type[@name='VkPhysicalDeviceVertexAttributeDivisorFeaturesEXT']", "//type[@name='none']"}},
    {"Gio-2.0.gir",
     {"//doc", "//parameter[@transfer-ownership='none']", "/repository/namespace/record",
      "//method[@name='can_stop']", "//method[@name='none']"}},
    {"freedesktop.org.xml",
     {"//comment", "//mime-type[@type='application/pdf']", "/mime-info/mime-type/comment",
      "//mime-type[@type='application/x-executable']", "//mime-type[@type='none']"}},
    {"iso_639-3.xml",
     {"//iso_639_3_entry", "//iso_639_3_entry[@type='E']", "/iso_639_3_entries/iso_639_3_entry",
      "//iso_639_3_entry[@id='fut']", "//iso_639_3_entry[@id='none']"}},
    {"de.xml",
     {"//displayName", "//unitPattern[@count='one']", "/ldml/characterLabels/characterLabel",
      "//calendar[@type='islamic']", "//calendar[@type='none']"}},
};

/// A tree of extreme depth or breadth. Its nodes are not counted, because counting recurses over
/// the depth. The search for the absent path fails at every element.
Sample Extreme(const std::string& begin, const std::string& end, const std::string& steps,
               std::size_t nodes) {
  Sample sample;
  sample.text = begin + "<c d='e'>x</c>" + end;
  sample.paths = {"//a", "//c[@d='e']", steps, "//c[@d='e']", "//a/b"};
  sample.nodes = nodes;
  sample.hasText = true;
  return sample;
}

Sample MakeSample(const std::string& name, std::size_t nodes) {
  if (name == "levels") {
    return Extreme(Repeated("<a>", nodes), Repeated("</a>", nodes), "/a/a", nodes);
  }
  if (name == "siblings") {
    return Extreme("<list>" + Repeated("<a/>", nodes), "</list>", "/list/a", nodes);
  }
  Sample sample;
  if (name == "children") {
    sample.text = "<list></list>";
    sample.nodes = nodes;
    return sample;
  }
  const auto known = kRealDocuments.find(name);
  if (known == kRealDocuments.end()) {
    sample = Generate(name, nodes);
  } else {
    sample.text = Contents(XMLDOM_BENCH_DOCUMENTS "/" + name);
    sample.paths = known->second;
  }
  CountNodes(sample);
  return sample;
}

}  // namespace

std::vector<std::string> RealDocumentNames() {
  std::vector<std::string> names;
  for (const auto& document : kRealDocuments) names.push_back(document.first);
  return names;
}

const Sample& FindSample(const std::string& name, std::size_t nodes) {
  static std::map<std::pair<std::string, std::size_t>, Sample> samples;
  const auto found = samples.find({name, nodes});
  if (found != samples.end()) return found->second;
  return samples.emplace(std::make_pair(name, nodes), MakeSample(name, nodes)).first->second;
}

std::string Contents(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + path);
  return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

}  // namespace bench
