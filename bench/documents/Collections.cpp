#include "documents/Collections.h"

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace bench {

namespace {

struct RealDocument {
  const char* file;
  bool isNamespaced;
  Paths paths;
};

const std::vector<RealDocument>& KnownDocuments() {
  static const std::vector<RealDocument> documents = {
      {"vk.xml",
       false,
       {"//type", "//type[@category='struct']", "/registry/types/type",
        "//type[@name='VkPhysicalDeviceVertexAttributeDivisorFeaturesEXT']",
        "//type[@name='none']"}},
      {"Gio-2.0.gir",
       true,
       {"//doc", "//parameter[@transfer-ownership='none']", "/repository/namespace/record",
        "//method[@name='can_stop']", "//method[@name='none']"}},
      {"freedesktop.org.xml",
       true,
       {"//comment", "//mime-type[@type='application/pdf']", "/mime-info/mime-type/comment",
        "//mime-type[@type='application/x-executable']", "//mime-type[@type='none']"}},
      {"iso_639-3.xml",
       false,
       {"//iso_639_3_entry", "//iso_639_3_entry[@type='E']", "/iso_639_3_entries/iso_639_3_entry",
        "//iso_639_3_entry[@id='fut']", "//iso_639_3_entry[@id='none']"}},
      {"de.xml",
       false,
       {"//displayName", "//unitPattern[@count='one']", "/ldml/characterLabels/characterLabel",
        "//calendar[@type='islamic']", "//calendar[@type='none']"}},
  };
  return documents;
}

std::string Contents(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + path);
  return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

}  // namespace

Sample MakeSample(const Shape& shape, const std::string& set, std::size_t nodes) {
  Sample sample;
  sample.name = shape.name;
  sample.set = set;
  shape.generate(nodes, sample);
  CountNodes(sample);
  return sample;
}

std::vector<Sample> OneOfEachShape(const std::string& set, std::size_t nodes) {
  std::vector<Sample> samples;
  for (const Shape& shape : AllShapes()) samples.push_back(MakeSample(shape, set, nodes));
  return samples;
}

std::vector<Sample> RealDocuments(const std::string& folder) {
  std::vector<Sample> samples;
  for (const RealDocument& known : KnownDocuments()) {
    Sample sample;
    sample.name = known.file;
    sample.set = "real";
    sample.text = Contents(folder + "/" + known.file);
    sample.isNamespaced = known.isNamespaced;
    sample.paths = known.paths;
    CountNodes(sample);
    samples.push_back(sample);
  }
  return samples;
}

}  // namespace bench
