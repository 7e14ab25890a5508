// The calls of everyday use, with owners and std::string as results.

#include <expat.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include <cstring>
#include <string>

#include "allocation/Sweeps.h"
#include "harness/TemporaryFile.h"
#include "harness/TemporaryFolder.h"
#include "harness/Trees.h"

namespace {

const char* const kLongText = "a text longer than a short string, with < and & and \t in it";

void NoteLoad(const xmldom::LoadResult& result) {
  if (!result) {
    const long code = result.error.code;
    if (code == 0 || code == XML_ERROR_NO_MEMORY || code == XML_ERROR_ABORTED) NoteFailure();
    Note(result.error.reason.c_str());
    return;
  }
  Note(xmldom::Xml(result.document).c_str());
}

void NoteStored(const xmldom::StoreResult& result) { Note(result.Reason()); }

/// A folder with a file to be saved over.
class SavedFile {
 public:
  SavedFile() : m_path(m_folder.Path("saved.xml")) {}

  const std::string& Path() const { return m_path; }

  void Begin() const {
    const int file = open(m_path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (file < 0 || write(file, "<old/>", 6) != 6) ADD_FAILURE() << "cannot write " << m_path;
    fsetxattr(file, "user.note", "kept", 4, 0);  // not every file system has such attributes
    close(file);
  }

  /// Whether there is nothing else in the folder. Asks the system itself, because memory may be
  /// out.
  bool IsAlone() const {
    const std::string::size_type end = m_path.rfind('/');
    char folder[256] = "";
    m_path.copy(folder, end);
    alignas(8) char entries[4096];
    const int descriptor = open(folder, O_RDONLY | O_DIRECTORY);
    const long size = syscall(SYS_getdents64, descriptor, entries, sizeof entries);
    close(descriptor);
    const long kLengthPlace = 16;
    int count = 0;
    for (long at = 0; at < size; ++count) {
      unsigned short length = 0;
      std::memcpy(&length, entries + at + kLengthPlace, sizeof length);
      at += length;
    }
    return count == 3;  // with "." and ".."
  }

  bool IsOld() const {
    char text[7] = "";
    const int file = open(m_path.c_str(), O_RDONLY);
    const ssize_t size = read(file, text, 6);
    close(file);
    return size == 6 && std::strcmp(text, "<old/>") == 0;
  }

 private:
  TemporaryFolder m_folder;
  std::string m_path;
};

void SaveOver(IXMLDOMDocument2* document) {
  static const SavedFile saved;
  saved.Begin();
  try {
    const std::error_code error =
        xmldom::Save(document, saved.Path(), xmldom::Prolog::kDeclaration);
    if (error) {
      NoteFailure();
      if (!saved.IsOld()) NoteFault("an error, and another file");
    } else if (saved.IsOld()) {
      NoteFault("no error, and the old file");
    }
  } catch (const std::bad_alloc&) {
    if (!saved.IsOld()) NoteFault("memory is out, and another file");
    if (!saved.IsAlone()) NoteFault("memory is out, and a file is left");
    throw;
  }
  if (!saved.IsAlone()) NoteFault("a file is left");
}

const FailingCall kReading[] = {
    {"xmldom::LoadText",
     [](IXMLDOMDocument2*) { NoteLoad(xmldom::LoadText("<a k='1'>text<b/></a>")); }},
    {"xmldom::LoadText, that does not parse",
     [](IXMLDOMDocument2*) { NoteLoad(xmldom::LoadText("<a k='1'>text<b></a>")); }},
    {"xmldom::LoadText, with a NUL byte",
     [](IXMLDOMDocument2*) {
       const xmldom::LoadResult result = xmldom::LoadText(std::string("<a/>\n\0", 6));
       Note(xmldom::OneLine(result.error).c_str());
     }},
    {"xmldom::LoadFile",
     [](IXMLDOMDocument2*) {
       static TemporaryFile file("<a k='1'>text<b/></a>");
       NoteLoad(xmldom::LoadFile(file.Path()));
     }},
    {"xmldom::LoadFile, no such file",
     [](IXMLDOMDocument2*) { NoteLoad(xmldom::LoadFile("/tmp/there/is/no/such/file")); }},
    {"xmldom::OneLine, of an error",
     [](IXMLDOMDocument2*) {
       xmldom::LoadError error;
       error.reason = "a reason that is no short string";
       error.tag = "<tag with='\x01 and more'>";
       error.line = 12;
       Note(xmldom::OneLine(error).c_str());
     }},
    {"xmldom::SelectOne",
     [](IXMLDOMDocument2* document) {
       Note(xmldom::SelectOne(document, "//a[b='y']/b")->m_pszNodeName);
     }},
    {"xmldom::Select",
     [](IXMLDOMDocument2* document) {
       for (const XMLPtr<IXMLDOMNode>& node : xmldom::Select(document, "//b")) {
         Note(node->m_pszNodeName);
       }
     }},
    {"xmldom::Selected",
     [](IXMLDOMDocument2* document) {
       for (const XMLPtr<IXMLDOMNode>& node : xmldom::Selected(Root(document), "/r/a")) {
         Note(node->m_pszNodeName);
       }
     }},
    {"xmldom::Children, xmldom::Attributes",
     [](IXMLDOMDocument2* document) {
       for (const XMLPtr<IXMLDOMNode>& child : xmldom::Children(Root(document))) {
         for (const XMLPtr<IXMLDOMNode>& node : xmldom::Attributes(child)) {
           Note(node->m_pszNodeName);
         }
       }
     }},
    {"xmldom::Listed",
     [](IXMLDOMDocument2* document) {
       XMLPtr<IXMLDOMNodeList> list;
       Root(document)->get_childNodes(list.Out());
       for (const XMLPtr<IXMLDOMNode>& node : xmldom::Listed(std::move(list))) {
         Note(node->m_pszNodeName);
       }
     }},
    {"xmldom::CheckPath",
     [](IXMLDOMDocument2*) {
       Note(xmldom::CheckPath("//a[b='1']/c[@d=2]").reason.c_str());
       Note(xmldom::CheckPath("//a[b='1']/c[1]").reason.c_str());
     }},
    {"xmldom::Text",
     [](IXMLDOMDocument2* document) {
       Note(xmldom::Text(document).c_str());
       Note(xmldom::Text(Root(document)->m_pFirstChild).c_str());
     }},
    {"xmldom::Attribute",
     [](IXMLDOMDocument2* document) {
       Note(xmldom::Attribute(Root(document), "v").c_str());
       Note(xmldom::Attribute(Root(document), "none", kLongText).c_str());
     }},
    {"xmldom::HasAttribute, xmldom::FindAttribute",
     [](IXMLDOMDocument2* document) {
       Note(xmldom::HasAttribute(Root(document), "none"));
       Note(xmldom::FindAttribute(Root(document), "v")->m_pszValue);
     }},
    {"xmldom::Xml",
     [](IXMLDOMDocument2* document) {
       Root(document)->m_pFirstAttribute->AppendValue("", 0);
       Note(xmldom::Xml(document).c_str());
     }},
    {"xmldom::EscapeText, xmldom::EscapeAttribute",
     [](IXMLDOMDocument2*) {
       Note(xmldom::EscapeText(kLongText, xmldom::TextPlace::kAlone).text.c_str());
       Note(xmldom::EscapeAttribute(kLongText).text.c_str());
     }},
    {"xmldom::AdoptBstr, xmldom::AdoptHeapStr",
     [](IXMLDOMDocument2* document) {
       Note(xmldom::AdoptBstr(document->GetXML()).Get());
       Note(xmldom::AdoptHeapStr(document->GetTextAsStr()).Get());
     }},
    {"XMLString::operator std::string",
     [](IXMLDOMDocument2* document) {
       const XMLBstr xml = xmldom::AdoptBstr(document->GetXML());
       Note(std::string(xml).c_str());
     }},
    {"xmldom::Save, xmldom::ReplaceFile", SaveOver},
};

const FailingCall kStoring[] = {
    {"xmldom::SetText, there",
     [](IXMLDOMDocument2* document) { NoteStored(xmldom::SetText(Root(document), kLongText)); }},
    {"xmldom::SetText, new",
     [](IXMLDOMDocument2* document) {
       NoteStored(xmldom::SetText(At(document, {0, 4}), kLongText));
     }},
    {"xmldom::SetText, empty",
     [](IXMLDOMDocument2* document) { NoteStored(xmldom::SetText(Root(document), "")); }},
    {"xmldom::SetText, of a text",
     [](IXMLDOMDocument2* document) {
       NoteStored(xmldom::SetText(At(document, {0, 0}), kLongText));
     }},
    {"xmldom::SetText, of an attribute",
     [](IXMLDOMDocument2* document) {
       NoteStored(xmldom::SetText(Root(document)->m_pFirstAttribute, kLongText));
     }},
    {"xmldom::SetText, refused",
     [](IXMLDOMDocument2* document) {
       NoteStored(xmldom::SetText(Root(document), std::string(kLongText) + "\x01"));
     }},
    {"xmldom::SetAttribute, new",
     [](IXMLDOMDocument2* document) {
       NoteStored(xmldom::SetAttribute(Root(document), "n", kLongText));
     }},
    {"xmldom::SetAttribute, there",
     [](IXMLDOMDocument2* document) {
       NoteStored(xmldom::SetAttribute(Root(document), "v", kLongText));
     }},
    {"xmldom::AddElement",
     [](IXMLDOMDocument2* document) {
       Note(xmldom::AddElement(Root(document), "n")->m_pszNodeName);
     }},
};

class AllocationShortCalls : public testing::TestWithParam<FailingCall> {};

TEST_P(AllocationShortCalls, That_fail_leave_the_tree_as_it_was_and_nothing_behind) {
  FailEverywhere("short calls", GetParam(), FailingCall::KEEPS_TREE);
}

INSTANTIATE_TEST_SUITE_P(Reading, AllocationShortCalls, testing::ValuesIn(kReading));
INSTANTIATE_TEST_SUITE_P(Storing, AllocationShortCalls, testing::ValuesIn(kStoring));

}  // namespace
