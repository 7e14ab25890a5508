"""The files that are edited: those of installed packages, of folders, and generated ones."""

import os
import re
from xml.parsers import expat

from elements import Reader

SUFFIXES = ('.xml .svg .gir .rng .xsd .plist .xsl .ui .rss .pom .xhtml .docbook .its .rdf .conf '
            '.wsdl .opf .policy .metainfo').split()

KINDS = {
    'config': '<?xml version="1.0"?>\n<!-- head -->\n<config  version = \'1\'>\n\t<!-- host -->\n'
              '\t<host name="gw"\n\t      port=\'80\'/>  <!-- tail -->\n\n\t<log>\n\t\t<level>3</level>\n'
              '\t\t<off/>\n\t</log>\n\t<empty></empty>\n</config>',
    'gir': '<?xml version="1.0"?>\n<repository version="1.2" xmlns="http://g/core" '
           'xmlns:c="http://g/c">\n  <include name="GObject" version="2.0"/>\n  <namespace name="X" '
           'c:prefix="X">\n    <function name="f" c:identifier="x_f">\n      <return-value>'
           '<type name="none" c:type="void"/></return-value>\n    </function>\n  </namespace>\n'
           '</repository>\n',
    'docbook': '<!DOCTYPE article PUBLIC "-//OASIS//DTD DocBook XML V4.5//EN" "docbookx.dtd" [\n'
               '<!ENTITY product "Thing">\n<!ATTLIST para role CDATA "plain">\n]>\n<article>\n<title>The '
               '&product;</title>\n<para>One <emphasis>two</emphasis> three &mdash; four.</para>\n'
               '<programlisting xml:space="preserve"> a\n <![CDATA[ b < c ]]>\n</programlisting>\n'
               '</article>\n<?pi end?>\n',
    'svg': '<svg xmlns="http://s" xmlns:x="http://x" viewBox="0 0 1 1"><g><path d="M 0 0\n L 1 1" '
           'style="fill:#fff"/><x:use x:href="#a"/></g><!-- end --></svg>\n',
    'plist': '<?xml version="1.0" encoding="UTF-8"?>\n<!DOCTYPE plist PUBLIC "-//A//DTD PLIST 1.0//EN" '
             '"http://a/p.dtd">\n<plist version="1.0">\n<dict>\n\t<key>A</key>\n\t<string>b &amp; c'
             '</string>\n\t<key>D</key>\n\t<true/>\n</dict>\n</plist>\n',
    'maven': '<project xmlns="http://m" xmlns:xsi="http://i"\n  xsi:schemaLocation="http://m http://n">'
             '\n  <modelVersion>4.0.0</modelVersion>\n  <dependencies>\n    <dependency>\n      '
             '<groupId>g</groupId>\n    </dependency>\n  </dependencies>\n</project>',
    'rss': '<rss version="2.0"><channel><title>News</title>\n<item><title>One</title><description>'
           '<![CDATA[<p>x</p>]]></description></item>\n<item><title>Caf\u00e9</title></item>\n'
           '</channel></rss>\n',
}


def generate(folder):
    """Writes a file of each kind, with line ends of both kinds and in several encodings."""
    for name, text in KINDS.items():
        declared = text.split('?>\n', 1)[1] if text.startswith('<?xml') else text
        forms = {'lf': text.encode(), 'crlf': text.replace('\n', '\r\n').encode(),
                 'bom': b'\xef\xbb\xbf' + text.encode(),
                 'latin1': ('<?xml version="1.0" encoding="ISO-8859-1"?>\n' + declared).encode('latin-1'),
                 'utf16le': b'\xff\xfe' + declared.encode('utf-16-le'),
                 'utf16be': b'\xfe\xff' + ('<?xml version="1.0" encoding="UTF-16"?>\n' +
                                           declared).encode('utf-16-be')}
        for form, data in forms.items():
            with open(os.path.join(folder, '%s-%s.xml' % (name, form)), 'wb') as file:
                file.write(data)


def installed_files():
    """The files of installed packages that may be XML, from all packages alike."""
    folder = '/var/lib/dpkg/info'
    names = set()
    for listed in os.listdir(folder) if os.path.isdir(folder) else []:
        if listed.endswith('.list'):
            with open(os.path.join(folder, listed), encoding='utf-8', errors='replace') as lines:
                names.update(line for line in lines.read().split('\n') if line.endswith(tuple(SUFFIXES)))
    return sorted(names)


def files_below(folders):
    for folder in folders:
        if os.path.isfile(folder):
            yield folder
        for parent, below, names in os.walk(folder):
            below[:] = [name for name in below if name not in ('build', '.git')]
            for name in sorted(names):
                if name.endswith(tuple(SUFFIXES)):
                    yield os.path.join(parent, name)


def spread(files, generator):
    """Puts the files in an order in which folders take turns, so that no kind fills the list."""
    by_folder = {}
    for file in files:
        by_folder.setdefault(os.path.dirname(file), []).append(file)
    groups = list(by_folder.values())
    generator.shuffle(groups)
    for group in groups:
        generator.shuffle(group)
    order = []
    while groups:
        order += [group.pop() for group in groups]
        groups = [group for group in groups if group]
    return order


def is_known_encoding(data):
    """Whether the parser of the tool knows the encoding of a document."""
    declared = re.match(rb'(?:\xef\xbb\xbf)?<\?xml[^>]*encoding\s*=\s*["\']([^"\']*)', data)
    return declared is None or declared.group(1).lower() in (b'utf-8', b'iso-8859-1', b'us-ascii')


def readable(file, most):
    """The bytes of a well-formed document and its elements; None for anything else."""
    try:
        if os.path.getsize(file) > most:
            return None
        with open(file, 'rb') as opened:
            data = opened.read()
        return data, Reader(data).elements
    except (OSError, expat.ExpatError, LookupError, ValueError, RecursionError):
        return None
