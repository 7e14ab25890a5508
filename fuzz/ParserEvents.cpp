#include "fuzz/ParserEvents.h"

#include <expat.h>

#include <memory>

namespace fuzz {

namespace {

class Recorder {
 public:
  explicit Recorder(std::vector<Event>& events)
      : m_parser(XML_ParserCreate(nullptr), &XML_ParserFree), m_events(events) {
    XML_Parser parser = m_parser.get();
    XML_SetUserData(parser, this);
    XML_SetElementHandler(
        parser,
        [](void* self, const char* name, const char** attributes) {
          Event::Attributes pairs;
          for (; *attributes != nullptr; attributes += 2) {
            pairs.emplace_back(attributes[0], attributes[1]);
          }
          static_cast<Recorder*>(self)->Add(Event::BEGIN, name, pairs);
        },
        [](void* self, const char* name) { static_cast<Recorder*>(self)->Add(Event::END, name); });
    XML_SetCharacterDataHandler(parser, [](void* self, const char* piece, int size) {
      const std::string text(piece, static_cast<std::size_t>(size));
      static_cast<Recorder*>(self)->Add(Event::TEXT, text);
    });
    XML_SetCommentHandler(parser, [](void* self, const char* comment) {
      static_cast<Recorder*>(self)->Add(Event::COMMENT, comment);
    });
    XML_SetProcessingInstructionHandler(
        parser, [](void* self, const char* target, const char* data) {
          const std::string instruction = std::string(target) + " " + data;
          static_cast<Recorder*>(self)->Add(Event::INSTRUCTION, instruction);
        });
    XML_SetSkippedEntityHandler(parser, [](void* self, const char* name, int) {
      static_cast<Recorder*>(self)->Add(Event::SKIPPED_ENTITY, name);
    });
  }

  bool Parse(const std::string& bytes) {
    return XML_Parse(m_parser.get(), bytes.data(), static_cast<int>(bytes.size()), XML_TRUE) ==
           XML_STATUS_OK;
  }

 private:
  void Add(Event::Kind kind, const std::string& text, const Event::Attributes& attributes = {}) {
    const long offset = static_cast<long>(XML_GetCurrentByteIndex(m_parser.get()));
    AddEvent({kind, text, attributes, static_cast<std::size_t>(offset)}, m_events);
  }

  std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> m_parser;
  std::vector<Event>& m_events;
};

}  // namespace

void AddEvent(const Event& event, std::vector<Event>& events) {
  if (event.kind != Event::TEXT) {
    events.push_back(event);
  } else if (!events.empty() && events.back().kind == Event::TEXT) {
    events.back().text += event.text;
  } else if (!event.text.empty()) {
    events.push_back(event);
  }
}

bool ParseEvents(const std::string& bytes, std::vector<Event>& events) {
  events.clear();
  return Recorder(events).Parse(bytes);
}

std::vector<Event> WithoutSpace(const std::vector<Event>& events) {
  std::vector<Event> result;
  for (Event event : events) {
    if (event.kind == Event::TEXT) {
      std::string kept;
      for (const char c : event.text) {
        if (c != ' ' && c != '\t' && c != '\r' && c != '\n') kept += c;
      }
      event.text = kept;
    }
    AddEvent(event, result);
  }
  return result;
}

}  // namespace fuzz
