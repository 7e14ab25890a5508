#include "tool/ParserEvents.h"

#include <expat.h>

#include <cstring>
#include <memory>

namespace {

bool IsBlank(const std::string& text) { return text.find_first_not_of(" \t\r\n") == text.npos; }

class Recorder {
 public:
  explicit Recorder(const std::string& text)
      : m_parser(XML_ParserCreate(nullptr), &XML_ParserFree),
        m_source(text),
        m_hasReference(false) {
    XML_Parser parser = m_parser.get();
    XML_SetUserData(parser, this);
    XML_SetElementHandler(
        parser,
        [](void* self, const char* name, const char** attributes) {
          static_cast<Recorder*>(self)->Begin(name, attributes);
        },
        [](void* self, const char*) { static_cast<Recorder*>(self)->End(); });
    XML_SetCharacterDataHandler(parser, [](void* self, const char* piece, int size) {
      static_cast<Recorder*>(self)->AddText(piece, static_cast<std::size_t>(size));
    });
    XML_SetCommentHandler(parser, [](void* self, const char* comment) {
      static_cast<Recorder*>(self)->Add(std::string("comment ") + comment);
    });
    XML_SetProcessingInstructionHandler(
        parser, [](void* self, const char* target, const char* data) {
          static_cast<Recorder*>(self)->Add(std::string("instruction ") + target + " " + data);
        });
    XML_SetCdataSectionHandler(
        parser, [](void* self) { static_cast<Recorder*>(self)->Add("section begins"); },
        [](void* self) { static_cast<Recorder*>(self)->Add("section ends"); });
    XML_SetDefaultHandler(parser, [](void* self, const char* piece, int size) {
      static_cast<Recorder*>(self)->Add("other " +
                                        std::string(piece, static_cast<std::size_t>(size)));
    });
    const int size = static_cast<int>(text.size());
    if (XML_Parse(parser, text.data(), size, XML_TRUE) != XML_STATUS_OK) Add("not well-formed");
  }

  const std::vector<std::string>& Events() const { return m_events; }

 private:
  struct Element {
    bool preserves;
    bool hasElements;
  };

  void Begin(const char* name, const char** attributes) {
    EndText(true);
    const bool outerPreserves = !m_open.empty() && m_open.back().preserves;
    if (!m_open.empty()) m_open.back().hasElements = true;
    m_open.push_back({outerPreserves, false});
    std::string event = std::string("begin ") + name;
    const int written = XML_GetSpecifiedAttributeCount(m_parser.get());
    for (int i = 0; attributes[i] != nullptr; i += 2) {
      event += std::string(i < written ? " " : " supplied ") + attributes[i] + "=" +
               attributes[i + 1] + ";";
      if (std::strcmp(attributes[i], "xml:space") == 0) {
        m_open.back().preserves = std::strcmp(attributes[i + 1], "preserve") == 0;
      }
    }
    m_events.push_back(event);
  }

  void End() {
    EndText(m_open.back().hasElements);
    m_open.pop_back();
    m_events.push_back("end");
  }

  void Add(const std::string& event) {
    if (m_open.empty() && IsBlank(event.substr(event.find(' ')))) return;
    EndText(false);
    m_events.push_back(event);
  }

  void AddText(const char* piece, std::size_t size) {
    const long at = XML_GetCurrentByteIndex(m_parser.get());
    if (m_source[static_cast<std::size_t>(at)] == '&') m_hasReference = true;
    m_text.append(piece, size);
  }

  void EndText(bool isBetweenElements) {
    const bool isPreserved = m_hasReference || (!m_open.empty() && m_open.back().preserves);
    const bool isLayout = isBetweenElements && IsBlank(m_text) && !isPreserved;
    if (!m_text.empty() && !isLayout) m_events.push_back("text " + m_text);
    m_text.clear();
    m_hasReference = false;
  }

  std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> m_parser;
  std::vector<Element> m_open;
  const std::string& m_source;
  std::string m_text;
  bool m_hasReference;  // in the text
  std::vector<std::string> m_events;
};

}  // namespace

std::vector<std::string> ParserEvents(const std::string& text) { return Recorder(text).Events(); }
