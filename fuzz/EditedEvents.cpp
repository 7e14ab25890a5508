#include "fuzz/EditedEvents.h"

#include <algorithm>
#include <string>

namespace fuzz {

namespace {

class Rewriting {
 public:
  Rewriting(const tool::Edit& edit, const std::vector<Event>& fragment)
      : m_edit(edit), m_kind(edit.kind->option), m_fragment(fragment) {}

  void Begin(const Event& event, bool isTarget) {
    m_open.push_back({isTarget, event.text});
    if (m_dropped > 0) {
      ++m_dropped;
      return;
    }
    if (isTarget && (m_kind == "--remove" || m_kind == "--replace")) {
      if (m_kind == "--replace") AddFragment();
      m_dropped = 1;
      return;
    }
    Event begin = event;
    if (isTarget) {
      if (m_kind == "--insert-before") AddFragment();
      if (m_kind == "--rename") begin.text = m_open.back().name = m_edit.operands[1];
      ChangeAttributes(begin.attributes);
    }
    AddEvent(begin, m_events);
    if (isTarget && m_kind == "--set") {
      AddEvent({Event::TEXT, m_edit.operands[1], {}, 0}, m_events);
      m_isEmptied = true;
    }
  }

  void End() {
    const Open element = m_open.back();
    m_open.pop_back();
    m_isEmptied = false;
    if (m_dropped > 0) {
      --m_dropped;
      return;
    }
    if (element.isTarget && m_kind == "--append") AddFragment();
    AddEvent({Event::END, element.name, {}, 0}, m_events);
    if (element.isTarget && m_kind == "--insert-after") AddFragment();
  }

  void Other(const Event& event) {
    if (m_dropped == 0 && !m_isEmptied) AddEvent(event, m_events);
  }

  const std::vector<Event>& Events() const { return m_events; }

 private:
  struct Open {
    bool isTarget;
    std::string name;  // as it is behind the edit
  };

  void AddFragment() {
    for (const Event& event : m_fragment) AddEvent(event, m_events);
  }

  void ChangeAttributes(Event::Attributes& attributes) const {
    if (m_kind != "--set-attr" && m_kind != "--remove-attr") return;
    const auto place = std::find_if(attributes.begin(), attributes.end(), [this](const auto& pair) {
      return pair.first == m_edit.operands[1];
    });
    if (m_kind == "--remove-attr") {
      if (place != attributes.end()) attributes.erase(place);
    } else if (place == attributes.end()) {
      attributes.emplace_back(m_edit.operands[1], m_edit.operands[2]);
    } else {
      place->second = m_edit.operands[2];
    }
  }

  const tool::Edit& m_edit;
  const std::string m_kind;
  const std::vector<Event>& m_fragment;
  std::vector<Event> m_events;
  std::vector<Open> m_open;
  int m_dropped = 0;         // how many open elements are left out with their content
  bool m_isEmptied = false;  // whether the content of the innermost element is left out
};

}  // namespace

std::vector<Event> EditedEvents(const std::vector<Event>& before, const tool::Edit& edit,
                                const std::set<std::size_t>& targets,
                                const std::vector<Event>& fragment) {
  Rewriting rewriting(edit, fragment);
  for (const Event& event : before) {
    if (event.kind == Event::BEGIN) {
      rewriting.Begin(event, targets.count(event.offset) != 0);
    } else if (event.kind == Event::END) {
      rewriting.End();
    } else {
      rewriting.Other(event);
    }
  }
  return rewriting.Events();
}

}  // namespace fuzz
