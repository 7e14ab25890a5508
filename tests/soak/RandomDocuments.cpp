#include "soak/RandomDocuments.h"

namespace {

const char* const kProlog[] = {
    "",
    "",
    "<?xml version='1.0'?>\n",
    "\xef\xbb\xbf",
    "<?xml version='1.0' encoding='ISO-8859-1'?>\n<!-- \xe9 -->",
    "<?xml version='1.0' encoding='US-ASCII'?>",
    "<?xml version='1.0' encoding='utf-8'?>",
    "<?xml version='1.0' encoding='unheard-of'?>",
    "<!DOCTYPE a [<!ENTITY e 'x'><!-- c --><!ATTLIST b z CDATA 'x<y'>]>\n",
    "<!DOCTYPE a [<!ENTITY e '1&f;2'><!ENTITY f '<b>t</b> '>]>",
    "<!DOCTYPE a [<!ENTITY e '&lt;i&#38;'><!ENTITY f SYSTEM 'f.txt'>]>",
    "<!DOCTYPE a SYSTEM 'a.dtd' [<!ENTITY % p 'q'>]>",
};

const char* const kContent[] = {
    "x",        " ",    "\n",  "\r\n", "  two words ", "\n  ",       "&lt;",     "&amp;",
    "&#233;",   "&e;",  "&e;", "&f;",  "&none;",       "<!-- c -->", "<?p i?>",  "<![CDATA[ x ]]>",
    "\xc3\xa9", "\xe9", "'\"", "\t",   "]]&gt;",       "<b/>",       "\xc2\xa0", "a\nb\nc",
    "\x85"};

const char* const kNames[] = {"a", "b", "c", "long-name"};
const char* const kAttributes[] = {" k='1'",    " m=\"x&lt;y\"", " n='&e;'", " o='it&apos;s'",
                                   " p='a\nb'", " q=''",         " k='2'"};

void AddElement(Random& random, int depth, std::string* text) {
  const char* name = random.OneOf(kNames);
  *text += "<" + std::string(name);
  while (random.OneIn(3)) *text += random.OneOf(kAttributes);
  if (random.OneIn(6)) {
    *text += "/>";
    return;
  }
  *text += ">";
  for (int pieces = random.Below(6); pieces > 0; --pieces) {
    if (depth < 6 && random.OneIn(3)) {
      AddElement(random, depth + 1, text);
    } else {
      *text += random.OneOf(kContent);
    }
  }
  *text += "</" + std::string(name) + ">";
}

void Damage(Random& random, std::string* text) {
  static const char* const kPieces[] = {"<", ">", "&", "'", "</a>", "<a", "\xff", "]]>", "=", ""};
  if (text->empty()) return;
  const std::size_t place = static_cast<std::size_t>(random.Below(static_cast<int>(text->size())));
  if (random.OneIn(3)) {
    text->resize(place);
  } else {
    text->replace(place, static_cast<std::size_t>(random.Below(3)), random.OneOf(kPieces));
  }
}

}  // namespace

std::string AnyDocument(Random& random) {
  std::string text = random.OneOf(kProlog);
  AddElement(random, 0, &text);
  if (random.OneIn(4)) text += random.OneOf(kContent);
  // A long text is handed to the builder in several pieces.
  const std::size_t place = text.rfind("</");
  if (random.OneIn(12) && place != std::string::npos) text.insert(place, std::string(5000, 'y'));
  if (random.OneIn(3)) Damage(random, &text);
  return text;
}

std::string ManyEntities(Random& random) {
  static const char* const kValues[] = {"a &lt; b", "A&amp;B", "plain", "&#60;", "&#38;co; x"};
  std::string text = "<!DOCTYPE a [";
  for (int i = 320 + random.Below(100); i > 0; --i) {
    text += "<!ENTITY e" + std::to_string(i) + " '" + random.OneOf(kValues) + "'>\n";
  }
  return text + "]><a>&e1;&e2;</a>";
}

std::string Widened(const std::string& text, bool bigEndian) {
  std::string wide = bigEndian ? "\xfe\xff" : "\xff\xfe";
  for (char c : text) {
    if (bigEndian) wide += '\0';
    wide += c;
    if (!bigEndian) wide += '\0';
  }
  return wide;
}
