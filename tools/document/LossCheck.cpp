// Finds the first place of a text that would be lost or moved when the library writes it again.
// Parses the text as the library does, and compares each event with what the library makes of it.
// Tested by tests/tool/LossCheck_test.cpp and tests/tool/LosslessProperty_test.cpp.

#include <tools/document/LossCheck.h>

#include <tools/document/References.h>
#include <tools/document/SpaceAttribute.h>
#include <tools/io/Input.h>
#include <tools/io/SourceText.h>

#include <xmldom/parse/ExpatImpl.h>

#include <strings.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <new>
#include <stdexcept>
#include <vector>

namespace tool {

namespace {

// The offset of something that does not occur.
const std::size_t kNowhere = std::string::npos;

const char kEncoding[] = "the encoding would become UTF-8";
const char kComment[] = "a comment inside the root element would be moved into a text";
const char kInstruction[] =
    "a processing instruction inside the root element would be moved into a text";
const char kCdataSection[] = "a CDATA section would be moved into a text";
const char kMixedText[] = "text beside elements would be moved before them";
const char kLineBreak[] = "a line break in a text would be lost";
const char kWhiteSpace[] = "white space in a text would be lost";
const char kBlankText[] = "a text of white space alone would be lost";
const char kPreserved[] = "white space that xml:space='preserve' protects would change";
const char kAttributeBreak[] = "a tab or line break in an attribute value would become a blank";
const char kEntity[] = "a reference to an entity would be replaced by its text";
const char kSuppliedAttribute[] = "an attribute that the document type supplies would be written";
const char kOuterComment[] = "a comment outside the root element would be lost";
const char kOuterInstruction[] = "a processing instruction outside the root element would be lost";
const char kDocumentType[] = "a document type would be lost";

/// Makes the report out of the events of the parser. Entities are not expanded, so that every event
/// stands for bytes of the text itself. The first loss that is reported is the one that counts.
class LossFinder : public CExpatImpl<LossFinder> {
 public:
  LossFinder(const std::string& text, Surroundings surroundings, Values values)
      : m_text(text),
        m_dropsSurroundings(surroundings == Surroundings::kDropped),
        m_masksValues(values == Values::kMasked),
        m_report(),
        m_declaresEntities(false),
        m_hasElements(false),
        m_textAt(kNowhere),
        m_blankAt(kNowhere) {
    if (!CreateParser()) throw std::bad_alloc();
    EnableDefaultHandler(true, false);
    EnableOtherHandlers();
  }
  ~LossFinder() { DestroyParser(); }

  LossFinder(const LossFinder&) = delete;
  LossFinder& operator=(const LossFinder&) = delete;

  /// Reports the encoding of a file that has been turned into UTF-8 before.
  void ReportEncoding() { Report(0, kEncoding); }

  LossReport Find() {
    if (m_text.size() > INT_MAX) throw std::length_error("larger than the parser can take");
    if (!Parse(m_text.data(), static_cast<int>(m_text.size()), true)) {
      if (GetErrorCode() == XML_ERROR_NO_MEMORY) throw std::bad_alloc();
      Report(std::min(EventBegin(), m_text.size()), XML_ErrorString(GetErrorCode()));
    }
    return m_report;
  }

  // Called by CExpatImpl for the tags of elements, and for texts and references (OnDefault).

  void OnStartElement(const char*, const char** attributes) {
    if (m_preserves.empty()) {
      m_report.rootBegin = EventBegin();
    } else {
      // Behind a child element, OnDefault has reported the text.
      if (m_textAt != kNowhere && !m_hasElements) ReportValue(m_textAt, kMixedText);
      if (m_preserves.back()) {
        ReportValue(m_blankAt != kNowhere ? m_blankAt : EventBegin(), kPreserved);
      }
    }
    CheckAttributes(attributes);
    m_preserves.push_back(KeepsSpace(attributes, !m_preserves.empty() && m_preserves.back()));
    BeginContent(false);
  }

  void OnEndElement(const char*) {
    if (!m_hasElements && m_textAt == kNowhere && m_blankAt != kNowhere) {
      ReportValue(m_blankAt, kBlankText);
    }
    m_preserves.pop_back();
    BeginContent(true);
    if (m_preserves.empty()) m_report.rootEnd = EventEnd();
  }

  void OnDefault(const char* text, int length) {
    if (m_preserves.empty()) return;
    const char* const end = text + length;
    const char* const solid = std::find_if_not(text, end, IsSpace);
    if (solid == end) {
      if (m_blankAt == kNowhere) m_blankAt = EventBegin();
    } else {
      const std::size_t solidAt = EventBegin() + static_cast<std::size_t>(solid - text);
      if (m_hasElements) ReportValue(solidAt, kMixedText);
      if (*text == '&' && m_declaresEntities &&
          !IsPlainReference(text, static_cast<std::size_t>(length))) {
        ReportValue(solidAt, kEntity);
      }
      if (m_textAt == kNowhere) m_textAt = solidAt;
    }
    // The library drops a piece of white space alone, even when the same element holds other text.
    if (m_textAt != kNowhere && m_blankAt != kNowhere) {
      ReportValue(m_blankAt, IsLineEnd(m_text[m_blankAt]) ? kLineBreak : kWhiteSpace);
      m_blankAt = kNowhere;
    }
  }

 private:
  void EnableOtherHandlers() {
    XML_SetXmlDeclHandler(m_p, [](void* self, const char*, const char* encoding, int) {
      static_cast<LossFinder*>(self)->OnDeclaration(encoding);
    });
    XML_SetCommentHandler(m_p, [](void* self, const char*) {
      static_cast<LossFinder*>(self)->OnMarkup(kComment, kOuterComment);
    });
    XML_SetProcessingInstructionHandler(m_p, [](void* self, const char*, const char*) {
      static_cast<LossFinder*>(self)->OnMarkup(kInstruction, kOuterInstruction);
    });
    XML_SetStartCdataSectionHandler(
        m_p, [](void* self) { static_cast<LossFinder*>(self)->OnSection(); });
    XML_SetStartDoctypeDeclHandler(m_p, [](void* self, const char*, const char*, const char*, int) {
      static_cast<LossFinder*>(self)->OnDocumentType();
    });
    XML_SetEntityDeclHandler(m_p, [](void* self, const char*, int isParameter, const char* value,
                                     int, const char*, const char*, const char*, const char*) {
      // Only general entities with a text count: the library keeps references to others as they
      // are.
      if (!isParameter && value != nullptr) {
        static_cast<LossFinder*>(self)->m_declaresEntities = true;
      }
    });
  }

  void OnDeclaration(const char* encoding) {
    m_report.declarationEnd = EventEnd();
    if (encoding == nullptr || strcasecmp(encoding, "UTF-8") == 0) return;
    // The parser gives a copy of the name, so it is looked for in the declaration itself.
    m_report.encodingBegin = m_text.rfind(encoding, EventEnd());
    m_report.encodingEnd = m_report.encodingBegin + std::strlen(encoding);
    Report(m_report.encodingBegin, kEncoding);
  }

  void OnDocumentType() {
    // The parser reports the document type where its name and identifiers end.
    if (m_dropsSurroundings) Report(m_text.rfind("<!DOCTYPE", EventBegin()), kDocumentType);
  }

  void OnMarkup(const char* insideRoot, const char* outsideRoot) {
    if (!m_preserves.empty()) {
      Report(EventBegin(), insideRoot);
    } else if (m_dropsSurroundings) {
      Report(EventBegin(), outsideRoot);
    }
  }

  void OnSection() { ReportValue(EventBegin(), kCdataSection); }

  /// Reports references in a start tag that the library would write differently, and attributes
  /// that do not stand in the tag. In a start tag, each '&' begins a reference.
  void CheckAttributes(const char** attributes) {
    const char* const end = m_text.data() + EventEnd();
    const char* at = m_text.data() + EventBegin();
    while ((at = std::find(at, end, '&')) != end) {
      const std::size_t size = static_cast<std::size_t>(std::find(at, end, ';') - at) + 1;
      if (!IsPlainReference(at, size)) ReportValue(OffsetOf(at), kEntity);
      if (IsBreakReference(at)) ReportValue(OffsetOf(at), kAttributeBreak);
      at += size;
    }
    const int written = XML_GetSpecifiedAttributeCount(m_p);
    if (attributes[written] != nullptr) Report(EventBegin(), kSuppliedAttribute);
  }

  /// Called behind each tag: behind a start tag the content of a new element begins, behind an end
  /// tag the content of the element around it goes on. `hasElements`: whether that has had a child.
  void BeginContent(bool hasElements) {
    m_hasElements = hasElements;
    m_textAt = kNowhere;
    m_blankAt = kNowhere;
  }

  /// Reports what is lost of a text or a value, unless all of these are left out anyway.
  void ReportValue(std::size_t offset, const char* reason) {
    if (!m_masksValues) Report(offset, reason);
  }

  void Report(std::size_t offset, const char* reason) {
    if (m_report.count++ != 0) return;
    m_report.offset = offset;
    m_report.reason = reason;
  }

  std::size_t OffsetOf(const char* at) const {
    return static_cast<std::size_t>(at - m_text.data());
  }

  std::size_t EventBegin() const { return static_cast<std::size_t>(XML_GetCurrentByteIndex(m_p)); }

  std::size_t EventEnd() const {
    return EventBegin() + static_cast<std::size_t>(XML_GetCurrentByteCount(m_p));
  }

  const std::string& m_text;
  const bool m_dropsSurroundings;
  const bool m_masksValues;
  LossReport m_report;
  bool m_declaresEntities;
  std::vector<bool> m_preserves;  // for each open element: whether it preserves white space

  // What the innermost open element holds since its last child element. Text in front of a child is
  // reported when the child begins, so that no more has to be remembered.
  bool m_hasElements;
  std::size_t m_textAt;   // offset of its first text that is not white space, or kNowhere
  std::size_t m_blankAt;  // offset of its first piece of white space alone that has not been
                          // reported, or kNowhere
};

}  // namespace

LossReport FindLoss(const std::string& text, Surroundings surroundings, Values values) {
  return LossFinder(text, surroundings, values).Find();
}

LossReport FindLoss(const Input& input, Surroundings surroundings, Values values) {
  LossFinder finder(input.text, surroundings, values);
  if (input.WasUtf16()) finder.ReportEncoding();
  return finder.Find();
}

}  // namespace tool
