"""Makes random edits, and judges what comes of them."""

from xml.parsers import expat

from elements import Reader, ascii_of, codec_of, stands_in_text, unit, with_lines

TEXTS = ['', 'x', '1 < 2 & 3', ' two  words ', "it's \"it\"", 'caf\u00e9 \u20ac', 'line\nline\t.',
         ']]>', '&amp;']
NEW = 'try-edits-new'


def random_edit(generator, data, elements):
    """Result: option and operands, the element, and the bytes that may change; None for none."""
    first = {}
    for element in elements:
        first.setdefault(element.path, element)
    element = generator.choice(list(first.values()))
    if not stands_in_text(data, element):
        return None
    path, is_root = element.path, element.number == 0
    tag, content = (element.begin, element.end_of_tag), (element.end_of_tag, element.begin_of_end)
    if element.end == element.begin_of_end:  # an empty-element tag, which may be opened
        content = tag
    whole = (element.begin, element.end)
    xml = '<%s>x</%s>' % (NEW, NEW)
    kinds = [('--set-attr', [path, generator.choice(sorted(element.attributes) or [NEW]),
                             generator.choice(TEXTS)], tag),
             ('--set-attr', [path, NEW, generator.choice(TEXTS)], tag),
             ('--append', [path, xml], content), ('--replace', [path, xml], whole),
             ('--rename', [path, NEW], whole)]
    if element.children == 0:
        kinds += 2 * [('--set', [path, generator.choice(TEXTS)], content)]
    if element.attributes:
        kinds.append(('--remove-attr', [path, generator.choice(sorted(element.attributes))], tag))
    if not is_root:
        kinds += [('--remove', [path], with_lines(data, *whole)),
                  ('--insert-before', [path, xml], (element.begin, element.begin)),
                  ('--insert-after', [path, xml], (element.end, element.end))]
    option, operands, allowed = generator.choice(kinds)
    return option, operands, element, allowed


def changed_beyond(old, new, allowed):
    """How many bytes differ in front of and behind the bytes that may change."""
    begin, end = allowed
    before = next((begin - i for i in range(begin) if old[i:i + 1] != new[i:i + 1]), 0) \
        if old[:begin] != new[:begin] else 0
    rest = len(old) - end
    if rest == 0 or old[end:] == new[len(new) - rest:] and len(new) >= rest:
        return before
    return before + next((rest - i for i in range(rest)
                          if i >= len(new) or old[-1 - i] != new[-1 - i]), rest)


def renamed(old, element, name):
    """The bytes of a file in which an element has another name."""
    width, written = unit(old), name.encode(codec_of(old))
    begin = end = element.begin + width
    while ascii_of(old[end:end + width]) not in (b' ', b'\t', b'\r', b'\n', b'/', b'>'):
        end += width
    result = old[:begin] + written + old[end:]
    if element.end != element.begin_of_end:
        at = element.begin_of_end + 2 * width + len(written) - (end - begin)
        result = result[:at] + written + result[at + end - begin:]
    return result


def mistake(old, new, edit):
    """What is wrong with the elements of the new file; None for nothing."""
    option, operands, element, _ = edit
    try:
        before, after = Reader(old).elements, Reader(new).elements
    except expat.ExpatError as error:
        return 'not well-formed: %s' % error
    grown = {'--append': 1, '--insert-before': 1, '--insert-after': 1, '--remove': -element.size,
             '--replace': 1 - element.size}.get(option, 0)
    if len(after) != len(before) + grown:
        return '%d elements, not %d' % (len(after), len(before) + grown)
    names = [each.name for each in before]
    place = {'--append': element.number + element.size, '--insert-before': element.number,
             '--insert-after': element.number + element.size}.get(option)
    if place is not None:
        names.insert(place, NEW)
    elif option == '--remove':
        del names[element.number:element.number + element.size]
    elif option == '--replace':
        names[element.number:element.number + element.size] = [NEW]
    elif option == '--rename':
        names[element.number] = NEW
    if [each.name for each in after] != names:
        return 'other elements'
    same = after[element.number] if option.startswith('--set') or option == '--remove-attr' else None
    if option == '--set' and same.text != operands[1]:
        return 'text %r' % same.text
    wanted = dict(element.attributes)
    if option == '--set-attr':
        wanted[operands[1]] = operands[2]
    elif option == '--remove-attr':
        del wanted[operands[1]]
    if same is not None and same.attributes != wanted:
        return 'attributes %r' % same.attributes
    if option == '--rename' and new != renamed(old, element, NEW):
        return 'bytes beyond the names'
    return None
