// A byte that says how long pieces are, and a text: a handler object of its own, which keeps what
// it is told with the support layer, is told the same by a parser that gets the text in pieces. A
// builder that it passes everything on to makes the tree that a load makes, and what it throws
// comes out of the parse.

#include <xmldom/parse/ExpatImpl.h>
#include <xmldom/parse/XMLSax.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>

#include "fuzz/Check.h"
#include "fuzz/Input.h"
#include "fuzz/Trees.h"

using fuzz::Document;
using fuzz::Input;

namespace {

/// Writes down the events of a parse. Texts that follow each other are one event, because a parser
/// cuts them where its input is cut.
class Recorder : public CExpatImpl<Recorder> {
 public:
  Recorder() : m_events(1), m_text(1) { FUZZ_CHECK(CreateParser()); }
  ~Recorder() { DestroyParser(); }

  /// Passes all events on to the builder of a document, and throws at one of them; a null document
  /// and a negative number stand for neither.
  void PassOn(const Document* document, int throwAt) {
    m_builder = document == nullptr ? nullptr : document->Get()->m_pSax;
    m_throwAt = throwAt;
  }

  void OnStartElement(const char* name, const char** attributes) {
    CountEvent();
    if (m_builder != nullptr) m_builder->OnStartElement(name, attributes);
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
    CountEvent();
    if (m_builder != nullptr) m_builder->OnEndElement(name);
    EndText();
    m_events.WriteF("</%s>", name);
  }
  void OnDefault(const char* text, int length) {
    CountEvent();
    if (m_builder != nullptr) m_builder->OnDefault(text, length);
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
  void CountEvent() {
    if (m_throwAt < 0 || m_throwAt-- > 0) return;
    throw ExceptionF("Recorder", "event %d", m_throwAt + 1);
  }

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
  CXMLSax* m_builder = nullptr;
  int m_throwAt = -1;  // how many events are left until the one that throws
};

/// A builder that is called by hand makes the same tree. It takes events from the end of its first
/// load on, which fails here before anything is open.
void CheckBuilding(const std::string& text) {
  Document loaded;
  const bool parsed = loaded.Load(text);
  Document built;
  built.Load("");
  Recorder recorder;
  recorder.PassOn(&built, -1);
  FUZZ_CHECK(recorder.ParsePieces(text.c_str(), text.size() + 1) == parsed);
  if (parsed) FUZZ_CHECK(fuzz::Equal(loaded.Get(), built.Get()));
}

/// An exception of a handler comes out of the parse as it is, and ends it: the parser takes nothing
/// more. Expat tells no error when it stops where a piece ends behind "<![CDATA[".
void CheckThrowing(const std::string& text, std::size_t most, int throwAt) {
  Recorder recorder;
  recorder.PassOn(nullptr, throwAt);
  try {
    recorder.ParsePieces(text, most);
  } catch (CLogException* thrown) {
    const std::unique_ptr<CLogException> exception(thrown);
    FUZZ_CHECK(std::string(exception->GetMessage()) == "event 0");
    FUZZ_CHECK(std::string(exception->GetWhere()) == "Recorder");
    FUZZ_CHECK(exception->GetDetail() == nullptr);
    FUZZ_CHECK(!recorder.Parse("", 0, true));
    FUZZ_CHECK(recorder.GetErrorCode() == XML_ERROR_FINISHED);
  }
}

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
  CheckBuilding(text);
  CheckThrowing(text, most, static_cast<int>(portion) - 1);
  // Which of two errors a parser tells depends on where its input is cut, and so does what it tells
  // before.
  if (parsed) FUZZ_CHECK(pieces.Events(portion) == whole.Events(256));
  return 0;
}
