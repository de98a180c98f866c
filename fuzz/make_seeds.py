#!/usr/bin/env python3
"""make_seeds.py FOLDER: first inputs of the fuzz targets of formats, in a folder for each: documents as the tests make them, behind
the byte that says what is to be done; packages as the list of their parts."""
import sys, zipfile
from pathlib import Path
sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).parent.parent / 'tests/documents'))
from make_documents import FORMATS, make_format  # noqa: E402

TARGETS = {'xml': ('flat', 'word2003'), 'opendocument': ('fodt', 'fods', 'fodp'), 'html': ('html',), 'rtf': ('rtf',),
           'text': ('txt', 'csv'), 'package': ('docx', 'odt', 'ods', 'pptx', 'xlsx')}


def parts_of(path):
    with zipfile.ZipFile(path) as archive:
        return b'\0'.join(name.encode() + b'\n' + archive.read(name) for name in archive.namelist())


def main():
    folder = Path(sys.argv[1])
    for target, kinds in TARGETS.items():
        (folder / target).mkdir(parents=True)
        for kind in kinds:
            for number, path in enumerate(make_format(folder / 'made', kind)):
                data = parts_of(path) if target == 'package' else path.read_bytes()
                (folder / target / path.name).write_bytes(bytes([number % 4]) + data)


if __name__ == '__main__':
    main()
