// An application whose standard library is another one than that of the xmldom libraries: it
// catches what they throw, and uses and deletes it.

#include <sys/resource.h>
#include <xmldom/xmldom.h>

#include <cassert>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <stdexcept>
#include <string>

namespace {

bool l_memoryIsOut = false;

}  // namespace

void* operator new[](std::size_t size) {
  void* memory = l_memoryIsOut ? nullptr : std::malloc(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void operator delete[](void* memory) noexcept { std::free(memory); }

namespace {

std::string l_logged;

void KeepBody(const CLogEvent& event, void*) { l_logged = event.body; }

/// Calls `call`, which throws, and takes over the exception.
template <class Call>
CLogException* Thrown(Call call) {
  try {
    call();
  } catch (CLogException* exception) {
    return exception;
  }
  return nullptr;
}

void CatchesTheExceptionOfACall() {
  IXMLDOMDocument2* document = nullptr;
  Create(&document);
  VARIANT type;
  VariantInit(&type);
  type.lVal = 99;
  char name[] = "a name that is too long to be kept in a string of either kind";
  IXMLDOMNode* odd = nullptr;
  document->createNode(type, name, nullptr, &odd);
  CLogException* exception = Thrown([&] { odd->GetNodeTypeString(); });
  assert(exception != nullptr);
  assert(exception->GetWhere() == std::string("IXMLDOMNode::GetNodeTypeString"));
  assert(exception->GetMessage() == std::string("Call failed, invalid node type 99"));
  assert(exception->GetDetail() == nullptr);
  delete exception;
  Release(odd);
  document->RealRelease();
}

void CatchesAnExceptionWithDetail() {
  std::string detail(1000, 'x');
  CLogException* exception = Thrown([&] { throw Exception("where", "message", &detail[0]); });
  assert(exception != nullptr);
  assert(exception->GetDetail() == detail);
  exception->LogMessage(18, 3, "title");
  assert(l_logged == "where: message\n" + detail);
  delete exception;
}

// Made here and deleted there, as well as the other way round.
void ThrowsOneItself() {
  CLogException* exception = Thrown([] { throw new CLogException("where", nullptr, ""); });
  assert(exception != nullptr);
  assert(exception->GetMessage() == std::string());
  assert(exception->GetDetail() == std::string());
  delete exception;
}

// An edit at a path is declared to throw a CLogException* alone, which the runtime library checks.
void CatchesTheExceptionOfAnEditAtAPath() {
  CLogger::SetSink([](const CLogEvent&, void*) { throw Exception("sink", "refused", nullptr); },
                   nullptr);
  IXMLDOMDocument2* document = nullptr;
  Create(&document);
  document->loadXML("<a/>");
  CLogException* exception = Thrown([&] { document->AppendChildAtXPath("/none", "<b/>"); });
  CLogger::SetSink(KeepBody, nullptr);
  assert(exception != nullptr);
  assert(exception->GetMessage() == std::string("refused"));
  delete exception;
  document->RealRelease();
}

void CatchesThatMemoryIsOut() {
  CMemFile buffer(UINT_MAX);
  rlimit limit;
  getrlimit(RLIMIT_AS, &limit);
  const rlimit before = limit;
  limit.rlim_cur = 1u << 30;
  setrlimit(RLIMIT_AS, &limit);
  bool caught = false;
  try {
    buffer.Write("x", 1);
  } catch (const std::bad_alloc& exception) {
    caught = std::strlen(exception.what()) > 0;
  }
  setrlimit(RLIMIT_AS, &before);
  assert(caught);
}

// In a load the exception has to get past Expat.
void CatchesThatMemoryIsOutInALoad() {
  IXMLDOMDocument2* document = nullptr;
  Create(&document);
  bool caught = false;
  l_memoryIsOut = true;
  try {
    document->loadXML("<a><b/></a>");
  } catch (const std::bad_alloc&) {
    caught = true;
  }
  l_memoryIsOut = false;
  assert(caught);
  document->RealRelease();
}

void CatchesThatATextIsTooLong() {
  CMemFile buffer(0);
  buffer.Write("x", 1);
  std::string text;
  try {
    buffer.Write("", UINT_MAX);
  } catch (const std::length_error& exception) {
    text = exception.what();
  }
  assert(text == "CMemFile: more than 4 GiB");
}

}  // namespace

int main() {
  CLogger::SetSink(KeepBody, nullptr);
  CatchesTheExceptionOfACall();
  CatchesAnExceptionWithDetail();
  ThrowsOneItself();
  CatchesTheExceptionOfAnEditAtAPath();
  CatchesThatMemoryIsOut();
  CatchesThatMemoryIsOutInALoad();
  CatchesThatATextIsTooLong();
  std::printf("caught all\n");
}
