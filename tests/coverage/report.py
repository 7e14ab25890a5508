#!/usr/bin/env python3
"""report.py rooms|missing COUNTS: tells what gcovr has counted (its --json COUNTS), for scripts/coverage.

With `rooms`, a table of lines and branches by the folders of the library. With `missing`, the lines
that were not reached and those of whose branches not all were taken, by the text of the line, so that
two versions of a source can be compared.
"""

import json
import sys
from collections import Counter


def folder(file):
    return file['file'].rsplit('/', 1)[0]


def branches(line):
    return [branch['count'] > 0 for branch in line['branches']]


def counted(file):
    return [line for line in file['lines'] if not line['gcovr/noncode']]


def rooms(files):
    counts = Counter()
    for file in files:
        for line in counted(file):
            for name in folder(file), 'all':
                counts[name, 'lines'] += 1
                counts[name, 'lines reached'] += line['count'] > 0
                counts[name, 'branches'] += len(branches(line))
                counts[name, 'branches taken'] += sum(branches(line))
    print('| Folder | Lines | Reached | Branches | Taken |\n|---|---|---|---|---|')
    for name in sorted({name for name, _ in counts}, key=lambda name: (name == 'all', name)):
        print('| %s | %d | %s | %d | %s |' % (
            name if name == 'all' else '`%s/`' % name,
            counts[name, 'lines'], share(counts[name, 'lines reached'], counts[name, 'lines']),
            counts[name, 'branches'], share(counts[name, 'branches taken'], counts[name, 'branches'])))


def share(part, whole):
    return '%.1f %%' % (100 * part / whole) if whole else '-'


def missing(files):
    for file in files:
        with open(file['file'], encoding='utf-8') as source:
            text = source.read().split('\n')
        for line in counted(file):
            taken = branches(line)
            what = None
            if line['count'] == 0:
                what = 'not reached'
            elif not all(taken):
                what = '%d of %d' % (sum(taken), len(taken))
            if what:
                print('%-32s %-12s %s' % (file['file'], what, text[line['line_number'] - 1].strip()))


def main():
    if len(sys.argv) != 3 or sys.argv[1] not in ('rooms', 'missing'):
        sys.exit(__doc__)
    with open(sys.argv[2], encoding='utf-8') as counts:
        files = json.load(counts)['files']
    {'rooms': rooms, 'missing': missing}[sys.argv[1]](files)


if __name__ == '__main__':
    main()
