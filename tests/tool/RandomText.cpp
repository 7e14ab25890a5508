#include "tool/RandomText.h"

#include <vector>

namespace {

const char* const kProlog[] = {
    "",
    "",
    "",
    "<?xml version='1.0'?>\n",
    "<?xml version=\"1.0\" encoding=\"utf-8\" standalone='no'?>",
    "\xef\xbb\xbf",
    "<!-- c -->\n\n<?p i?>",
    "<!DOCTYPE a SYSTEM 'a.dtd'>\n",
    "<!DOCTYPE a [<!ENTITY e 'x'><!-- c --><!ATTLIST b z CDATA 'x'>]>\n",
    "<?xml version='1.0' encoding='ISO-8859-1'?>\n<!-- \xe9 -->",
};

const char* const kEpilog[] = {"", "\n", "\n\n", "\r\n", "<!-- d -->", "\n<?p i?>\n", " "};

const char* const kNames[] = {"a", "b", "c"};

// White space is more frequent than all else, as in documents that people write.
const char* const kContent[] = {
    "\n",     "\n  ",      " ",          "\t",           "\r\n",         "",
    "x",      "two words", "  x ",       "x\ny",         "\nx\n",        "&lt;",
    "&amp; ", " &gt;",     "&#10;",      "&#x20;",       "&#9;",         "'\"",
    "&e;",    "&e; ",      "<!-- c -->", "<?p i?>",      "<![CDATA[]]>", "<![CDATA[ x]]>",
    "]] >",   "\xc3\xa9",  "&#233;",     "&quot;&apos;",
};

const char* const kValues[] = {
    "",      "x",     " x  y ", "a\nb",  "\t",    "&lt;&amp;&gt;", "&quot;", "&apos;",
    "&#10;", "&#x9;", "&#13;",  "&#32;", "&#65;", "&e;",           ">",      "\xc3\xa9",
};

const char* const kPlain[] = {
    " ",     " ",  "  ", "\n", "\t",   "\r",    "\r\n", "&",        "<",
    ">",     "\"", "'",  "x",  "word", "&amp;", "]]>",  "\xc3\xa9", "\xf0\x9f\x99\x82",
    "&#10;",
};

}  // namespace

std::string RandomText::StartTag() {
  std::string tag = OneOf(kNames);
  if (Below(12) == 0) tag += Below(3) == 0 ? " xml:space='default'" : " xml:space='preserve'";
  for (const char* name : {"y", "z"}) {
    if (Below(5) != 0) continue;
    const std::string quote(1, "'\""[Below(2)]);
    tag += std::string(" ") + name + "=" + quote + OneOf(kValues) + quote;
  }
  return tag;
}

std::string RandomText::Tree() {
  std::string text;
  std::vector<std::string> open;
  do {
    const int choice = Below(8);
    if (open.empty() || choice == 0) {
      const std::string tag = StartTag();
      open.push_back(tag.substr(0, 1));
      text += "<" + tag + ">";
    } else if (choice < 3) {
      text += "</" + open.back() + ">";
      open.pop_back();
    } else if (choice < 6) {
      // Most of what stands between elements is layout.
      text += Below(3) == 0 ? OneOf(kContent) : "\n ";
    } else {
      text += "<" + StartTag() + ">" + OneOf(kContent);
      if (Below(2) == 0) text += OneOf(kContent);
      text += "</" + text.substr(text.rfind('<') + 1, 1) + ">";
    }
  } while (!open.empty());
  return text;
}

std::string RandomText::Document() { return OneOf(kProlog) + Tree() + OneOf(kEpilog); }

std::string RandomText::Plain() {
  std::string text;
  for (int pieces = Below(6); pieces > 0; --pieces) text += OneOf(kPlain);
  return text;
}
