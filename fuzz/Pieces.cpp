// A byte that says how long pieces are, and a text: a handler object of its own, which keeps what
// it is told with the support layer, is told the same by a parser that gets the text in pieces.

#include <xmldom/parse/ExpatImpl.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "fuzz/Check.h"
#include "fuzz/Input.h"
#include "fuzz/Trees.h"

using fuzz::Input;

namespace {

/// Writes down the events of a parse. Texts that follow each other are one event, because a parser
/// cuts them where its input is cut.
class Recorder : public CExpatImpl<Recorder> {
 public:
  Recorder() : m_events(1), m_text(1) { FUZZ_CHECK(CreateParser()); }
  ~Recorder() { DestroyParser(); }

  void OnStartElement(const char* name, const char** attributes) {
    EndText();
    m_events.WriteF("<%s", name);
    for (; attributes[0] != nullptr; attributes += 2) {
      m_events.WriteF(" %s='", attributes[0]);
      m_events.WriteStrEntities(attributes[1]);
      m_events.Write("'", 1);
    }
    m_events.Write(">", 1);
  }
  void OnEndElement(const char* name) {
    EndText();
    m_events.WriteF("</%s>", name);
  }
  void OnDefault(const char* text, int length) {
    m_text.Write(text, static_cast<unsigned int>(length));
  }

  /// Parses a text in pieces of at most `most` bytes. Result: whether it parsed.
  bool ParsePieces(const std::string& text, std::size_t most) {
    std::size_t at = 0;
    bool parsed = true;
    do {
      const std::size_t length = std::min(most, text.size() - at);
      parsed = Parse(text.data() + at, static_cast<int>(length), at + length == text.size());
      at += length;
    } while (parsed && at < text.size());
    EndText();
    return parsed;
  }

  /// What happened; read with the buffer's own member, in portions of any size.
  std::string Events(unsigned int portion) {
    std::string events;
    m_events.m_uPosition = 0;
    char memory[256];
    while (const unsigned int count = m_events.Read(memory, portion)) events.append(memory, count);
    FUZZ_CHECK(events.size() == m_events.m_uLength);
    return events;
  }

 private:
  void EndText() {
    if (m_text.m_uLength == 0) return;
    CheckValue();
    m_events.WriteF("[%u:", m_text.m_uLength);
    m_events.Write(m_text.GetAsStr(), m_text.m_uLength);
    m_events.Write("]", 1);
    m_text.m_uPosition = m_text.m_uLength = 0;
  }

  /// A text as a value: copies are equal, and one that is a number stays that number.
  void CheckValue() {
    const _bstr_t text(SysAllocStringLen(m_text.GetAsStr(), m_text.m_uLength), false);
    VARIANT value;
    VARIANT copy;
    VariantInit(&value);
    VariantInit(&copy);
    value.vt = VT_BSTR;
    value.bstrVal = SysAllocString(text);
    FUZZ_CHECK(VariantCopy(&copy, &value) == S_OK);
    FUZZ_CHECK(std::strcmp(copy.bstrVal, value.bstrVal) == 0);
    if (VariantChangeType(&copy, &copy, 0, VT_I4) == S_OK) {
      const int number = copy.lVal;
      FUZZ_CHECK(VariantChangeType(&value, &copy, 0, VT_BSTR) == S_OK);
      FUZZ_CHECK(VariantChangeType(&value, &value, 0, VT_I4) == S_OK && value.lVal == number);
    }
    VariantClear(&value);
    VariantClear(&copy);
  }

  CMemFile m_events;
  CMemFile m_text;  // since the last tag
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Hush();
  const fuzz::BalanceCheck balance;
  Input input(data, size);
  const std::size_t most = 1 + input.Byte();
  const unsigned int portion = 1 + input.Byte();
  const std::string text = input.Rest();

  Recorder whole;
  Recorder pieces;
  const bool parsed = whole.ParsePieces(text, text.size() + 1);
  FUZZ_CHECK(pieces.ParsePieces(text, most) == parsed);
  // Which of two errors a parser tells depends on where its input is cut, and so does what it tells
  // before.
  if (parsed) FUZZ_CHECK(pieces.Events(portion) == whole.Events(256));
  return 0;
}
