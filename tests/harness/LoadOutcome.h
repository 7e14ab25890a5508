#ifndef XMLDOM_TESTS_HARNESS_LOADOUTCOME_H
#define XMLDOM_TESTS_HARNESS_LOADOUTCOME_H

#include <xmldom/xmldom.h>

#include <ostream>
#include <string>

/// What a load said: its result, and the flag that it filled.
struct LoadOutcome {
  HRESULT result;
  short flag;
};

/// A flag that no load stores.
const short kFlagUntouched = 77;

const LoadOutcome kParsed = {S_OK, VARIANT_TRUE};
const LoadOutcome kNotParsed = {S_FALSE, VARIANT_FALSE};
const LoadOutcome kNotOpened = {E_FILENOTOPENED, VARIANT_FALSE};

bool operator==(const LoadOutcome& a, const LoadOutcome& b);
std::ostream& operator<<(std::ostream& out, const LoadOutcome& outcome);

/// Loads the text `xml` with a flag to fill.
LoadOutcome LoadText(IXMLDOMDocument2* document, std::string xml);

/// Loads the file `path`.
LoadOutcome LoadPath(IXMLDOMDocument2* document, std::string path);

/// Loads a temporary file that holds `contents`.
LoadOutcome LoadFile(IXMLDOMDocument2* document, const std::string& contents);

#endif
