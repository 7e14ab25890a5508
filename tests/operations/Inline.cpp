// What is inline in the public headers. It is compiled so that nothing of it is left out, and read
// by `names`. Templates of classes have to be named here; those of functions are seen where
// something else uses them.

#include "PublicHeaders.h"

/// A handler object of an application. What is only declared is not printed.
struct Handler : CExpatImpl<Handler> {
  void OnStartElement(const char* name, const char** attributes);
  void OnEndElement(const char* name);
  void OnDefault(const char* text, int length);
};

template class CExpatImpl<Handler>;
template class XMLPtr<IXMLDOMNode>;
template class XMLString<XMLBstrFreer>;
