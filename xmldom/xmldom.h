#ifndef XMLDOM_XMLDOM_H
#define XMLDOM_XMLDOM_H

/// Everything of the library except its handlers for Expat's events, which are in
/// <xmldom/parse/XMLSax.h>.

#include <xmldom/diag/Compare.h>
#include <xmldom/dom/CountedClasses.h>
#include <xmldom/dom/Results.h>
#include <xmldom/dom/XMLDocument.h>
#include <xmldom/dom/XMLError.h>
#include <xmldom/dom/XMLNode.h>
#include <xmldom/dom/XMLNodeList.h>
#include <xmldom/parse/ParseError.h>
#include <xmldom/query/XPathList.h>
#include <xmldom/support/LogException.h>
#include <xmldom/support/Logger.h>
#include <xmldom/support/MemFile.h>
#include <xmldom/support/RefCountedObject.h>
#include <xmldom/support/bstr.h>
#include <xmldom/support/variant.h>
#include <xmldom/text/EntityTranslation.h>
#include <xmldom/text/XMLWriter.h>

#endif
