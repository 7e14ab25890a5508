#include "soak/RandomStrings.h"

namespace {

// White space is more frequent than all else.
const char* const kPieces[] = {" ",
                               " ",
                               "  ",
                               "\n",
                               "\n",
                               "\t",
                               "\r",
                               "\r\n",
                               "&",
                               "<",
                               ">",
                               "\"",
                               "'",
                               "x",
                               "word",
                               "two words",
                               "]]>",
                               "]",
                               "&amp;",
                               "&#10;",
                               "&#x41;",
                               "&foo;",
                               "<b/>",
                               "</a>",
                               "<!-- ",
                               " -->",
                               "<![CDATA[",
                               "<?p ",
                               "?>",
                               "\xc3\xa9",
                               "\xc2\xa0",
                               "\xc2\x85",
                               "\xe2\x80\xa8",
                               "\x7f",
                               "\xef\xbb\xbf",
                               "\xf0\x9f\x99\x82",
                               "\xf4\x8f\xbf\xbf",
                               "\xee\x80\x80",
                               "\xed\x9f\xbf",
                               "#",
                               ";",
                               "="};

/// Something that XML cannot hold, or that only just fits.
std::string AnyOddity(Random& random) {
  static const char* const kOddities[] = {"\x01",
                                          "\x0b",
                                          "\x1f",
                                          "\x7f",
                                          "\x80",
                                          "\xff",
                                          "\xc0\x80",
                                          "\xc1\xbf",
                                          "\xe0\x80",
                                          "\xe0\x9f\xbf",
                                          "\xed\xa0\x80",
                                          "\xed\xbf\xbf",
                                          "\xef\xbf\xbd",
                                          "\xef\xbf\xbe",
                                          "\xef\xbf\xbf",
                                          "\xf0\x8f\xbf\xbf",
                                          "\xf4\x90\x80\x80",
                                          "\xf8\x88\x80\x80\x80",
                                          "\xf0\x9f\xbf\xbe",
                                          "\xc3",
                                          "\xe2\x82",
                                          "\xf0\x9f\x99"};
  if (random.OneIn(4)) return std::string(1, static_cast<char>(random.Below(256)));
  return random.OneOf(kOddities);
}

}  // namespace

std::string AnyString(Random& random) {
  const bool isOdd = random.OneIn(5);
  std::string text;
  // Some are longer than a buffer of the parser or of the text that is collected.
  const int pieces = random.OneIn(200) ? 3000 : random.Below(9);
  const int oddity = isOdd ? random.Below(pieces + 1) : -1;
  for (int i = 0; i <= pieces; ++i) {
    if (i == oddity) text += AnyOddity(random);
    if (i < pieces) text += random.OneOf(kPieces);
  }
  return text;
}
