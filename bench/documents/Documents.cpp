#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "documents/Documents.h"
#include "libraries/Expat.h"

// The real documents with their paths, and what is counted in any document.

namespace bench {

namespace {

struct RealDocument {
  const char* file;
  bool isNamespaced;
  Paths paths;
};

const RealDocument kRealDocuments[] = {
    {"vk.xml",
     false,
     {"//type", "//type[@category='struct']", "/registry/types/type",
      "//type[@name='VkPhysicalDeviceVertexAttributeDivisorFeaturesEXT']", "//type[@name='none']"}},
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

struct Counter {
  Sample& sample;
  int depth;      // of the innermost open element
  bool isInText;  // since the last tag
};

void OnStart(void* userData, const XML_Char*, const XML_Char** attributes) {
  Counter& counter = *static_cast<Counter*>(userData);
  ++counter.sample.nodes;
  for (; attributes[0] != nullptr; attributes += 2) ++counter.sample.nodes;
  ++counter.depth;
  counter.isInText = false;
}

void OnEnd(void* userData, const XML_Char*) {
  Counter& counter = *static_cast<Counter*>(userData);
  --counter.depth;
  counter.isInText = false;
}

void OnDefault(void* userData, const XML_Char* text, int length) {
  Counter& counter = *static_cast<Counter*>(userData);
  if (counter.depth == 0 || IsBlank(text, length)) return;
  if (!counter.isInText) ++counter.sample.nodes;
  counter.isInText = true;
  counter.sample.hasText = true;
  const bool hasReference = std::memchr(text, '&', static_cast<std::size_t>(length)) != nullptr;
  if (hasReference) counter.sample.hasReferencesInText = true;
}

}  // namespace

void CountNodes(Sample& sample) {
  Counter counter = {sample, 0, false};
  const ExpatHandlers handlers = {OnStart, OnEnd, OnDefault};
  if (!ParseText(sample.text, handlers, &counter)) {
    throw std::runtime_error(sample.name + " is not well-formed");
  }
}

std::string Contents(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + path);
  return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

Sample MakeSample(const std::string& set, const std::string& name, std::size_t nodes) {
  for (const Shape& shape : AllShapes()) {
    if (shape.name != name) continue;
    Sample sample;
    sample.set = set;
    sample.name = name;
    shape.generate(nodes, sample);
    CountNodes(sample);
    return sample;
  }
  throw std::runtime_error("no shape " + name);
}

Sample ListToEdit(const std::string& set, std::size_t children) {
  Sample sample;
  sample.set = set;
  sample.name = "children";
  sample.text = "<list></list>";
  sample.nodes = children;
  sample.isListToEdit = true;
  return sample;
}

std::vector<Sample> RealDocuments(const std::string& folder) {
  std::vector<Sample> samples;
  for (const RealDocument& known : kRealDocuments) {
    Sample sample;
    sample.set = "real";
    sample.name = known.file;
    sample.text = Contents(folder + "/" + known.file);
    sample.isNamespaced = known.isNamespaced;
    sample.paths = known.paths;
    CountNodes(sample);
    samples.push_back(sample);
  }
  return samples;
}

}  // namespace bench
