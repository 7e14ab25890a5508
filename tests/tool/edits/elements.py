"""Where the elements of a document stand in its bytes, as Python's parser tells."""

import re
from xml.parsers import expat


class Element:
    """An element that stands in a text, with the bytes of its tags."""

    def __init__(self, number, name, path, attributes, begin):
        self.number, self.name, self.path, self.attributes = number, name, path, attributes
        self.begin = begin
        self.end_of_tag = self.begin_of_end = self.end = None
        self.text, self.children, self.size = '', 0, 1


class Reader:
    """Reads the elements of a document."""

    def __init__(self, data):
        self.data, self.elements, self.open = data, [], []
        self.unclosed = None
        self.parser = parser = expat.ParserCreate()
        parser.ordered_attributes = True
        parser.specified_attributes = True
        parser.buffer_text = False
        parser.StartElementHandler = self.start
        parser.EndElementHandler = self.end
        parser.CharacterDataHandler = self.characters
        parser.DefaultHandlerExpand = self.other
        parser.CommentHandler = self.other
        parser.ProcessingInstructionHandler = lambda target, data: self.other(None)
        parser.Parse(data, True)

    def settle(self):
        """The first event behind a start tag tells where the tag ends."""
        if self.unclosed is not None:
            at = self.parser.CurrentByteIndex
            # References to entities without text make no event.
            tag = ascii_of(self.data[self.unclosed.begin:at])
            references = re.search(rb'(&[^&;<>]+;)*$', tag).group()
            self.unclosed.end_of_tag = at - unit(self.data) * len(references)
            self.unclosed = None

    def start(self, name, attributes):
        self.settle()
        if self.open:
            self.open[-1].children += 1
        path = (self.open[-1].path if self.open else '') + '/' + name
        element = Element(len(self.elements), name, path,
                          dict(zip(attributes[::2], attributes[1::2])), self.parser.CurrentByteIndex)
        self.elements.append(element)
        self.open.append(element)
        self.unclosed = element

    def end(self, name):
        self.settle()
        element = self.open.pop()
        element.begin_of_end = self.parser.CurrentByteIndex
        element.size = len(self.elements) - element.number
        # The parser reports the end of an empty-element tag behind that tag.
        at, data, width = element.begin_of_end, self.data, unit(self.data)
        is_empty = element.end_of_tag == at and ascii_of(data[at - 2 * width:at]) == b'/>'
        element.end = at if is_empty else data.index('>'.encode(codec_of(data)), at) + width

    def characters(self, text):
        self.settle()
        if self.open:
            self.open[-1].text += text

    def other(self, _):
        self.settle()


def codec_of(data):
    """The encoding of the markup of a document."""
    return {b'\xff\xfe': 'utf-16-le', b'\xfe\xff': 'utf-16-be'}.get(data[:2], 'ascii')


def unit(data):
    """How many bytes a character of markup has."""
    return 2 if data[:2] in (b'\xff\xfe', b'\xfe\xff') else 1


def ascii_of(markup):
    """Markup without the bytes that UTF-16 adds."""
    return markup.replace(b'\0', b'')


def stands_in_text(data, element):
    width = unit(data)
    return ascii_of(data[element.begin:element.begin + width]) == b'<'


def with_lines(data, begin, end):
    """The bytes from begin to end, with the blanks before them and those behind to the line end."""
    while begin > 0 and data[begin - 1] in b' \t\0':
        begin -= 1
    while end < len(data) and data[end] in b' \t\0':
        end += 1
    for line_end in b'\r\n':
        if ascii_of(data[end:end + 2])[:1] == bytes([line_end]):
            end += unit(data)
    return begin, end
