#!/usr/bin/env python3
"""make_documents.py FOLDER: documents of all formats in legacy Lao fonts, in a folder for each format, and beside each one
NAME.known.json, the text of each paragraph that must come out, and NAME.stored.json, the text before it."""
import json, sys
from pathlib import Path
import open_document, plain_text, rich_text, sheets, slides, web, word
from pieces import Source, known_of

# Format: suffix of its files, how many are made, who makes one.
FORMATS = {
    'docx': ('docx', 16, word.make_docx), 'flat': ('xml', 6, word.make_flat), 'word2003': ('xml', 12, word.make_2003),
    'odt': ('odt', 8, open_document.make_packed('text')), 'fodt': ('fodt', 8, open_document.make_flat('text')),
    'ods': ('ods', 4, open_document.make_packed('spreadsheet')), 'fods': ('fods', 3, open_document.make_flat('spreadsheet')),
    'odp': ('odp', 4, open_document.make_packed('presentation')), 'fodp': ('fodp', 3, open_document.make_flat('presentation')),
    'pptx': ('pptx', 8, slides.make_pptx), 'xlsx': ('xlsx', 8, sheets.make_xlsx), 'html': ('html', 20, web.make_html),
    'rtf': ('rtf', 12, rich_text.make_rtf), 'txt': ('txt', 38, lambda source: plain_text.make_text(source, 'txt')),
    'csv': ('csv', 29, lambda source: plain_text.make_text(source, 'csv'))}

FONTS_OF_TODAY = ('Arial', 'Phetsarath OT', 'Saysettha OT', 'Times New Roman', 'Lao')


def make_format(folder, kind):
    """The paths of the documents of a format, and the font of each text."""
    suffix, count, make = FORMATS[kind]
    folder = folder / kind
    folder.mkdir(parents=True)
    made, fonts = {}, Source(kind).fonts
    for number in range(count):
        source = Source(f'{kind} {number}', fonts)
        source.fonts, source.next = fonts, source.next + (number if suffix in ('txt', 'csv') else 7 * number)
        data, known, *font = make(source)
        path = folder / f'{kind}{number}.{suffix}'
        path.write_bytes(data)
        for which, name in enumerate(('stored', 'known')):
            text = json.dumps(known_of(known, which), ensure_ascii=False, indent=1)
            path.with_suffix(f'.{name}.json').write_text(text, encoding='utf8')
        made[path] = font[0] if font else None
    return made


def make_of_today(folder, kind):
    """Paths of some documents of a format that have no legacy font."""
    suffix, _, make = FORMATS[kind]
    folder.mkdir(parents=True, exist_ok=True)
    paths = [folder / f'{kind}{number}.{suffix}' for number in range(3)]
    for path in paths:
        path.write_bytes(make(Source(path.name, FONTS_OF_TODAY))[0])
    return paths


def main():
    for kind in FORMATS:
        make_format(Path(sys.argv[1]), kind)


if __name__ == '__main__':
    main()
